#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/point_list.h"
#include "services/directions/route_options.h"
#include "services/request_text.h"
#include "services/service_access.h"

// How requests to directions services are put together. What users have written is escaped when it
// is appended; the words and signs of the services go out as they stand.

/// The user's and the registry's values for a provider that stands in the table of services.
ServiceAccess AccessToProvider(int32_t id);

/// What a service calls a value.
struct ValueWord {
  uint32_t value;
  std::string_view word;
};

/// The word for `value`; `otherwise` where there is none.
std::string_view WordFor(std::span<const ValueWord> words, uint32_t value,
                         std::string_view otherwise = {});

/// What a service calls a kind of road.
struct RoadWord {
  bool AvoidanceOptions::*mayBeUsed;
  std::string_view word;
};

/// The words of all kinds that are not to be used, in the order of `words`.
std::vector<std::string_view> AvoidedWords(const CRouteOptions& options,
                                           std::span<const RoadWord> words);

enum class AxisOrder { kLatitudeFirst, kLongitudeFirst };

/// Appends a position with six decimals.
void AppendPosition(std::string& text, const CGpsCoordinate& position, AxisOrder order,
                    std::string_view separator = ",");

/// Appends all positions with `separator` between them.
void AppendPositions(std::string& text, const CGpsPointList& points, AxisOrder order,
                     std::string_view separator);

/// The number that so many tenths are: 35 is "3.5", 40 is "4".
std::string TenthsText(uint32_t tenths);

/// Appends `text` as a JSON string, quotes included.
void AppendJsonText(std::string& json, std::string_view text);
