// What any bytes were read as, through every writer that makes a file, and read again.

#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/fuzzed_row.h"

// NOLINTNEXTLINE(readability-non-const-parameter): the types are libFuzzer's.
extern "C" int LLVMFuzzerInitialize(int* argumentCount, char*** arguments) {
  ChooseRow(*argumentCount, *arguments);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::string bytes;
  for (const auto& list : ReadBytes(FuzzedRow(), {reinterpret_cast<const char*>(data), size})) {
    for (const CItineraryFormat& row : Rows()) {
      if (row.facts.emit && WriteBytes(row, *list, bytes) && row.facts.parse) ReadBytes(row, bytes);
    }
  }
  return 0;
}
