#pragma once

#include <string>
#include <string_view>

#include "services/places/place_reply.h"
#include "services/service_access.h"

// Places of Waze; both variants answer alike. A place's `comment` is its state.

std::string WazeGeocodingUrl(const ServiceAccess& access, std::string_view text);
std::string WazeReverseUrl(const ServiceAccess& access, const CGpsCoordinate& position);
uint32_t ReadWazePlaces(std::string_view reply, PlaceList& places);
/// The answer holds no position: the place stands where it was `asked` for.
uint32_t ReadWazeStreet(std::string_view reply, const CGpsCoordinate& asked, PlaceList& places);
