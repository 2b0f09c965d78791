#include "conversion/format_search.h"

#include <algorithm>

#include <fmt/printf.h>

#include "base/localized_text.h"
#include "base/numbers.h"
#include "base/text.h"
#include "base/text_ids.h"
#include "conversion/format_aliases.h"

namespace {

// Numbers of the texts that file dialogs need.

}  // namespace

std::string FormatLabel(const CItineraryFormat& row) {
  const std::string_view text = LoadTextUtf8(row.textId);
  return std::string(text.substr(0, text.find('|')));
}

std::string FormatPatterns(const CItineraryFormat& row) {
  const std::string_view text = LoadTextUtf8(row.textId);
  const size_t start = text.find('|');
  if (start == std::string_view::npos) return {};
  return std::string(text.substr(start + 1, text.find('|', start + 1) - start - 1));
}

const CItineraryFormat* FindWriter(const FormatTable& table, std::u16string_view name) {
  const std::u16string_view key = KeyForWriting(name);
  const size_t colon = key.find(u':');
  const std::u16string_view extension = key.substr(0, colon);
  for (const CItineraryFormat& row : table) {
    if (!row.write || !EqualsIgnoringCase(row.extension, extension)) continue;
    if (colon == std::u16string_view::npos ||
        WidenAscii(std::to_string(row.textId)) == key.substr(colon + 1))
      return &row;
  }
  return nullptr;
}

std::string FormatKey(const FormatTable& table, const CItineraryFormat& row) {
  const CItineraryFormat* byExtension = FindWriter(table, row.extension);
  std::string extension = NarrowForFile(row.extension);
  if (!byExtension || byExtension == &row) return extension;
  return extension + ":" + std::to_string(row.textId);
}

std::vector<const CItineraryFormat*> ExportList(const FormatTable& table) {
  std::vector<const CItineraryFormat*> rows;
  for (const CItineraryFormat& row : table) {
    if (row.textId != 0 && row.write) rows.push_back(&row);
  }
  return rows;
}

WideString OpenFilter(const FormatTable& table) {
  std::string collection;
  std::string rows;
  for (const CItineraryFormat& row : table) {
    if (!row.read || row.textId == 0) continue;
    const std::string patterns = FormatPatterns(row) + "|";
    if (collection.find(patterns) == std::string::npos) collection += patterns;
    rows += LoadTextUtf8(row.textId);
  }
  std::replace(collection.begin(), collection.end(), '|', ';');
  collection.erase(std::min(collection.rfind(';'), collection.size()));
  const std::string_view allFormats = LoadTextUtf8(kTextAllFormats);
  std::string filter =
      fmt::sprintf(fmt::string_view(allFormats.data(), allFormats.size()), collection);
  filter += rows;
  filter += LoadTextUtf8(kTextAllFiles);
  return Utf8ToWide(filter);
}

WideString SaveFilter(const CItineraryFormat& row) {
  return LoadText(row.textId) + LoadText(kTextAllFiles);
}
