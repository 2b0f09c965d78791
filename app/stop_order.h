#pragma once

#include <cstdint>
#include <string_view>

#include "base/wide_string.h"
#include "model/point_list.h"
#include "services/directions/route_provider.h"

/// Who is asked for the ways by road, and what for. All of it outlives the ordering.
struct RoadOrder {
  CRouteProvider& provider;
  std::string_view providerName;
  uint32_t travelMode;
  const CRouteOptions& options;
  bool& hasFailures;  ///< set when a question is not answered
};

/// How stops are ordered.
struct StopOrder {
  bool isBest = false;               ///< the search goes on for two seconds
  const RoadOrder* roads = nullptr;  ///< null: by straight distance
  bool quiet = false;
};

/// Orders the stops of `list`, which come from the file `source`, so that the way through them
/// becomes shorter, and tells on standard error how long it became. A pair of stops for which there
/// is no answer counts as no way at all. Ctrl+C ends the questions and keeps the best order so far,
/// and so does a provider that never answers.
void OrderStops(const WideString& source, const StopOrder& how, CGpsRoute& list);
