#include "conversion/itinerary_hand_off.h"

#include <utility>

#include "base/status.h"

namespace {

ItineraryHandOff s_handOff;

}  // namespace

ItineraryHandOffRegistration::ItineraryHandOffRegistration(ItineraryHandOff handOff)
    : m_former(std::exchange(s_handOff, std::move(handOff))) {}

ItineraryHandOffRegistration::~ItineraryHandOffRegistration() { s_handOff = std::move(m_former); }

uint32_t HandOverItinerary(const CGpsPointArray& list) {
  return s_handOff ? s_handOff(list) : static_cast<uint32_t>(kStatusNotImplemented);
}
