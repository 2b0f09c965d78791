#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "services/links/map_link.h"

// Links of TomTom's MyDrive: JSON behind the "#".

bool IsMyDriveHost(std::string_view host);
MapLink ParseMyDriveLink(std::string_view text);

/// The most points that the page takes in one link.
inline constexpr size_t kMyDrivePoints = 50;

/// A link with the way through these points, seen around the middle one.
std::string MyDriveLink(LinkPoints points, const LinkOptions& options, const std::string& site);
