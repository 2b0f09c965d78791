#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <variant>

#include "settings/setting_values.h"
#include "settings/storage.h"

/// The field of a setting; its type is the kind of the setting.
using SettingField =
    std::variant<bool SettingValues::*, int32_t SettingValues::*, WideString SettingValues::*,
                 std::optional<WindowPlacement> SettingValues::*,
                 std::optional<MapChoice> SettingValues::*>;

/// One setting: a value directly below the settings' root.
struct SettingRow {
  std::string_view key;
  SettingField field;
  int32_t lowest;  ///< what a user may give, flags and numbers only
  int32_t highest;
  uint32_t meaningTextId;
  bool isSaved;  ///< false: read only, the program never writes it
};

/// All settings, in the order in which they are saved.
std::span<const SettingRow> SettingTable();

/// The stored form of a setting: flags are one byte, numbers 32 bits, a map is its kind and its
/// name as bytes. None when there is nothing to store.
std::optional<SettingsValue> EncodeSetting(const SettingValues& settings, const SettingRow& row);

/// Reads a setting. Bytes of another size are copied up to the size of the field; a value that is
/// too short to be one leaves the field alone. Throws storage::Exception.
void DecodeSetting(SettingValues& settings, const SettingRow& row, const storage::SValue& value);
