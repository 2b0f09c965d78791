// What any bytes were read as, through every writer that makes a file, and read again.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "base/text.h"
#include "fuzz/fuzzed_row.h"

namespace {

// Their writers open a browser or hand over to another program.
constexpr std::array<std::u16string_view, 5> kNoFiles = {u"tth", u"ggm", u"here", u"vmm", u"ttd"};

bool MakesAFile(const CItineraryFormat& row) {
  return row.write != nullptr &&
         std::find(kNoFiles.begin(), kNoFiles.end(), row.extension) == kNoFiles.end();
}

}  // namespace

// NOLINTNEXTLINE(readability-non-const-parameter): the types are libFuzzer's.
extern "C" int LLVMFuzzerInitialize(int* argumentCount, char*** arguments) {
  ChooseRow(*argumentCount, *arguments);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  for (const auto& list : ReadFuzzed({reinterpret_cast<const char*>(data), size})) {
    for (const CItineraryFormat& row : Rows()) {
      if (!MakesAFile(row)) continue;
      const WideString path = WorkFolder().WidePathTo("output." + NarrowForFile(row.extension));
      if (WriteFile(row, path, *list) && row.read != nullptr) ReadFile(row, path);
    }
  }
  return 0;
}
