#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "app/options.h"
#include "services/service_table.h"

/// Who answers a question of the command line.
struct ServiceChoice {
  const Service* provider = nullptr;  ///< as it is named to the user; null: there is none
  const Service* service = nullptr;   ///< the one of its services that does the work
  int exitStatus = 0;                 ///< other than 0: nothing is asked
  std::string message;                ///< why not
};

/// The provider that --provider names, or `defaultProvider`, if it has this ability and can be used
/// now.
ServiceChoice ChooseService(const Options& options, ServiceAbility ability,
                            std::string_view defaultProvider);

/// Whether a service is on this machine, so that nothing leaves it.
bool IsOnThisMachine(const Service& service);

/// What is missing before a service can be used, and how to set it.
std::string DescribeMissingSettings(const Service& service);
