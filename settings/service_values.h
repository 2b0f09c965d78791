#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "settings/storage.h"

/// What the user has set for a service, in UTF-8. What is absent is as the program comes with it;
/// an empty text is a value of its own.
struct ServiceValues {
  std::optional<std::string> url = {};
  std::optional<std::string> key = {};
  std::optional<std::string> appId = {};
  std::optional<std::string> language = {};
  std::optional<std::string> referrer = {};

  bool operator==(const ServiceValues&) const = default;
};

/// What the user has set, by the services' names.
using ServiceValuesByName = std::map<std::string, ServiceValues, std::less<>>;

/// Reads what is stored for all services, their names in small letters. Values of another kind are
/// passed over. Returns 0 or the platform's error code: then `values` stays as it is.
uint32_t LoadServiceValues(const storage::Storage& storage, ServiceValuesByName& values,
                           std::string_view root = kSettingsRoot);

/// Stores the values of these services as one; others stay as they are. What is absent is removed
/// from the store, and a service's folder with the last of its values. The names must be no paths.
/// Returns 0 or the platform's error code.
uint32_t SaveServiceValues(storage::Storage storage, const ServiceValuesByName& services,
                           std::string_view root = kSettingsRoot);
