#include "settings/csv_layout_text.h"

#include <algorithm>
#include <charconv>
#include <utility>
#include <variant>

#include "base/format_text.h"
#include "base/text.h"
#include "base/text_ids.h"

namespace {

// The type of a field's target tells how its value is read: a column, separators, or 0 and 1.
struct Field {
  std::string_view name;
  std::variant<uint32_t CCsvLayout::*, std::string CCsvLayout::*, bool CCsvLayout::*> target;
};

constexpr Field kFields[] = {
    {"lat", &CCsvLayout::latitudeColumn},        {"lon", &CCsvLayout::longitudeColumn},
    {"ele", &CCsvLayout::elevationColumn},       {"name", &CCsvLayout::nameColumn},
    {"comment", &CCsvLayout::commentColumn},     {"decimal", &CCsvLayout::decimalSeparator},
    {"separator", &CCsvLayout::columnSeparator}, {"locale", &CCsvLayout::useLocale},
};

constexpr std::pair<std::string_view, std::string_view> kSeparatorWords[] = {
    {"comma", ","}, {"semicolon", ";"}, {"tab", "\t"}, {"space", " "}, {"point", "."}};

// Characters that numbers, quotes and lines are made of.
constexpr std::string_view kNoSeparators("0123456789+-\"\r\n\0", 16);

template <typename Entries, typename Name>
std::string Joined(const Entries& entries, Name name) {
  std::string list;
  for (const auto& entry : entries) {
    if (!list.empty()) list += ", ";
    list += name(entry);
  }
  return list;
}

bool ReadValue(std::string_view text, uint32_t& column) {
  const auto parsed = std::from_chars(text.data(), text.data() + text.size(), column);
  return parsed.ec == std::errc() && parsed.ptr == text.data() + text.size() &&
         column <= kMostCsvColumns;
}

bool ReadValue(std::string_view text, bool& flag) {
  flag = text == "1";
  return flag || text == "0";
}

bool ReadValue(std::string_view text, std::string& separator) {
  for (const auto& [word, characters] : kSeparatorWords) {
    if (ToLowerAscii(text) == word) {
      separator = characters;
      return true;
    }
  }
  if (text.empty() || !IsValidUtf8(text)) return false;
  const WideString wide = Utf8ToWide(text);
  if (std::any_of(wide.begin(), wide.end(), [](char16_t unit) { return unit > 0xFF; }))
    return false;
  separator = NarrowForFile(wide);
  return separator.size() <= kLongestCsvSeparator &&
         separator.find_first_of(kNoSeparators) == std::string::npos;
}

std::string Allowed(const uint32_t&) { return FormatText(kTextCsvColumnValue, kMostCsvColumns); }
std::string Allowed(const bool&) { return "0, 1"; }
std::string Allowed(const std::string&) {
  return FormatText(kTextCsvSeparatorValue, Joined(kSeparatorWords, [](const auto& word) {
                      return std::string(word.first);
                    }));
}

class Parser {
 public:
  explicit Parser(std::string_view text) : m_rest(text) {
    m_layout.preset = kManualCsvPreset;
    for (const Field& field : kFields) {
      if (const auto* column = std::get_if<uint32_t CCsvLayout::*>(&field.target))
        m_layout.*(*column) = 0;
    }
    m_layout.decimalSeparator.clear();
    m_layout.columnSeparator.clear();
  }

  CsvLayoutText Run() {
    do {
      std::string refusal = TakeField();
      if (!refusal.empty()) return {std::nullopt, std::move(refusal)};
    } while (!m_isDone);
    return Finish();
  }

