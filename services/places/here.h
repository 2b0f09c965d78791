#pragma once

#include <string>
#include <string_view>

#include "services/places/place_reply.h"
#include "services/service_access.h"

// Places of HERE's first interfaces. A search's `comment` is the vicinity.

std::string HereGeocodingUrl(const ServiceAccess& access, std::string_view text);
std::string HereReverseUrl(const ServiceAccess& access, const CGpsCoordinate& position);
std::string HereSearchUrl(const ServiceAccess& access, std::string_view text,
                          const CGpsCoordinate& position);
uint32_t ReadHerePlaces(std::string_view reply, PlaceList& places);
uint32_t ReadHereSearch(std::string_view reply, PlaceList& places);
