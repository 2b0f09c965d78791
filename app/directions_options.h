#pragma once

#include <optional>
#include <span>
#include <string>

#include "app/option_help.h"
#include "base/wide_string.h"
#include "services/directions/route_wishes.h"

namespace CLI {
class App;
}

/// What the command line asks of directions.
struct DirectionsOptions {
  /// The arguments as they are typed; empty where the option was not given.
  struct Typed {
    std::optional<std::string> way;
    std::string directions;  ///< "true" for the option without a provider
    std::optional<std::string> mode;
    std::optional<std::string> type;
    std::optional<std::string> avoid;
    std::optional<std::string> hilliness;
    std::optional<std::string> windingness;
  };

  Typed typed;
  bool asTrack = false;
  bool withWay = false;
  bool roads = false;
  bool tractor = false;

  // What the typed texts say.
  std::optional<WideString> way;        ///< the file whose way is asked for
  bool directions = false;              ///< legs are asked for before an itinerary is written
  std::optional<std::string> provider;  ///< that of --directions=PROVIDER
  RouteWishes wishes;
};

/// Adds the options to the parser; `options` must outlive the parsing.
void AddDirectionsOptions(CLI::App& parser, DirectionsOptions& options);

/// Understands the values after parsing. False, and why, when one means nothing.
bool TakeDirectionsOptions(DirectionsOptions& options, std::string& error);

/// Their lines of the help.
std::span<const OptionHelp> DirectionsOptionHelp();
