#pragma once

#include <cstdint>

#include "base/wide_string.h"
#include "conversion/map_links.h"
#include "model/point_list.h"
#include "services/directions/route_wishes.h"
#include "settings/settings.h"

// The writers of the format rows whose target is a web planner. They write no file: their links go
// to `takeLink` of the context, in the order of the stops. A list with more points than the page
// takes goes in several links, each beginning with the last point of the one before; so does one of
// more than `splitLimit` points where that is not 0. `path` and `silent` mean nothing to them.
// Returned is 0, what `takeLink` gives, or kStatusInvalidParameter for an empty list and links of
// one point.

uint32_t WriteGoogleMapsLink(const WideString& path, const CGpsPointArray& list,
                             uint32_t splitLimit, bool silent);
uint32_t WriteHereLink(const WideString& path, const CGpsPointArray& list, uint32_t splitLimit,
                       bool silent);
uint32_t WriteViaMichelinLink(const WideString& path, const CGpsPointArray& list,
                              uint32_t splitLimit, bool silent);
uint32_t WriteMyDriveLink(const WideString& path, const CGpsPointArray& list, uint32_t splitLimit,
                          bool silent);

/// What the user wishes of the way that a link shows; where nothing is said, the settings count.
LinkOptions LinkOptionsFor(const RouteWishes& wishes, const CSettings& settings);