 private:
  // Each gives a refusal, empty when all is well.
  std::string TakeField() {
    const std::string name = ToLowerAscii(m_rest.substr(0, m_rest.find_first_of("=,")));
    const auto* const field = std::find_if(std::begin(kFields), std::end(kFields),
                                           [&name](const Field& f) { return f.name == name; });
    if (field == std::end(kFields)) {
      return FormatText(kTextUnknownCsvField, name,
                        Joined(kFields, [](const Field& f) { return std::string(f.name); }));
    }
    if (std::exchange(m_isGiven[static_cast<size_t>(field - std::begin(kFields))], true))
      return FormatText(kTextCsvFieldTwice, name);

    m_rest.remove_prefix(name.size());
    const bool hasValue = m_rest.starts_with('=');
    if (hasValue) m_rest.remove_prefix(1);
    const bool isSeparator = std::holds_alternative<std::string CCsvLayout::*>(field->target);
    const std::string value(TakeValue(isSeparator && hasValue));
    return std::visit(
        [this, &name, &value](auto target) {
          auto& place = m_layout.*target;
          if (ReadValue(value, place)) return std::string();
          return FormatText(kTextWrongValue, value, name, Allowed(place));
        },
        field->target);
  }

  // The text up to the next comma, which is passed; a comma at the start may be the value itself.
  std::string_view TakeValue(bool mayBeComma) {
    const bool isComma = mayBeComma && (m_rest == "," || m_rest.starts_with(",,"));
    const size_t end = m_rest.find(',', isComma ? 1 : 0);
    const std::string_view value = m_rest.substr(0, end);
    m_isDone = end == std::string_view::npos;
    m_rest.remove_prefix(m_isDone ? m_rest.size() : end + 1);
    return value;
  }

  CsvLayoutText Finish() {
    std::string& decimal = m_layout.decimalSeparator;
    std::string& column = m_layout.columnSeparator;
    if (m_layout.useLocale && !(decimal.empty() && column.empty()))
      return {std::nullopt, FormatText(kTextCsvLocaleAndSeparators)};
    if (decimal.empty()) decimal = ".";
    if (column.empty()) column = decimal.find(',') == std::string::npos ? "," : ";";
    if (decimal.find_first_of(column) != std::string::npos)
      return {std::nullopt, FormatText(kTextCsvSameSeparators)};
    if (m_layout.latitudeColumn == 0 || m_layout.longitudeColumn == 0)
      return {std::nullopt, FormatText(kTextCsvNoPosition)};
    auto columns = m_layout.Columns();
    std::sort(columns.begin(), columns.end());
    auto* const first = std::upper_bound(columns.begin(), columns.end(), 0U);
    const auto* const twice = std::adjacent_find(first, columns.end());
    if (twice != columns.end()) return {std::nullopt, FormatText(kTextCsvColumnTwice, *twice)};
    return {m_layout, std::string()};
  }

  std::string_view m_rest;
  CCsvLayout m_layout;
  std::array<bool, std::size(kFields)> m_isGiven{};
  bool m_isDone = false;
};

}  // namespace

CsvLayoutText ParseCsvLayoutText(std::string_view text) {
  if (text.find('=') != std::string_view::npos) return Parser(text).Run();
  const auto named = CsvPresets().first(kManualCsvPreset);
  const std::string lower = ToLowerAscii(text);
  for (const CsvPreset& preset : named) {
    if (lower == ToLowerAscii(preset.name) || lower == ToLowerAscii(LoadTextUtf8(preset.textId)))
      return {preset.layout, std::string()};
  }
  return {
      std::nullopt,
      FormatText(kTextUnknownCsvLayout, std::string(text),
                 Joined(named, [](const CsvPreset& preset) { return std::string(preset.name); }))};
}

std::string CsvLayoutAsText(const CCsvLayout& layout) {
  std::string text;
  const auto append = [&text](std::string_view name, std::string_view value) {
    if (!text.empty()) text += ',';
    text.append(name).append("=").append(value);
  };
  for (const Field& field : kFields) {
    if (const auto* column = std::get_if<uint32_t CCsvLayout::*>(&field.target)) {
      if (const uint32_t number = layout.*(*column)) append(field.name, std::to_string(number));
    } else if (const auto* target = std::get_if<std::string CCsvLayout::*>(&field.target)) {
      const std::string& value = layout.*(*target);
      const auto* const named =
          std::find_if(std::begin(kSeparatorWords), std::end(kSeparatorWords),
                       [&value](const auto& word) { return word.second == value; });
      const bool isPlain = named == std::end(kSeparatorWords) || value == "." || value == ";";
      append(field.name, isPlain ? WidenToUtf8(value) : std::string(named->first));
    }
  }
  return text;
}
