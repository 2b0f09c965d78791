#pragma once

#include <string>
#include <string_view>

#include "services/places/place_reply.h"
#include "services/service_access.h"

// Places of ViaMichelin.

std::string ViaMichelinGeocodingUrl(const ServiceAccess& access, std::string_view text);
/// Asks for one place again by the id that an answer gave it.
std::string ViaMichelinPlaceUrl(const ServiceAccess& access, std::string_view placeId);
std::string ViaMichelinReverseUrl(const ServiceAccess& access, const CGpsCoordinate& position);
/// With `ids`, each place's id goes there; empty where it has none.
uint32_t ReadViaMichelinPlaces(std::string_view reply, PlaceList& places,
                               std::vector<std::string>* ids = nullptr);
