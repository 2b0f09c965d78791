#pragma once

#include <cstdint>
#include <string>

#include "app/directions_choice.h"
#include "io/byte_sink.h"
#include "model/point_list.h"

/// Distance and duration over several legs.
struct WayTotals {
  uint64_t distance = 0;  ///< metres
  uint64_t duration = 0;  ///< seconds

  void Add(const CRouteMeasure& measure);
  /// As the user wants to see them; what is more than 32 bits can hold is shown as their most.
  std::string ShownDistance() const;
  std::string ShownDuration() const;
};

/// Writes the answer as a JSON object; `choice` must have a provider.
void WriteJsonWay(ByteSink& sink, const DirectionsChoice& choice, const ServiceOutcome& outcome,
                  const CRouteProvider::Legs& legs);

/// Writes legs, instructions and totals for people. `stops` are those that were asked for.
void WriteWayText(ByteSink& sink, const CGpsPointArray& stops, const CRouteProvider::Legs& legs);
