#include "settings/settings_list.h"

#include <charconv>
#include <limits>
#include <optional>
#include <type_traits>

#include <fmt/format.h>

#include "base/format_text.h"
#include "base/text.h"
#include "base/text_ids.h"
#include "settings/setting_table.h"

namespace {

void AppendToList(std::string& list, std::string_view entry) {
  if (!list.empty()) list += ", ";
  list += entry;
}

// One function a kind of setting, chosen by the type of the field.

std::string ToText(bool flag) { return flag ? "1" : "0"; }
std::string ToText(int32_t number) { return std::to_string(number); }
std::string ToText(const WideString& text) { return WideToUtf8Lossy(text); }

std::string ToText(const std::optional<WindowPlacement>& placement) {
  return placement ? fmt::format("{:02x}", fmt::join(*placement, "")) : std::string();
}

std::string ToText(const std::optional<MapChoice>& map) {
  return map ? std::to_string(map->kind) + ":" + MendUtf8(map->name) : std::string();
}

uint32_t KindText(bool) { return kTextKindFlag; }
uint32_t KindText(int32_t) { return kTextKindNumber; }
uint32_t KindText(const WideString&) { return kTextKindText; }
uint32_t KindText(const std::optional<WindowPlacement>&) { return kTextKindBytes; }
uint32_t KindText(const std::optional<MapChoice>&) { return kTextKindBytes; }

template <typename Int>
bool FromText(std::string_view text, Int& number) {
  const auto parsed = std::from_chars(text.data(), text.data() + text.size(), number);
  return parsed.ec == std::errc() && parsed.ptr == text.data() + text.size();
}

bool FromText(std::string_view text, bool& flag) {
  flag = text == "1";
  return flag || text == "0";
}

bool FromText(std::string_view text, WideString& wide) {
  if (!IsValidUtf8(text)) return false;
  wide = Utf8ToWide(text);
  return true;
}

bool FromText(std::string_view text, std::optional<MapChoice>& map) {
  const size_t colon = text.find(':');
  uint32_t kind = 0;
  if (colon == std::string_view::npos || !FromText(text.substr(0, colon), kind)) return false;
  const std::string_view name = text.substr(colon + 1);
  if (name.empty() || !IsValidUtf8(name)) return false;
  map = MapChoice{kind, std::string(name)};
  return true;
}

// Placements are a system's own record: no person can write one.
bool FromText(std::string_view, std::optional<WindowPlacement>&) { return false; }

bool IsWritable(const SettingRow& row) {
  return row.isSaved &&
         !std::holds_alternative<std::optional<WindowPlacement> SettingValues::*>(row.field);
}

bool IsProvider(const SettingRow& row) {
  const auto* const field = std::get_if<int32_t SettingValues::*>(&row.field);
  return field && *field == &SettingValues::routeProvider;
}

bool IsAllowed(const SettingRow& row, int32_t number, const RouteProviders* providers) {
  if (number < row.lowest || number > row.highest) return false;
  return !providers || !IsProvider(row) || providers->VehiclesOf(number).has_value();
}

std::string AllowedNumbers(const SettingRow& row, const RouteProviders* providers) {
  if (providers && IsProvider(row)) {
    std::string list;
    for (const int32_t provider : providers->Providers())
      AppendToList(list, std::to_string(provider));
    return list;
  }
  if (row.highest == std::numeric_limits<int32_t>::max())
    return FormatText(kTextRangeFrom, row.lowest);
  return FormatText(kTextRange, row.lowest, row.highest);
}

std::string AllowedValues(const SettingRow& row, const RouteProviders* providers) {
  if (std::holds_alternative<bool SettingValues::*>(row.field)) return "0, 1";
  if (std::holds_alternative<WideString SettingValues::*>(row.field))
    return FormatText(kTextAnyText);
  if (std::holds_alternative<int32_t SettingValues::*>(row.field))
    return AllowedNumbers(row, providers);
  return FormatText(kTextMapValue);
}

const SettingRow* FindRow(std::string_view key) {
  for (const SettingRow& row : SettingTable()) {
    if (ToLowerAscii(row.key) == ToLowerAscii(key)) return &row;
  }
  return nullptr;
}

std::string AllKeys() {
  std::string keys;
  for (const SettingRow& row : SettingTable()) AppendToList(keys, row.key);
  return keys;
}

bool Assign(SettingValues& settings, const SettingRow& row, std::string_view text,
            const RouteProviders* providers) {
  return std::visit(
      [&](auto field) {
        auto value = settings.*field;
        if (!FromText(text, value)) return false;
        if constexpr (std::is_same_v<decltype(value), int32_t>) {
          if (!IsAllowed(row, value, providers)) return false;
        }
        settings.*field = value;
        return true;
      },
      row.field);
}

}  // namespace

std::vector<SettingListing> ListSettings(const SettingValues& settings) {
  std::vector<SettingListing> listings;
  const SettingValues defaults;
  for (const SettingRow& row : SettingTable()) {
    std::visit(
        [&](auto field) {
          listings.push_back({std::string(row.key), FormatText(KindText(settings.*field)),
                              ToText(settings.*field), ToText(defaults.*field),
                              FormatText(row.meaningTextId)});
        },
        row.field);
  }
  return listings;
}

SettingResult SetSetting(SettingValues& settings, std::string_view assignment,
                         const RouteProviders* providers) {
  const size_t equals = assignment.find('=');
  const std::string key(assignment.substr(0, equals));
  if (equals == std::string_view::npos)
    return {SettingOutcome::kNoAssignment, key, std::string(), std::string()};
  const std::string value(assignment.substr(equals + 1));
  const SettingRow* const row = FindRow(key);
  if (!row) return {SettingOutcome::kUnknownKey, key, value, AllKeys()};
  if (!IsWritable(*row)) return {SettingOutcome::kReadOnly, key, value, std::string()};
  if (!Assign(settings, *row, value, providers))
    return {SettingOutcome::kWrongValue, key, value, AllowedValues(*row, providers)};
  return {SettingOutcome::kChanged, key, value, std::string()};
}

std::string DescribeRefusal(const SettingResult& result) {
  switch (result.outcome) {
    case SettingOutcome::kNoAssignment:
      return FormatText(kTextNoAssignment, result.key);
    case SettingOutcome::kUnknownKey:
      return FormatText(kTextUnknownSetting, result.key, result.allowed);
    case SettingOutcome::kWrongValue:
      return FormatText(kTextWrongValue, result.value, result.key, result.allowed);
    case SettingOutcome::kReadOnly:
      return FormatText(kTextReadOnlySetting, result.key);
    case SettingOutcome::kChanged:
      break;
  }
  return {};
}

std::vector<std::string> TakeSettingsMessages() {
  const SettingsNews news = TakeSettingsNews();
  std::vector<std::string> messages;
  if (!news.damagedFile.empty())
    messages.push_back(FormatText(kTextSettingsDamaged, WideToUtf8Lossy(news.damagedFile)));
  if (news.wasLocked) messages.push_back(FormatText(kTextSettingsLocked));
  return messages;
}
