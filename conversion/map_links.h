#pragma once

#include <cstdint>
#include <functional>
#include <string>

/// What a link that is written asks for besides its stops. The numbers are those of the settings
/// and of all directions.
struct LinkOptions {
  uint32_t travelMode = 0;  ///< 0: any
  uint32_t routeType = 1;
  bool avoidsMotorways = false;
  bool avoidsTolls = false;
  bool wantsAlternatives = false;
  uint32_t hilliness = 1;
  uint32_t windingness = 1;
};

/// Takes a link that a writer has made, to show or to open it. Returns a status.
using LinkTaker = std::function<uint32_t(const std::string& link)>;
