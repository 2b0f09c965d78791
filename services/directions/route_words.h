#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "services/directions/route_wishes.h"
#include "services/directions/travel_mode_info.h"

// The words for what can be asked of directions, as options and JSON spell them.

/// A word for a number.
struct NumberWord {
  std::string_view word;
  uint32_t number;
};

std::span<const NumberWord> TravelModeWords();
/// Those of all providers; ViaMichelin's own numbers lie beside the others'.
std::span<const NumberWord> RouteTypeWords();
std::span<const NumberWord> RouteDegreeWords();

/// The word for a number; empty for one without.
std::string_view WordOf(std::span<const NumberWord> words, uint32_t number);

/// A word for a kind of roads that can be avoided.
struct RoadsWord {
  std::string_view word;
  bool AvoidedRoads::*avoided;
  /// How a mode tells whether it offers that; null for what only a way with a character can.
  OfferedAndDefault (CTravelModeInfo::*offered)() const;

  bool IsOfferedBy(const CTravelModeInfo& info) const;
};

std::span<const RoadsWord> RoadsWords();
