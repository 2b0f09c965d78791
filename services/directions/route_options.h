#pragma once

#include <cstdint>
#include <memory>

#include "model/route_leg.h"

/// What an options object can express; its `Capabilities` is a mask of these.
enum RouteCapability : uint32_t {
  kRouteTypeOnly = 1,
  kAvoidances = 2,
  kTruck = 4,
  kRouteCharacter = 8,
  /// Asked for by HERE, set by none of our classes.
  kParking = 32,
};

/// How a way is chosen: `CRouteOptions::mode` for all providers save ViaMichelin, which counts
/// differently (`ViaMichelinType`).
enum RouteType : uint32_t { kFastest = 1, kShortest = 2, kEconomical = 4, kThrilling = 5 };

/// ViaMichelin's own scale.
enum ViaMichelinType : uint32_t {
  kViaMichelinRecommended = 0,
  kViaMichelinQuickest = 1,
  kViaMichelinShortest = 2,
  kViaMichelinSightseeing = 3,
  kViaMichelinEconomical = 4,
};

/// What the way is travelled with, the same numbers for all providers.
enum TravelMode : uint32_t {
  kAnyMode = 0,  ///< of providers that know no modes
  kCar = 1,
  kTruckMode = 2,
  kPedestrian = 3,
  kBicycle = 4,
  kMotorcycle = 5,
  kVan = 6,
  kBus = 7,
};

/// Which kinds of roads may be used.
class AvoidanceOptions : public CRouteOptions {
 public:
  std::unique_ptr<CRouteOptions> Clone() const override;
  uint32_t Capabilities() const override;
  /// Also takes over what the other avoids.
  void Merge(const CRouteOptions& other) override;

  bool motorways = true;
  bool tolls = true;
  bool boatFerries = true;
  bool railFerries = true;
  bool tunnels = true;
  bool dirtRoads = true;
};

/// Kinds of hazardous goods, numbered as HERE's vehicle categories: 0 none, 1 public transport, 2
/// common goods, then the twelve classes of danger.
enum HazardCategory : uint32_t {
  kNoHazard = 0,
  kPublicTransport = 1,
  kCommonGoods = 2,
  kFirstHazard = 3,
  kLastHazard = 14,
};

/// Size and load of a truck. Sizes and weights count in tenths of a metre or a ton; 0 is not given.
class TruckOptions : public AvoidanceOptions {
 public:
  std::unique_ptr<CRouteOptions> Clone() const override;
  uint32_t Capabilities() const override;
  /// Also takes the other's values where there are none.
  void Merge(const CRouteOptions& other) override;

  uint32_t hazardCategory = kNoHazard;
  bool tractor = false;
  uint32_t trailers = 0;
  uint32_t reserved = 0;
  uint32_t limitedWeight = 0;
  uint32_t weightPerAxle = 0;
  uint32_t height = 0;
  uint32_t width = 0;
  uint32_t length = 0;
};

/// How much of something a thrilling way shall have.
enum RouteDegree : uint32_t { kHigh = 0, kNormal = 1, kLow = 2 };

/// What a way for its own sake shall be like.
class RouteCharacterOptions : public AvoidanceOptions {
 public:
  std::unique_ptr<CRouteOptions> Clone() const override;
  uint32_t Capabilities() const override;
  /// Also takes the other's degrees where they are normal.
  void Merge(const CRouteOptions& other) override;

  bool avoidUsedRoads = true;  ///< like its kin: true if roads may be used again
  uint32_t hilliness = kNormal;
  uint32_t windingness = kNormal;
};

/// The avoidances among the options; null when they have none.
const AvoidanceOptions* AvoidancesOf(const CRouteOptions& options);
/// The truck among the options; null without one.
const TruckOptions* TruckOf(const CRouteOptions& options);
/// The character among the options; null without one.
const RouteCharacterOptions* CharacterOf(const CRouteOptions& options);

/// New options, with defaults, of the class that has these `capabilities`.
std::unique_ptr<CRouteOptions> MakeRouteOptions(uint32_t capabilities);
