#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "services/service_store.h"
#include "settings/settings_list.h"

// The settings of services at the command line: "service.bing.key=...".

/// True for an assignment that is meant for a service.
bool IsServiceAssignment(std::string_view assignment);

/// Understands such an assignment. False, and why, when it means nothing. The sentence never holds
/// the value of a secret.
bool ParseServiceAssignment(std::string_view assignment, ServiceAssignment& parsed,
                            std::string& error);

/// What the user has set for services, in the order of the services; secrets are masked.
std::vector<SettingListing> ListServiceSettings(const ServiceValuesByName& values);
