#pragma once

#include <string>
#include <string_view>

#include "services/places/place_reply.h"
#include "services/service_access.h"

// Places of TomTom: the best one of each answer.

std::string TomTomGeocodingUrl(const ServiceAccess& access, std::string_view text);
std::string TomTomReverseUrl(const ServiceAccess& access, const CGpsCoordinate& position);
uint32_t ReadTomTomPlaces(std::string_view reply, PlaceList& places);
uint32_t ReadTomTomAddresses(std::string_view reply, PlaceList& places);
