#pragma once

#include <stop_token>
#include <utility>

#include "conversion/geocoder.h"

/// A geocoder whose question another thread can end.
class CStoppableGeocoder : public CGeocoder {
 public:
  /// Ends the search that runs, and each that follows, with 100 + 12017. To be set while none runs.
  void SetStop(std::stop_token stop) { m_stop = std::move(stop); }

 protected:
  std::stop_token m_stop;
};
