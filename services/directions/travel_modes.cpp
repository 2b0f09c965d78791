#include "services/directions/travel_modes.h"

#include <bit>
#include <initializer_list>

#include "services/directions/route_options.h"
#include "services/service_table.h"

namespace {

constexpr uint32_t Bits(std::initializer_list<uint32_t> numbers) {
  uint32_t bits = 0;
  for (const uint32_t number : numbers) bits |= 1U << number;
  return bits;
}

constexpr uint32_t kNoTypes = 0;
constexpr uint32_t kNone = 0;
constexpr uint32_t kFastestShortest = Bits({kFastest, kShortest});
constexpr uint32_t kViaMichelinTypes =
    Bits({kViaMichelinRecommended, kViaMichelinQuickest, kViaMichelinShortest,
          kViaMichelinSightseeing, kViaMichelinEconomical});
constexpr uint32_t kAllKinds =
    kMotorways | kTolls | kBoatFerries | kRailFerries | kTunnels | kDirtRoads;
constexpr uint32_t kTomTomKinds = kMotorways | kTolls | kBoatFerries | kDirtRoads;
constexpr uint32_t kFerries = kBoatFerries;

constexpr uint32_t kPlain = kRouteTypeOnly;
constexpr uint32_t kAvoiding = kAvoidances;
constexpr uint32_t kTruckAvoiding = kAvoidances | kTruck;
constexpr uint32_t kCharacter = kAvoidances | kRouteCharacter;

constexpr uint32_t kAllHazards = Bits({0, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14});

constexpr TruckLimits kHereTruck = {{4, 0},    {10000, 30}, {10000, 50}, {500, 20},
                                    {500, 30}, {3000, 80},  true,        kAllHazards};
// Without tractors and trailers; of hazardous goods only that there are some.
constexpr TruckLimits kPlainTruck = {{0, 0},    {10000, 30}, {10000, 50}, {500, 20},
                                     {500, 30}, {3000, 80},  false,       Bits({0, 14})};
// Weight and sizes only.
constexpr TruckLimits kSizedTruck = {{0, 0},    {10000, 30}, {0, 0}, {500, 20},
                                     {500, 30}, {3000, 80},  false,  Bits({0})};

constexpr TravelModeRow kTable[] = {
    {provider::kStraight, Bits({kAnyMode}), kNoTypes, kNone, kPlain, nullptr},
    {provider::kGoogle, Bits({kCar}), kNoTypes, kMotorways | kTolls | kBoatFerries, kAvoiding,
     nullptr},
    {provider::kGoogle, Bits({kPedestrian, kBicycle}), kNoTypes, kNone, kPlain, nullptr},
    {provider::kBing, Bits({kCar}), kFastestShortest, kMotorways | kTolls, kAvoiding, nullptr},
    {provider::kBing, Bits({kPedestrian}), kNoTypes, kNone, kPlain, nullptr},
    {provider::kTomTom, Bits({kCar, kPedestrian, kBicycle, kMotorcycle, kVan}),
     Bits({kFastest, kShortest, kEconomical, kThrilling}), kTomTomKinds, kCharacter, nullptr},
    {provider::kTomTom, Bits({kBus}), Bits({kFastest, kShortest, kEconomical}), kTomTomKinds,
     kAvoiding, nullptr},
    {provider::kTomTom6, Bits({kCar, kPedestrian, kBicycle, kMotorcycle, kVan}),
     Bits({kFastest, kShortest, kEconomical, kThrilling}), kTomTomKinds, kCharacter, nullptr},
    {provider::kTomTom6, Bits({kBus}), Bits({kFastest, kShortest, kEconomical}), kTomTomKinds,
     kAvoiding, nullptr},
    {provider::kViaMichelin, Bits({kCar, kTruckMode}), kViaMichelinTypes, kTolls, kAvoiding,
     nullptr},
    {provider::kViaMichelin, Bits({kPedestrian, kBicycle}), kNoTypes, kNone, kPlain, nullptr},
    {provider::kOsrm, Bits({kCar}), kNoTypes, kNone, kPlain, nullptr},
    {provider::kIgn, Bits({kCar}), kFastestShortest, kTolls | kTunnels, kAvoiding, nullptr},
    {provider::kIgn, Bits({kPedestrian}), kNoTypes, kNone, kPlain, nullptr},
    {provider::kWazeUs, Bits({kAnyMode}), kNoTypes, kNone, kPlain, nullptr},
    {provider::kWazeWorld, Bits({kAnyMode}), kNoTypes, kNone, kPlain, nullptr},
    {provider::kHere, Bits({kCar}), kFastestShortest, kAllKinds, kAvoiding, nullptr},
    {provider::kHere, Bits({kTruckMode}), kFastestShortest, kAllKinds, kTruckAvoiding, &kHereTruck},
    {provider::kHere, Bits({kPedestrian, kBicycle}), kNoTypes, kNone, kPlain, nullptr},
    {provider::kOpenRouteService, Bits({kCar}), kFastestShortest, kMotorways | kTolls, kAvoiding,
     nullptr},
    {provider::kOpenRouteService, Bits({kPedestrian, kBicycle}), kNoTypes, kNone, kPlain, nullptr},
    {provider::kTripy, Bits({kAnyMode}), kNoTypes, kNone, kPlain, nullptr},

    {provider::kOfflineRoads, Bits({kCar, kMotorcycle}), kFastestShortest,
     kMotorways | kTolls | kBoatFerries | kTunnels | kDirtRoads, kAvoiding, nullptr},
    {provider::kOfflineRoads, Bits({kTruckMode}), kFastestShortest,
     kMotorways | kTolls | kBoatFerries | kTunnels | kDirtRoads, kTruckAvoiding, &kSizedTruck},
    {provider::kOfflineRoads, Bits({kPedestrian, kBicycle}), kFastestShortest,
     kBoatFerries | kTunnels | kDirtRoads, kAvoiding, nullptr},
    {provider::kValhalla, Bits({kCar, kMotorcycle, kBus}), kFastestShortest,
     kMotorways | kTolls | kBoatFerries | kDirtRoads, kAvoiding, nullptr},
    {provider::kValhalla, Bits({kTruckMode}), kFastestShortest,
     kMotorways | kTolls | kBoatFerries | kDirtRoads, kTruckAvoiding, &kPlainTruck},
    {provider::kValhalla, Bits({kPedestrian, kBicycle}), kFastestShortest, kFerries, kAvoiding,
     nullptr},
    {provider::kBRouter, Bits({kCar}), Bits({kFastest, kShortest, kEconomical}), kNone, kPlain,
     nullptr},
    {provider::kBRouter, Bits({kPedestrian, kBicycle}), kFastestShortest, kNone, kPlain, nullptr},
    {provider::kOrs, Bits({kCar}), kFastestShortest, kMotorways | kTolls | kBoatFerries, kAvoiding,
     nullptr},
    {provider::kOrs, Bits({kTruckMode}), kFastestShortest, kMotorways | kTolls | kBoatFerries,
     kTruckAvoiding, &kPlainTruck},
    {provider::kOrs, Bits({kPedestrian, kBicycle}), kFastestShortest, kFerries, kAvoiding, nullptr},
    {provider::kHereV8, Bits({kCar, kBus}), kFastestShortest, kAllKinds, kAvoiding, nullptr},
    {provider::kHereV8, Bits({kTruckMode}), kFastestShortest, kAllKinds, kTruckAvoiding,
     &kHereTruck},
    {provider::kHereV8, Bits({kPedestrian, kBicycle, kMotorcycle}), kNoTypes, kFerries, kAvoiding,
     nullptr},
    {provider::kGoogleRoutes, Bits({kCar, kMotorcycle}), kNoTypes,
     kMotorways | kTolls | kBoatFerries, kAvoiding, nullptr},
    {provider::kGoogleRoutes, Bits({kPedestrian, kBicycle}), kNoTypes, kNone, kPlain, nullptr},
    {provider::kGeoplateforme, Bits({kCar}), kFastestShortest, kMotorways | kTunnels, kAvoiding,
     nullptr},
    {provider::kGeoplateforme, Bits({kPedestrian}), kFastestShortest, kNone, kPlain, nullptr},
};

std::set<uint32_t> SetOf(uint32_t bits) {
  std::set<uint32_t> numbers;
  for (; bits != 0; bits &= bits - 1) numbers.insert(static_cast<uint32_t>(std::countr_zero(bits)));
  return numbers;
}

/// One row as the settings panels see it; `Base` says what kind of options belongs to it.
template <typename Base>
class RowInfo : public Base {
 public:
  explicit RowInfo(const TravelModeRow& row) : m_row(row) {}

