#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "services/service_access.h"
#include "settings/storage.h"

/// One of the settings that every service has.
struct ServiceSetting {
  std::string_view name;  ///< on the command line
  uint32_t meaningTextId;
  bool isSecret;  ///< never shown
  std::optional<std::string> ServiceValues::*value;
};

std::span<const ServiceSetting> ServiceSettings();

/// A change of a setting of a service. An empty value takes the setting away; an empty language is
/// a value of its own, with which none is sent.
struct ServiceAssignment {
  const Service* service;
  const ServiceSetting* setting;
  std::string value;
};

/// Makes the changes in the store, all or none. Returns 0 or the platform's error code.
uint32_t StoreServiceValues(const storage::Storage& storage,
                            std::span<const ServiceAssignment> changes);
