#include "services/directions/route_words.h"

#include "services/directions/route_options.h"

namespace {

constexpr NumberWord kTravelModes[] = {
    {"car", kCar},         {"truck", kTruckMode},       {"pedestrian", kPedestrian},
    {"bicycle", kBicycle}, {"motorcycle", kMotorcycle}, {"van", kVan},
    {"bus", kBus},
};

constexpr NumberWord kRouteTypes[] = {
    {"recommended", kViaMichelinRecommended},
    {"fastest", kFastest},
    {"shortest", kShortest},
    {"sightseeing", kViaMichelinSightseeing},
    {"economical", kEconomical},
    {"thrilling", kThrilling},
};

constexpr NumberWord kDegrees[] = {{"high", kHigh}, {"normal", kNormal}, {"low", kLow}};

constexpr RoadsWord kRoads[] = {
    {"motorways", &AvoidedRoads::motorways, &CTravelModeInfo::Motorways},
    {"tolls", &AvoidedRoads::tolls, &CTravelModeInfo::Tolls},
    {"boat-ferries", &AvoidedRoads::boatFerries, &CTravelModeInfo::BoatFerries},
    {"rail-ferries", &AvoidedRoads::railFerries, &CTravelModeInfo::RailFerries},
    {"tunnels", &AvoidedRoads::tunnels, &CTravelModeInfo::Tunnels},
    {"dirt-roads", &AvoidedRoads::dirtRoads, &CTravelModeInfo::DirtRoads},
    {"used-roads", &AvoidedRoads::usedRoads, nullptr},
};

}  // namespace

std::span<const NumberWord> TravelModeWords() { return kTravelModes; }
std::span<const NumberWord> RouteTypeWords() { return kRouteTypes; }
std::span<const NumberWord> RouteDegreeWords() { return kDegrees; }

std::string_view WordOf(std::span<const NumberWord> words, uint32_t number) {
  for (const NumberWord& row : words) {
    if (row.number == number) return row.word;
  }
  return {};
}

bool RoadsWord::IsOfferedBy(const CTravelModeInfo& info) const {
  if (offered) return (info.*offered)().first;
  const auto* const character = dynamic_cast<const RouteCharacterModeInfo*>(&info);
  return character != nullptr && character->AvoidUsedRoads().first;
}

std::span<const RoadsWord> RoadsWords() { return kRoads; }
