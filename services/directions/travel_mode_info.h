#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <utility>

/// Whether something is offered, and what it is where nobody has chosen.
using OfferedAndDefault = std::pair<bool, bool>;
/// The largest and the smallest value, in this order; sizes and weights in tenths.
using MaximumAndMinimum = std::pair<uint32_t, uint32_t>;

/// What a provider offers for one travel mode; settings panels read it. The pairs of the road
/// kinds tell whether they can be avoided, and that they may be used by default.
class CTravelModeInfo {
 public:
  CTravelModeInfo() = default;
  virtual ~CTravelModeInfo() = default;
  CTravelModeInfo(const CTravelModeInfo&) = delete;
  CTravelModeInfo& operator=(const CTravelModeInfo&) = delete;

  /// Whether there is more than one way to choose among.
  virtual bool HasRouteChoice() const = 0;
  virtual OfferedAndDefault RouteChoice() const = 0;
  /// Values for `CRouteOptions::mode`.
  virtual std::set<uint32_t> RouteTypes() const = 0;
  /// `Capabilities` of the options to make (`MakeRouteOptions`).
  virtual uint32_t Capabilities() const = 0;
  virtual OfferedAndDefault Motorways() const = 0;
  virtual OfferedAndDefault Tolls() const = 0;
  virtual OfferedAndDefault BoatFerries() const = 0;
  virtual OfferedAndDefault RailFerries() const = 0;
  virtual OfferedAndDefault Tunnels() const = 0;
  virtual OfferedAndDefault DirtRoads() const = 0;
};

/// The same of a mode for trucks: what sizes and loads the provider understands.
class TruckModeInfo : public CTravelModeInfo {
 public:
  virtual OfferedAndDefault Tractor() const = 0;
  virtual MaximumAndMinimum Trailers() const = 0;
  virtual MaximumAndMinimum Reserved() const = 0;
  virtual std::set<uint32_t> HazardCategories() const = 0;
  virtual MaximumAndMinimum LimitedWeight() const = 0;
  virtual MaximumAndMinimum WeightPerAxle() const = 0;
  virtual MaximumAndMinimum Height() const = 0;
  virtual MaximumAndMinimum Width() const = 0;
  virtual MaximumAndMinimum Length() const = 0;
};

/// The same of a mode whose ways can have a character.
class RouteCharacterModeInfo : public CTravelModeInfo {
 public:
  virtual std::set<uint32_t> Hilliness() const = 0;
  virtual std::set<uint32_t> Windingness() const = 0;
  virtual OfferedAndDefault AvoidUsedRoads() const = 0;
};

/// By travel mode.
using TravelModes = std::map<uint32_t, std::unique_ptr<CTravelModeInfo>>;
