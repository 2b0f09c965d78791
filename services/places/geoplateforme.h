#pragma once

#include <string>
#include <string_view>

#include "services/places/place_reply.h"
#include "services/service_access.h"

// Places of IGN's Géoplateforme (France).

std::string GeoplateformeGeocodingUrl(const ServiceAccess& access, std::string_view text);
std::string GeoplateformeReverseUrl(const ServiceAccess& access, const CGpsCoordinate& position);
uint32_t ReadGeoplateformePlaces(std::string_view reply, PlaceList& places);