  bool HasRouteChoice() const override { return std::popcount(m_row.types) > 1; }
  OfferedAndDefault RouteChoice() const override { return {HasRouteChoice(), HasRouteChoice()}; }
  std::set<uint32_t> RouteTypes() const override { return SetOf(m_row.types); }
  uint32_t Capabilities() const override { return m_row.capabilities; }
  OfferedAndDefault Motorways() const override { return Offers(kMotorways); }
  OfferedAndDefault Tolls() const override { return Offers(kTolls); }
  OfferedAndDefault BoatFerries() const override { return Offers(kBoatFerries); }
  OfferedAndDefault RailFerries() const override { return Offers(kRailFerries); }
  OfferedAndDefault Tunnels() const override { return Offers(kTunnels); }
  OfferedAndDefault DirtRoads() const override { return Offers(kDirtRoads); }

 protected:
  const TravelModeRow& m_row;

 private:
  OfferedAndDefault Offers(RoadKind kind) const { return {(m_row.avoidances & kind) != 0, true}; }
};

class TruckRowInfo final : public RowInfo<TruckModeInfo> {
 public:
  using RowInfo::RowInfo;

  OfferedAndDefault Tractor() const override { return {m_row.truck->tractor, false}; }
  MaximumAndMinimum Trailers() const override { return m_row.truck->trailers; }
  MaximumAndMinimum Reserved() const override { return {0, 0}; }
  std::set<uint32_t> HazardCategories() const override {
    return SetOf(m_row.truck->hazardCategories);
  }
  MaximumAndMinimum LimitedWeight() const override { return m_row.truck->limitedWeight; }
  MaximumAndMinimum WeightPerAxle() const override { return m_row.truck->weightPerAxle; }
  MaximumAndMinimum Height() const override { return m_row.truck->height; }
  MaximumAndMinimum Width() const override { return m_row.truck->width; }
  MaximumAndMinimum Length() const override { return m_row.truck->length; }
};

class CharacterRowInfo final : public RowInfo<RouteCharacterModeInfo> {
 public:
  using RowInfo::RowInfo;

