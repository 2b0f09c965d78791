#pragma once

#include <string>
#include <string_view>

#include "services/places/place_reply.h"
#include "services/service_access.h"

// Places of Google Maps: geocoding, reverse geocoding and the text search answer alike.

std::string GoogleGeocodingUrl(const ServiceAccess& access, std::string_view text);
std::string GoogleReverseUrl(const ServiceAccess& access, const CGpsCoordinate& position);
/// `radius` in metres.
std::string GoogleSearchUrl(const ServiceAccess& access, std::string_view text,
                            const CGpsCoordinate& position, uint32_t radius);
uint32_t ReadGooglePlaces(std::string_view reply, PlaceList& places);
