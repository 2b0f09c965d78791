#pragma once

#include <memory>
#include <optional>
#include <string>

#include "app/options.h"
#include "app/service_choice.h"
#include "app/service_outcome.h"
#include "services/directions/route_wishes.h"

/// Who is asked for directions, and what.
struct DirectionsChoice {
  ServiceChoice service;
  std::unique_ptr<CRouteProvider> provider;  ///< null for a service without directions
  RouteRequest request;                      ///< with `provider`

  /// False when the service cannot be used now; `service` tells why.
  bool IsToBeAsked() const { return service.exitStatus == 0; }
};

/// The provider `typed`, or without one that of the settings, for which straight lines stand in
/// when it cannot be used; with what the options and the settings ask of it. What it does not offer
/// is told on standard error, unless --quiet. `PrepareServices` comes before.
DirectionsChoice ChooseDirections(const Options& options, const std::optional<std::string>& typed);

/// The outcome for a status of a provider's, and what it says of it itself (`FailureText`).
ServiceOutcome OutcomeOfWay(uint32_t status, std::string failureText);

/// A stop for the user: its name, or else its number in the list, counted from 0 here.
std::string NameOfStop(const CGpsNamedPoint& stop, size_t index);
