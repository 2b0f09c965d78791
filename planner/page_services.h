#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/wide_string.h"
#include "model/point.h"
#include "planner/directions.h"
#include "planner/script_value.h"

/// Where this machine is.
struct UserCountry {
  std::string code;
  double latitude = 0.0;
  double longitude = 0.0;
};

/// What the page asks of the network. Failures of the transport are CInternetException; a service
/// that has no answer, or is not set up, gives nothing.
class PageServices {
 public:
  virtual ~PageServices() = default;

  /// The page waits for most answers, and the window with it: one that takes longer than so many
  /// milliseconds is none.
  virtual int32_t WaitMs() const { return 10'000; }

  /// The body of a reply. Waits.
  virtual std::string Get(const std::string& url, const std::string& referrer,
                          const std::string& host) = 0;
  /// The file that holds the body; empty when none came. An empty target takes one in the cache.
  virtual WideString Download(const std::string& url, const std::string& referrer,
                              const WideString& target) = 0;
  /// Asks without waiting: `callback` gets the error number and the body later. Of the requests
  /// that wait in a queue only the two newest stay.
  virtual void Enqueue(int32_t queue, const std::string& url, const std::string& referrer,
                       const std::string& host, ScriptFunctionPtr callback) = 0;

  /// The address at a position, by the finder in use.
  virtual std::optional<CGpsNamedPoint> FindAddress(const CGpsCoordinate& position) = 0;
  virtual std::optional<CGpsNamedPoint> FindPanorama(const CGpsCoordinate& position) = 0;
  virtual std::optional<CGpsNamedPoint> FindElevation(const CGpsCoordinate& position) = 0;
  /// Null when there are none.
  virtual RoadDirections* Directions() = 0;
  virtual std::optional<UserCountry> FindCountry() = 0;
  /// Takes what the page knows of the services' accounts.
  virtual void UpdateProviders(const std::string& json) = 0;
};
