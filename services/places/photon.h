#pragma once

#include <string>
#include <string_view>

#include "services/places/place_reply.h"
#include "services/service_access.h"

// Places of a Photon server, as https://github.com/komoot/photon describes it.

std::string PhotonGeocodingUrl(const ServiceAccess& access, std::string_view text);
std::string PhotonReverseUrl(const ServiceAccess& access, const CGpsCoordinate& position);
uint32_t ReadPhotonPlaces(std::string_view reply, PlaceList& places);
