#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "app/option_help.h"
#include "model/point.h"

namespace CLI {
class App;
}

/// What the command line asks of services.
struct ServiceOptions {
  /// The arguments as they are typed; empty where the option was not given.
  struct Typed {
    std::optional<std::string> find;
    std::optional<std::string> locate;
    std::optional<std::string> elevation;
    std::optional<std::string> panorama;
    std::optional<std::string> country;  ///< empty: that of this machine
    std::optional<std::string> near;
    std::optional<std::string> radius;
    std::optional<std::string> provider;
  };

  bool providers = false;
  bool offline = false;
  Typed typed;

  // What the typed texts say.
  CGpsCoordinate position;  ///< of `locate`, `elevation`, `panorama`, or a `country`
  std::optional<CGpsCoordinate> near;
  std::optional<uint32_t> radius;  ///< metres
  std::string countryCode;         ///< two capitals; empty when a position or nothing was given
};

/// Adds the options to the parser; `options` must outlive the parsing.
void AddServiceOptions(CLI::App& parser, ServiceOptions& options);

/// Understands the values after parsing. False, and why, when one means nothing.
bool TakeServiceOptions(ServiceOptions& options, std::string& error);

/// Their lines of the help.
std::span<const OptionHelp> ServiceOptionHelp();
