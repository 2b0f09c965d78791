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

/// The name or number of the finder in use, or where it cannot do this, of that on this machine,
/// which answers until another is chosen, so that nothing is told to anybody unasked.
std::string DefaultFinder(ServiceAbility ability);

/// The provider of this name or number, if it has this ability and can be used now.
ServiceChoice ChooseNamedService(const Options& options, ServiceAbility ability,
                                 std::string_view name);

/// The provider that --provider names, or `defaultProvider`, if it has this ability and can be used
/// now.
ServiceChoice ChooseService(const Options& options, ServiceAbility ability,
                            std::string_view defaultProvider);

/// What is missing before a service can be used, and how to set it.
std::string DescribeMissingSettings(const Service& service);
