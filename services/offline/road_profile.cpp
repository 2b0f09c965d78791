#include "services/offline/road_profile.h"

#include <array>
#include <string_view>

#include <fmt/format.h>

#include "services/directions/route_options.h"

namespace {

enum Road : size_t {
  kMotorway,
  kTrunk,
  kPrimary,
  kSecondary,
  kTertiary,
  kUnclassified,
  kResidential,
  kService,
  kTrackRoad,
  kCycleway,
  kPath,
  kSteps,
  kFerry,
  kRoadCount
};

constexpr std::array<std::string_view, kRoadCount> kRoadNames = {
    "motorway", "trunk", "primary",  "secondary", "tertiary", "unclassified", "residential",
    "service",  "track", "cycleway", "path",      "steps",    "ferry"};

/// A vehicle on each kind of road: kilometres an hour, 0 where it may not go; and how much a quick
/// way likes them, in percent.
struct Vehicle {
  uint32_t travelMode;
  std::string_view transport;
  std::array<unsigned, kRoadCount> speeds;
  std::array<unsigned, kRoadCount> likings;
};

constexpr Vehicle kVehicles[] = {
    {kCar,
     "motorcar",
     {110, 90, 80, 75, 65, 55, 35, 20, 15, 0, 0, 0, 15},
     {100, 100, 95, 90, 85, 75, 65, 45, 20, 0, 0, 0, 40}},
    {kTruckMode,
     "hgv",
     {85, 80, 70, 60, 50, 40, 25, 15, 8, 0, 0, 0, 15},
     {100, 100, 95, 85, 70, 55, 45, 35, 10, 0, 0, 0, 40}},
    {kPedestrian,
     "foot",
     {0, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 3, 15},
     {0, 40, 50, 60, 70, 80, 90, 95, 95, 95, 100, 80, 40}},
    {kBicycle,
     "bicycle",
     {0, 18, 18, 18, 18, 18, 17, 15, 12, 18, 10, 2, 15},
     {0, 30, 50, 65, 80, 90, 90, 90, 75, 100, 60, 20, 40}},
    {kMotorcycle,
     "motorcycle",
     {110, 90, 80, 75, 65, 55, 35, 20, 15, 0, 0, 0, 15},
     {100, 100, 95, 95, 90, 80, 65, 45, 20, 0, 0, 0, 40}},
};

const Vehicle& VehicleOf(uint32_t travelMode) {
  for (const Vehicle& vehicle : kVehicles) {
    if (vehicle.travelMode == travelMode) return vehicle;
  }
  return kVehicles[0];
}

// Percent of what is to be avoided. The engine takes 0 for "never".
constexpr double kHardly = 1.0;
// A road's property counts by the square root of what is given here.
constexpr double kPropertyHardly = 0.01;
constexpr double kNoMatter = 50.0;

double LikingOf(const Vehicle& vehicle, size_t road, const CRouteOptions& options) {
  if (vehicle.speeds[road] == 0) return 0.0;
  const AvoidanceOptions* const avoidances = AvoidancesOf(options);
  if (avoidances) {
    if (road == kMotorway && !avoidances->motorways) return kHardly;
    if (road == kFerry && !avoidances->boatFerries) return kHardly;
    if (road == kTrackRoad && !avoidances->dirtRoads) return kHardly;
  }
  constexpr double kAllAlike = 100.0;
  return options.mode == kShortest ? kAllAlike : vehicle.likings[road];
}

// The engine knows no limit where it is told 0.
std::string Limits(const TruckOptions* truck) {
  const auto tenths = [truck](uint32_t TruckOptions::*value) {
    return truck ? (truck->*value) / 10.0 : 0.0;
  };
  return fmt::format(
      "<weight limit=\"{:.1f}\"/><height limit=\"{:.1f}\"/><width limit=\"{:.1f}\"/>"
      "<length limit=\"{:.1f}\"/>",
      tenths(&TruckOptions::limitedWeight), tenths(&TruckOptions::height),
      tenths(&TruckOptions::width), tenths(&TruckOptions::length));
}

}  // namespace

std::string RoadProfile(uint32_t travelMode, const CRouteOptions& options) {
  const Vehicle& vehicle = VehicleOf(travelMode);
  std::string speeds;
  std::string likings;
  for (size_t road = 0; road < kRoadCount; ++road) {
    speeds +=
        fmt::format("<speed highway=\"{}\" kph=\"{}\"/>", kRoadNames[road], vehicle.speeds[road]);
    likings += fmt::format("<preference highway=\"{}\" percent=\"{:.0f}\"/>", kRoadNames[road],
                           LikingOf(vehicle, road, options));
  }

  const AvoidanceOptions* const avoidances = AvoidancesOf(options);
  const bool isOnWheels = travelMode != kPedestrian;
  const bool isQuick = options.mode != kShortest;
  constexpr double kPavedOnWheels = 85.0;
  double paved = isQuick && isOnWheels ? kPavedOnWheels : kNoMatter;
  if (avoidances && !avoidances->dirtRoads) paved = 100.0 - kPropertyHardly;
  const double tunnel = avoidances && !avoidances->tunnels ? kPropertyHardly : kNoMatter;
  const double toll = avoidances && !avoidances->tolls ? kPropertyHardly : kNoMatter;
  const std::string properties = fmt::format(
      "<property type=\"paved\" percent=\"{}\"/><property type=\"multilane\" percent=\"50\"/>"
      "<property type=\"bridge\" percent=\"50\"/><property type=\"tunnel\" percent=\"{}\"/>"
      "<property type=\"footroute\" percent=\"{}\"/>"
      "<property type=\"bicycleroute\" percent=\"50\"/>",
      paved, tunnel, toll);

  const int obeys = isOnWheels ? 1 : 0;
  return fmt::format(
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<routino-profiles><profile name=\"way\" "
      "transport=\"{}\"><speeds>{}</speeds><preferences>{}</preferences><properties>{}"
      "</properties><restrictions><oneway obey=\"{}\"/><turns obey=\"{}\"/>{}</restrictions>"
      "</profile></routino-profiles>\n",
      vehicle.transport, speeds, likings, properties, obeys, obeys,
      Limits(travelMode == kTruckMode ? TruckOf(options) : nullptr));
}

std::string RulesWithTolls(std::string rules) {
  constexpr std::string_view kMark = "<output k=\"footroute\"";
  constexpr std::string_view kEnd = "/>";
  constexpr std::string_view kWay = "<way>";
  const size_t way = rules.find(kWay);
  if (way == std::string::npos) return rules;
  rules.insert(way + kWay.size(),
               "\n<if k=\"toll\" v=\"yes\"><output k=\"toll-of-ours\" v=\"yes\"/></if>\n");
  for (size_t mark = rules.find(kMark); mark != std::string::npos; mark = rules.find(kMark, mark)) {
    const size_t end = rules.find(kEnd, mark);
    if (end == std::string::npos) break;
    rules.erase(mark, end + kEnd.size() - mark);
  }
  constexpr std::string_view kPlaceholder = "toll-of-ours";
  rules.replace(rules.find(kPlaceholder), kPlaceholder.size(), "footroute");
  return rules;
}
