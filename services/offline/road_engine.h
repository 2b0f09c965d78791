#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

// What finds ways on this machine. It stands behind a module that is loaded at its first use, and
// that need not be installed. Module and program are always built together.

struct RoadPosition {
  double latitude = 0.0;   ///< degrees
  double longitude = 0.0;  ///< degrees
};

/// A way that is asked for.
struct RoadQuery {
  std::string database;     ///< the folder of a road database
  std::string profile;      ///< what vehicles may use and how fast, as an XML document
  std::string profileFile;  ///< a file that holds it
  std::string language;     ///< of the instructions: "en", "de", ...
  bool quickest = true;     ///< else the shortest
  RoadPosition from;
  RoadPosition to;
};

/// A point of a way, with what was travelled up to it.
struct RoadPoint {
  RoadPosition position;
  double metres = 0.0;
  double seconds = 0.0;
  std::string instruction;  ///< what to do here; empty for a point of the line only
};

enum class RoadResult : uint32_t {
  kFound,
  kNoRoadNearStart,  ///< within a kilometre
  kNoRoadNearEnd,
  kNoWay,
  kCancelled,
  kNoDatabase,   ///< it cannot be read
  kNotInstalled  ///< the module, or the data that belongs to it
};

/// Safe to call from every thread; one way is searched at a time.
class RoutingEngine {
 public:
  virtual ~RoutingEngine() = default;

  /// Whether there is a road for the profile within a kilometre of a position.
  virtual bool HasRoadNear(const RoadQuery& query, const RoadPosition& position) = 0;

  /// Searches the way from the start of `query` to its end. `cancelled` ends the search.
  virtual RoadResult FindWay(const RoadQuery& query, const std::atomic<bool>& cancelled,
                             std::vector<RoadPoint>& way) = 0;

  /// Lets go of a database that is to be replaced or removed.
  virtual void CloseDatabase(const std::string& folder) = 0;
};

inline constexpr char kRoadModule[] = "corvane_roads";
/// Name of the module's one function, which takes nothing and gives the engine. It is never
/// destroyed.
inline constexpr char kRoadModuleEntry[] = "CorvaneRoadModule";
using RoadModuleEntry = RoutingEngine* (*)();

/// The engine; null when the module is not installed. Any thread.
RoutingEngine* RoadEngine();
