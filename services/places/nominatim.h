#pragma once

#include <string>
#include <string_view>

#include "services/places/place_reply.h"
#include "services/service_access.h"

// Places of a Nominatim server, as https://nominatim.org/release-docs/latest/api/ describes it.

std::string NominatimGeocodingUrl(const ServiceAccess& access, std::string_view text);
std::string NominatimReverseUrl(const ServiceAccess& access, const CGpsCoordinate& position);
uint32_t ReadNominatimPlaces(std::string_view reply, PlaceList& places);
uint32_t ReadNominatimPlace(std::string_view reply, PlaceList& places);
