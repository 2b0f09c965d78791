#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "settings/settings.h"

// The settings as a person at a command line sees them. All texts are UTF-8 in the current
// language.

/// One setting in words.
struct SettingListing {
  std::string key;
  std::string kind;
  std::string value;         ///< as `SetSetting` takes it
  std::string defaultValue;  ///< empty where there is none
  std::string meaning;
};

/// All settings in the order in which they are stored.
std::vector<SettingListing> ListSettings(const SettingValues& settings);

enum class SettingOutcome {
  kChanged,
  kNoAssignment,  ///< no "=" in the text
  kUnknownKey,
  kWrongValue,
  kReadOnly,  ///< a setting that only windows, or nobody, may write
};

/// What became of an assignment, with its parts.
struct SettingResult {
  SettingOutcome outcome;
  std::string key;      ///< as it was given
  std::string value;    ///< as it was given
  std::string allowed;  ///< the keys, or the values of the key, that would have been right
};

/// Changes a setting by a text "KEY=VALUE"; the key may be in any case. Nothing is stored yet.
/// With `providers` only these are allowed as directions providers.
SettingResult SetSetting(SettingValues& settings, std::string_view assignment,
                         const RouteProviders* providers = nullptr);

/// The message for an assignment that was refused; empty for `kChanged`.
std::string DescribeRefusal(const SettingResult& result);

/// What the user should know about the settings file since the last call: that a damaged one was
/// put aside, that another program held it for too long.
std::vector<std::string> TakeSettingsMessages();