  std::set<uint32_t> Hilliness() const override { return {kHigh, kNormal, kLow}; }
  std::set<uint32_t> Windingness() const override { return {kHigh, kNormal, kLow}; }
  OfferedAndDefault AvoidUsedRoads() const override { return {true, true}; }
};

std::unique_ptr<CTravelModeInfo> InfoOf(const TravelModeRow& row) {
  if (row.capabilities & kTruck) return std::make_unique<TruckRowInfo>(row);
  if (row.capabilities & kRouteCharacter) return std::make_unique<CharacterRowInfo>(row);
  return std::make_unique<RowInfo<CTravelModeInfo>>(row);
}

}  // namespace

std::span<const TravelModeRow> TravelModeTable() { return kTable; }

const TravelModeRow* FindTravelMode(int32_t provider, uint32_t mode) {
  for (const TravelModeRow& row : kTable) {
    if (row.provider == provider && row.HasMode(mode)) return &row;
  }
  return nullptr;
}

uint32_t FirstTravelMode(int32_t provider) {
  uint32_t modes = 0;
  for (const TravelModeRow& row : kTable) {
    if (row.provider == provider) modes |= row.modes;
  }
  return modes == 0 ? 0 : static_cast<uint32_t>(std::countr_zero(modes));
}

TravelModes TravelModesOf(int32_t provider) {
  TravelModes modes;
  for (const TravelModeRow& row : kTable) {
    if (row.provider != provider) continue;
    for (const uint32_t mode : SetOf(row.modes)) modes.emplace(mode, InfoOf(row));
  }
  return modes;
}
