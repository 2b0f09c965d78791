#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/wide_string.h"
#include "services/offline/road_engine.h"

/// The area of a road database in degrees.
struct RoadBounds {
  double south = 0.0;
  double west = 0.0;
  double north = 0.0;
  double east = 0.0;

  bool Holds(const RoadPosition& position) const;
};

/// A road database of this user's.
struct RoadDatabase {
  std::string name;
  WideString folder;
  std::optional<RoadBounds> bounds;  ///< nothing where it is not known
};

/// All road databases, by name.
std::vector<RoadDatabase> ListRoadDatabases();

/// Whether a database may have this name: up to 64 letters, digits, "-" and "_".
bool IsRoadDatabaseName(std::string_view name);

enum class RoadsChange : uint32_t {
  kDone,
  kWrongName,
  kNotThere,      ///< no such database, or no such extract
  kNoExtract,     ///< the file is no OpenStreetMap extract
  kNoRoads,       ///< the extract holds none
  kNotInstalled,  ///< the program that makes databases
  kNotWritable,   ///< the folder of the databases
  kInterrupted,
  kFailed
};

/// Makes a database of an OpenStreetMap extract, or makes it anew: it is there whole when this ends
/// with kDone, and otherwise what was there before stays. `onProgress` gets the lines that the
/// program writes. `failure` gets its last words when it has failed.
RoadsChange AddRoadDatabase(std::string_view name, const WideString& extract,
                            const std::function<void(std::string_view line)>& onProgress,
                            std::string& failure);

RoadsChange RemoveRoadDatabase(std::string_view name);
