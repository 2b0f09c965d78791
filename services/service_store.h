#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "services/service_access.h"
#include "settings/storage.h"

/// One of the settings that every service has.
struct ServiceSetting {
  std::string_view name;       ///< on the command line
  std::string_view valueName;  ///< in the store
  uint32_t meaningTextId;
  bool isSecret;  ///< never shown
  std::optional<std::string> ServiceValues::*value;
};

std::span<const ServiceSetting> ServiceSettings();

/// A change of a setting of a service; an empty value takes the setting away.
struct ServiceAssignment {
  const Service* service;
  const ServiceSetting* setting;
  std::string value;
};

/// What the user has set. Throws storage::Exception for a store that cannot be read.
ServiceValuesByName LoadServiceValues(const storage::Storage& storage);

/// Makes the changes, all or none. Throws storage::Exception.
void StoreServiceValues(storage::Storage& storage, std::span<const ServiceAssignment> changes);
