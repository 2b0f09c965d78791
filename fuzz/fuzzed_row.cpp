#include "fuzz/fuzzed_row.h"

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>
#include <stdexcept>
#include <string>

#include "base/status.h"
#include "base/text.h"
#include "conversion/conversion_context.h"
#include "formats/format_rows.h"
#include "io/byte_sink.h"

namespace {

const CItineraryFormat* chosenRow = nullptr;

// One line for every reader: the first row that has it, its extension, and all rows that have it.
void ListReaders() {
  const FormatTable& table = Rows();
  for (size_t i = 0; i < table.size(); ++i) {
    std::string sharing;
    size_t first = table.size();
    for (size_t j = table.size(); j-- > 0;) {
      if (table[i].read == nullptr || table[j].read != table[i].read) continue;
      sharing.insert(0, " " + std::to_string(j));
      first = j;
    }
    if (first == i)
      std::printf("%zu %s%s\n", i, NarrowForFile(table[i].extension).c_str(), sharing.c_str());
  }
}

const CItineraryFormat* FindReader(std::string_view number) {
  size_t row = Rows().size();
  const auto parsed = std::from_chars(number.data(), number.data() + number.size(), row);
  if (parsed.ptr != number.data() + number.size() || row >= Rows().size()) return nullptr;
  return Rows()[row].read != nullptr ? &Rows()[row] : nullptr;
}

template <typename Call>
uint32_t CallAsDriver(Call call) {
  try {
    return call();
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::logic_error&) {
    throw;
  } catch (const std::exception&) {
    return kStatusInternalError;
  }
}

}  // namespace

void ChooseRow(int argumentCount, char** arguments) {
  constexpr std::string_view kRow = "--row=";
  for (int i = 1; i < argumentCount; ++i) {
    const std::string_view argument = arguments[i];
    if (argument == "--rows") {
      ListReaders();
      std::exit(0);
    }
    if (argument.starts_with(kRow)) chosenRow = FindReader(argument.substr(kRow.size()));
  }
  if (chosenRow == nullptr) {
    std::fprintf(stderr, "--row=N must name a row with a reader; --rows lists them\n");
    std::exit(2);
  }
}

const FormatTable& Rows() {
  static const FormatTable table = DefaultFormatTable();
  return table;
}

const CItineraryFormat& FuzzedRow() { return *chosenRow; }

PointLists ReadBytes(const CItineraryFormat& row, std::string_view bytes) {
  PointLists lists;
  ConversionContext context;
  CallAsDriver([&] { return row.facts.parse(bytes, lists, context); });
  return lists;
}

bool WriteBytes(const CItineraryFormat& row, const CGpsPointArray& list, std::string& bytes) {
  StringSink sink;
  ConversionContext context;
  const bool isWritten =
      CallAsDriver([&] { return row.facts.emit(sink, list, 0, context); }) == kStatusSuccess;
  bytes = sink.Bytes();
  return isWritten;
}
