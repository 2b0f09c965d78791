#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "base/wide_string.h"
#include "model/point_list.h"
#include "settings/storage.h"

/// The directions provider of a fresh installation: the lowest number among the accounts that the
/// program comes with (Microsoft Bing).
inline constexpr int32_t kDefaultRouteProvider = 3;

/// What finds addresses and places in a fresh installation: the cities on this machine, so that
/// nobody's stops leave it unasked.
inline constexpr int32_t kDefaultFindProvider = 101;

/// What the settings ask of the directions providers that this program knows.
class RouteProviders {
 public:
  virtual ~RouteProviders() = default;
  virtual int32_t DefaultProvider() const = 0;
  virtual std::vector<int32_t> Providers() const = 0;
  /// The vehicles of a provider; none when there is no such provider.
  virtual std::optional<std::set<int32_t>> VehiclesOf(int32_t provider) const = 0;
};

/// Where a window stood, as its system records it; kept and given back, never looked into.
using WindowPlacement = std::array<uint8_t, 44>;

/// The map that the planner starts with.
struct MapChoice {
  uint32_t kind = 0;
  std::string name;  ///< UTF-8

  bool operator==(const MapChoice&) const = default;
};

/// The user's map sources: name in UTF-8 to number.
using MapSources = std::map<std::string, uint32_t>;

/// All settings. The fields begin with their defaults, which stand in the table of
/// core/setting_table.h together with the keys under which the fields are stored.
class CSettings {
 public:
  /// `openStorage` gives the store for each operation.
  explicit CSettings(std::function<storage::Storage()> openStorage = storage::OpenUserStorage);
  /// Saves what has been changed since it was loaded and not saved yet.
  ~CSettings();
  CSettings(const CSettings&) = delete;
  CSettings& operator=(const CSettings&) = delete;

  /// The settings of this process.
  static CSettings& Instance();

  /// Reads all keys below `rootPath`, which all other operations use from then on. A key that
  /// cannot be read keeps its default. A provider that `providers` does not know becomes the
  /// default one, a vehicle that the provider does not have becomes 0; without `providers` both
  /// stay as they are stored. Returns 0, or the platform's error code when the store itself could
  /// not be read; a store that does not exist yet is no failure.
  uint32_t Load(std::string_view rootPath = kSettingsRoot,
                const RouteProviders* providers = nullptr);

  /// Writes all keys except `Language` as one. A key that another program has changed since this
  /// object was loaded, and this one has not, keeps that program's value. A write that fails ends
  /// the save at that key. Returns 0 or the platform's error code.
  uint32_t Save();

  /// Replaces the points of `list` by the favourites, sorted by name. All four operations return
  /// 0 or the platform's error code; entries that hold no name are passed over. What cannot be
  /// read leaves `list` or `maps` alone, so that nobody saves an empty one over it.
  uint32_t LoadFavorites(CGpsPointArray& list) const;
  /// Stores all points. Positions pass through 32-bit floats.
  uint32_t SaveFavorites(const CGpsPointArray& list) const;
  uint32_t LoadMaps(MapSources& maps) const;
  uint32_t SaveMaps(const MapSources& maps) const;

  std::optional<WindowPlacement> converterPosition;
  std::optional<WindowPlacement> editorPosition;
  bool autoCalc;              ///< recalculate the itinerary after each change
  bool distMiles;             ///< show distances in miles
  bool optimizeUseDirection;  ///< optimise by road distance
  bool avoidHighway;
  bool avoidTolls;
  int32_t vehicleType;
  int32_t itineraryType;
  int32_t routeProvider;  ///< number of a directions provider
  bool forceRoad;         ///< place waypoints on roads
  bool autoAddStep;       ///< add a stage by a click on the route
  bool displayNumber;     ///< show waypoint numbers
  int32_t exportIndex;    ///< entry of the export list chosen last; negative = none
  int32_t language;       ///< primary language identifier, 0 = the system's
  int32_t coordinates;    ///< 0 decimal degrees, 1 with minutes, 2 with minutes and seconds
  int32_t truckHeight;    ///< sizes in tenths of a metre, weights in tenths of a ton
  int32_t truckWidth;
  int32_t truckLength;
  int32_t truckTrailersCount;
  int32_t truckLimitedWeight;
  int32_t truckWeightAxle;
  int32_t truckCategory;  ///< class of hazardous goods
  WideString userId;
  std::optional<MapChoice> defaultMap;
  int32_t findProvider;    ///< number of the service that finds addresses and places
  bool calculateAsked;     ///< the first calculation has asked which provider to take
  WideString plannerPage;  ///< address of a planner page in place of our own; empty: our own

 private:
  // A value for each row of the table, none where there is nothing to store.
  using Values = std::vector<std::optional<SettingsValue>>;

  void CheckProvider(const RouteProviders& providers);
  bool HasChanges() const;
  // Writes to `root` and tells in `known` what has been written.
  void SaveRows(storage::SFolder& root, Values& known) const;
  // Calls `action` with a store; gives 0 or the code of the exception that left it.
  uint32_t WithStorage(const std::function<void(storage::Storage&)>& action) const;

  std::function<storage::Storage()> m_openStorage;
  std::string m_rootPath{kSettingsRoot};
  Values m_known;  // what this object and the store last agreed upon; empty before the first load
};
