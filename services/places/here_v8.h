#pragma once

#include <string>
#include <string_view>

#include "services/places/place_reply.h"
#include "services/service_access.h"

// Places of HERE's Geocoding and Search interface, version 1.

std::string HereV8GeocodingUrl(const ServiceAccess& access, std::string_view text);
std::string HereV8ReverseUrl(const ServiceAccess& access, const CGpsCoordinate& position);
/// `radius` in metres.
std::string HereV8SearchUrl(const ServiceAccess& access, std::string_view text,
                            const CGpsCoordinate& position, uint32_t radius);
uint32_t ReadHereV8Places(std::string_view reply, PlaceList& places);
