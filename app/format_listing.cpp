#include "app/format_listing.h"

#include <string>

#include <fmt/format.h>

#include "app/console_text.h"
#include "app/output_sink.h"
#include "base/localized_text.h"
#include "base/text.h"
#include "base/text_ids.h"
#include "conversion/format_search.h"
#include "markup/json_string.h"

namespace {

bool IsListed(const CItineraryFormat& row) { return row.textId != 0 && (row.read || row.write); }

uint32_t AbilityText(const CItineraryFormat& row) {
  if (row.read && row.write) return kTextReadsAndWrites;
  return row.read ? kTextReads : kTextWrites;
}

const char* JsonBool(bool value) { return value ? "true" : "false"; }

void WriteJsonRow(ByteSink& sink, const FormatTable& table, const CItineraryFormat& row) {
  sink.Printf("{\"row\": %d, \"key\": \"%s\", \"extension\": \"%s\", \"textId\": %u, \"label\": ",
              &row - table.data(), FormatKey(table, row), NarrowForFile(row.extension), row.textId);
  WriteJsonString(sink, FormatLabel(row));
  sink.Write(", \"patterns\": ");
  WriteJsonString(sink, FormatPatterns(row));
  sink.Printf(", \"reads\": %s, \"writes\": %s}", JsonBool(row.read != nullptr),
              JsonBool(row.write != nullptr));
}

}  // namespace

bool ListFormats(const FormatTable& table, bool asJson) {
  OutputSink sink;
  const char* separator = "[";
  for (const CItineraryFormat& row : table) {
    if (!IsListed(row)) continue;
    if (asJson) {
      sink.Write(separator);
      WriteJsonRow(sink, table, row);
      separator = ",\n ";
    } else {
      sink.Write(fmt::format("{:<10}  {:<14}  {}\n", FormatKey(table, row),
                             LoadTextUtf8(AbilityText(row)), FormatLabel(row)));
    }
  }
  if (asJson) sink.Write("]\n");
  return sink.Finish();
}
