#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "model/point.h"
#include "model/route_leg.h"

/// What a directions provider has answered.
struct DirectionsAnswer {
  uint32_t status = 0;           ///< 0 success, 1 to 9, 100 + n for transport error n
  std::vector<CRouteData> legs;  ///< not empty on success
  int32_t provider = 0;
};

/// The statuses from here on are transport errors, plus this.
inline constexpr uint32_t kTransportStatus = 100;

/// The selected directions provider, asked with the options of the present settings. Everything on
/// the window's thread.
class RoadDirections {
 public:
  virtual ~RoadDirections() = default;

  /// Asks for the way through these points and waits. `goesOn` is called many times a second
  /// meanwhile; its false cancels the request, and the status then is that of a cancelled one.
  virtual DirectionsAnswer Ask(const std::vector<CGpsPoint>& points,
                               const std::function<bool()>& goesOn) = 0;

  /// Asks and returns at once. `answered` runs from the planner's queue, unless this object has
  /// gone by then.
  virtual void AskLater(const std::vector<CGpsPoint>& points,
                        std::function<void(const DirectionsAnswer&)> answered) = 0;

  /// The provider that would be asked now.
  virtual int32_t Provider() const = 0;
};
