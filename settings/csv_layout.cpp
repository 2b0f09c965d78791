#include "settings/csv_layout.h"

#include "base/text.h"
#include "base/text_ids.h"
#include "io/byte_cursor.h"
#include "io/byte_sink.h"

namespace {

// The stored value: the preset and five columns as 32-bit numbers, the flag for the locale in one
// byte, and the two separators in four bytes each, filled up with zeros.
constexpr size_t kStoredSize = 33;

constexpr std::string_view kFolder = "CSV";

const char* ValueName(CsvUse use) { return use == CsvUse::kRead ? "read" : "write"; }

std::string FolderPath() { return storage::PathOf(kSettingsRoot, kFolder); }

void PutSeparator(ByteSink& sink, std::string_view separator) {
  separator = separator.substr(0, kLongestCsvSeparator);
  sink.Write(separator);
  sink.Zeros(kLongestCsvSeparator - separator.size());
}

std::string TakeSeparator(ByteCursor& cursor) {
  const std::string_view bytes = cursor.Take(kLongestCsvSeparator);
  return std::string(bytes.substr(0, bytes.find('\0')));
}

// The first four 8-bit characters of a UTF-8 text; `fallback` when 8 bits cannot hold it.
std::string NarrowSeparator(const std::string& utf8, const char* fallback) {
  const std::string narrow = NarrowUtf8(utf8);
  if (narrow.empty() || narrow.find('?') != std::string::npos) return fallback;
  return narrow.substr(0, kLongestCsvSeparator);
}

}  // namespace

std::span<const CsvPreset> CsvPresets() {
  static const std::array<CsvPreset, kManualCsvPreset + 1> presets{{
      {kTextDefault, "Default", {0, 2, 1, 0, 3, 0, false, ".", ","}},
      {kTextInforad, "Inforad", {1, 1, 2, 0, 3, 0, false, ",", ";"}},
      {kTextPioneerNavgate, "Pioneer Navgate", {2, 2, 1, 0, 3, 0, false, ".", ";"}},
      {kTextDestinator, "Destinator", {3, 4, 3, 0, 6, 7, false, ".", ","}},
      {kTextManual, "Manual", {kManualCsvPreset, 0, 0, 0, 0, 0, false, ".", ","}},
  }};
  return presets;
}

std::string EncodeCsvLayout(const CCsvLayout& layout) {
  StringSink sink;
  sink.Uint32(layout.preset);
  for (const uint32_t column : layout.Columns()) sink.Uint32(column);
  sink.Put(layout.useLocale ? '\1' : '\0');
  PutSeparator(sink, layout.decimalSeparator);
  PutSeparator(sink, layout.columnSeparator);
  return sink.Bytes();
}

std::optional<CCsvLayout> DecodeCsvLayout(std::string_view bytes) {
  if (bytes.size() != kStoredSize) return std::nullopt;
  ByteCursor cursor(bytes);
  CCsvLayout layout;
  layout.preset = cursor.Uint32();
  layout.latitudeColumn = cursor.Uint32();
  layout.longitudeColumn = cursor.Uint32();
  layout.elevationColumn = cursor.Uint32();
  layout.nameColumn = cursor.Uint32();
  layout.commentColumn = cursor.Uint32();
  layout.useLocale = cursor.Uint8() != 0;
  layout.decimalSeparator = TakeSeparator(cursor);
  layout.columnSeparator = TakeSeparator(cursor);
  return layout;
}

NumberSeparators CsvSeparators(const CCsvLayout& layout, const NumberSeparators& locale) {
  if (!layout.useLocale) return {layout.decimalSeparator, layout.columnSeparator};
  return {NarrowSeparator(locale.decimal, "."), NarrowSeparator(locale.list, ",")};
}

CCsvLayout LoadCsvLayout(const storage::Storage& storage, CsvUse use) {
  try {
    const std::string bytes =
        storage.OpenFolder(FolderPath()).OpenValue(ValueName(use)).ReadBytes();
    return DecodeCsvLayout(bytes).value_or(CCsvLayout());
  } catch (const storage::Exception&) {
    return {};
  }
}

void StoreCsvLayout(storage::Storage& storage, CsvUse use, const CCsvLayout& layout) {
  StoreCsvLayouts(storage, use == CsvUse::kRead ? std::optional(layout) : std::nullopt,
                  use == CsvUse::kWrite ? std::optional(layout) : std::nullopt);
}

void StoreCsvLayouts(storage::Storage& storage, const std::optional<CCsvLayout>& read,
                     const std::optional<CCsvLayout>& write) {
  if (!read && !write) return;
  storage::Transaction transaction(storage);
  storage::SFolder folder = storage.CreateFolder(FolderPath());
  if (read) folder.CreateValue(ValueName(CsvUse::kRead)).WriteBytes(EncodeCsvLayout(*read));
  if (write) folder.CreateValue(ValueName(CsvUse::kWrite)).WriteBytes(EncodeCsvLayout(*write));
  transaction.Commit();
}
