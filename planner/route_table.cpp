#include "planner/route_table.h"

#include <fmt/format.h>

#include "base/localized_text.h"
#include "base/text_ids.h"
#include "model/route_leg.h"

namespace {

constexpr std::string_view kSeparator = " / ";
constexpr std::string_view kUnknownDistance = "---";
constexpr std::string_view kUnknownDuration = "--:--";

// Text ids by travel mode, from 1 on.
constexpr uint32_t kTravelModeTexts[] = {
    kTextCar, kTextTruck, kTextOnFoot, kTextCycle, kTextMotorcycle, kTextVan, kTextBus,
};

// A leg without a measure is as good as none.
const CRouteLeg* MeasuredLeg(const CGpsPoint& point) {
  const CRouteLeg* const leg = point.GetRouteLeg();
  return leg && leg->Measure().flag != 0 ? leg : nullptr;
}

// A total of 0 is unknown, unless the way there has no length either.
bool IsKnown(uint32_t total, uint32_t ofLeg) { return total != 0 || ofLeg == 0; }

std::string DistanceText(const CRouteLeg* leg, bool miles) {
  if (!leg) return fmt::format("{}{}", kSeparator, kUnknownDistance);
  const uint32_t distance = leg->Measure().distance;
  return FormatDistance(distance, miles) + std::string(kSeparator) +
         (IsKnown(leg->GetTotalDistance(), distance)
              ? FormatDistance(leg->GetTotalDistance(), miles)
              : std::string(kUnknownDistance));
}

std::string DurationText(const CRouteLeg* leg) {
  if (!leg) return fmt::format("{}{}", kSeparator, kUnknownDuration);
  const uint32_t duration = leg->Measure().duration;
  return FormatDuration(duration) + std::string(kSeparator) +
         (IsKnown(leg->GetTotalDuration(), duration) ? FormatDuration(leg->GetTotalDuration())
                                                     : std::string(kUnknownDuration));
}

}  // namespace

std::string RouteTableText(const CGpsPointArray& list, size_t index, RouteColumn column,
                           const CSettings& settings) {
  const CGpsPoint& point = list.At(index);
  const CRouteLeg* const leg = point.GetRouteLeg();
  switch (column) {
    case RouteColumn::kNumber:
      return settings.displayNumber ? std::to_string(index + 1) : point.name;
    case RouteColumn::kName:
      return point.name;
    case RouteColumn::kDistance:
      return DistanceText(MeasuredLeg(point), settings.distMiles);
    case RouteColumn::kDuration:
      return DurationText(MeasuredLeg(point));
    case RouteColumn::kPosition:
      return PositionText(point, static_cast<CoordinateFormat>(settings.coordinates));
    case RouteColumn::kComment:
      return point.comment;
    case RouteColumn::kTravelMode:
      return leg ? TravelModeName(leg->Route().travelMode) : std::string();
    case RouteColumn::kColor:
      return leg ? fmt::format("#{:06X}", leg->Route().color & 0xFFFFFF) : std::string();
  }
  return {};
}

std::string PositionText(const CGpsCoordinate& position, CoordinateFormat format) {
  return FormatCoordinate(position.latitude, true, format) + ", " +
         FormatCoordinate(position.longitude, false, format);
}

std::string TravelModeName(uint32_t mode) {
  if (mode == 0 || mode > std::size(kTravelModeTexts)) return {};
  return std::string(LoadTextUtf8(kTravelModeTexts[mode - 1]));
}
