#include "app/format_listing.h"

#include <string>
#include <vector>

#include <fmt/format.h>

#include "app/console_text.h"
#include "app/output_sink.h"
#include "base/localized_text.h"
#include "base/text.h"
#include "base/text_ids.h"
#include "conversion/format_aliases.h"
#include "conversion/format_search.h"
#include "conversion/read_trip.h"
#include "markup/json_string.h"

namespace {

bool IsListed(const CItineraryFormat& row) { return row.textId != 0 && (row.read || row.write); }

uint32_t AbilityText(const CItineraryFormat& row) {
  if (row.read && row.write) return kTextReadsAndWrites;
  return row.read ? kTextReads : kTextWrites;
}

// The names that lead to a row.
std::vector<std::string> AliasesOf(const FormatTable& table, const CItineraryFormat& row) {
  std::vector<std::string> names;
  for (const FormatAlias& alias : FormatAliases()) {
    if (FindWriter(table, alias.writes) == &row) names.push_back(NarrowForFile(alias.name));
  }
  return names;
}

const char* JsonBool(bool value) { return value ? "true" : "false"; }

void WriteJsonRow(ByteSink& sink, const FormatTable& table, const CItineraryFormat& row) {
  sink.Printf("{\"row\": %d, \"key\": \"%s\", \"extension\": \"%s\", \"textId\": %u, \"label\": ",
              &row - table.data(), FormatKey(table, row), NarrowForFile(row.extension), row.textId);
  WriteJsonString(sink, FormatLabel(row));
  sink.Write(", \"patterns\": ");
  WriteJsonString(sink, FormatPatterns(row));
  sink.Printf(", \"reads\": %s, \"writes\": %s", JsonBool(row.read != nullptr),
              JsonBool(row.write != nullptr));
  const std::vector<std::string> aliases = AliasesOf(table, row);
  const char* separator = ", \"aliases\": [";
  for (const std::string& name : aliases) {
    sink.Printf("%s\"%s\"", separator, name);
    separator = ", ";
  }
  sink.Write(aliases.empty() ? "}" : "]}");
}

void WriteLine(ByteSink& sink, const std::string& key, uint32_t ability, const std::string& label) {
  sink.Write(fmt::format("{:<10}  {:<14}  {}\n", key, LoadTextUtf8(ability), label));
}

// The names stand below the table as lines of their own, with the key that each stands for.
void WriteAliases(ByteSink& sink, const FormatTable& table) {
  for (const FormatAlias& alias : FormatAliases()) {
    const CItineraryFormat* const row = FindWriter(table, alias.writes);
    const std::string key = NarrowForFile(alias.writes);
    if (!row) continue;
    WriteLine(sink, NarrowForFile(alias.name),
              FindReader(table, alias.reads) ? kTextReadsAndWrites : kTextWrites,
              "= " + key + ", " + FormatLabel(*row));
  }
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
      WriteLine(sink, FormatKey(table, row), AbilityText(row), FormatLabel(row));
    }
  }
  if (!asJson) WriteAliases(sink, table);
  if (asJson) sink.Write("]\n");
  return sink.Finish();
}
