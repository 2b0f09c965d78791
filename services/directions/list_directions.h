#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <stop_token>
#include <string>
#include <vector>

#include "model/point_list.h"
#include "services/directions/route_provider.h"

/// Sums over the legs of a list.
struct LegTotals {
  uint32_t distance = 0;  ///< metres
  uint32_t duration = 0;  ///< seconds
  bool complete = true;   ///< false when a point but the first has no leg, or one without a measure
};

/// Writes into each leg how far it is from the start of the list to its end, 0 behind the first
/// leg that is missing, and gives the sums up to there.
LegTotals UpdateLegTotals(CGpsPointArray& list);

/// How asking for a leg has ended.
struct LegFailure {
  size_t to = 0;  ///< index of the point that the leg leads to
  uint32_t status = kRouteSuccess;
  std::string text;  ///< what the provider adds to the status; mostly empty
};

/// Asks `provider` for the way from the point before `to` to it, waits without a limit, and gives
/// the point this leg. Without success the point has no leg afterwards. A stop cancels it.
LegFailure CalculateLeg(CRouteProvider& provider, CGpsPointArray& list, size_t to,
                        uint32_t travelMode, const CRouteOptions& options,
                        const std::stop_token& stop = {});

/// What `CalculateLegs` has done.
struct LegsResult {
  size_t calculated = 0;
  std::vector<LegFailure> failures;  ///< passed over
  bool cancelled = false;            ///< the rest has no legs
};

/// A leg for every point but the first, one request after the other, so that no provider has more
/// than one at a time. `onLeg` is called in front of each with the index of its point; when it
/// answers false, or with a stop from any thread, the rest is left undone. Totals are up to date
/// afterwards.
LegsResult CalculateLegs(CRouteProvider& provider, CGpsPointArray& list, uint32_t travelMode,
                         const CRouteOptions& options,
                         const std::function<bool(size_t to)>& onLeg = {},
                         const std::stop_token& stop = {});

/// Puts the calculated way itself into the place of the stops: all points of all legs in their
/// order. The name stays.
void ReplaceStopsByWay(CGpsPointArray& list);
