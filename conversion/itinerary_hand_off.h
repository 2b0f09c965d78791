#pragma once

#include <cstdint>
#include <functional>

#include "model/point_list.h"

/// Gives an itinerary to the companion program of a device instead of writing a file. Returns a
/// status.
using ItineraryHandOff = std::function<uint32_t(const CGpsPointArray& list)>;

/// Makes a hand-off the one in use as long as this object lives; of several the latest counts.
/// They change on one thread, while none is in use.
class ItineraryHandOffRegistration {
 public:
  explicit ItineraryHandOffRegistration(ItineraryHandOff handOff);
  ~ItineraryHandOffRegistration();
  ItineraryHandOffRegistration(const ItineraryHandOffRegistration&) = delete;
  ItineraryHandOffRegistration& operator=(const ItineraryHandOffRegistration&) = delete;

 private:
  ItineraryHandOff m_former;
};

/// Uses the hand-off in use. kStatusNotImplemented when there is none.
uint32_t HandOverItinerary(const CGpsPointArray& list);
