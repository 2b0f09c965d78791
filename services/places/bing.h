#pragma once

#include <string>
#include <string_view>

#include "services/places/place_reply.h"
#include "services/service_access.h"

// Places of Bing Maps.

std::string BingGeocodingUrl(const ServiceAccess& access, std::string_view text);
std::string BingReverseUrl(const ServiceAccess& access, const CGpsCoordinate& position);
uint32_t ReadBingPlaces(std::string_view reply, PlaceList& places);
