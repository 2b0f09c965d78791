#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "services/links/map_link.h"

// Links of HERE's maps: stops as parts of the path, each a name and a position.

bool IsHereHost(std::string_view host);
MapLink ParseHereLink(std::string_view text);

/// The most points that the page takes in one link.
inline constexpr size_t kHerePoints = 10;

/// A link with the way through these points: on foot for pedestrians, else by car.
std::string HereLink(LinkPoints points, const LinkOptions& options, const std::string& site);
