#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "services/links/map_link.h"

// Links of Google Maps: the directions and places of today, with stops as parts of the path, those
// for programs with "api=1", and the classic form with stops in the query.

/// True for a host of Google's maps, or of its main site, of any country.
bool IsGoogleMapsHost(std::string_view host);

/// True for a link that only says where the true one can be asked for.
bool IsShortGoogleLink(std::string_view link);

/// What the link itself says.
MapLink ParseGoogleLink(std::string_view text);

/// The stops of a saved map, from the page script that stands for it. None when it cannot be read.
std::vector<LinkStop> ParseSavedMap(std::string_view script);

/// The most points that the page takes in one link.
inline constexpr size_t kGooglePoints = 25;

/// A link with the way through these points. `language` is that of the page, empty for the
/// browser's own.
std::string GoogleLink(LinkPoints points, const LinkOptions& options, const std::string& site,
                       const std::string& language);
