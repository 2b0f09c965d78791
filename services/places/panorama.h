#pragma once

#include <string_view>

#include "net/manual_reset_event.h"
#include "services/places/place_reply.h"

/// Asks Google for the panorama nearest to `position`, without a key: `places` holds it alone, its
/// description as name and its region as comment. `kServiceNoResults` where none is near. Waits at
/// most so many milliseconds.
uint32_t GetStreetViewLocation(const CGpsCoordinate& position, PlaceList& places,
                               int32_t waitMs = kWaitForever);

/// Reads the reply.
uint32_t ReadPanorama(std::string_view reply, PlaceList& places);
