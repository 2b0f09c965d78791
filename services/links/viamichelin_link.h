#pragma once

#include <string>
#include <string_view>

#include "services/links/map_link.h"

// Links of ViaMichelin's route planner: stops as values of the query.

bool IsViaMichelinHost(std::string_view host);
MapLink ParseViaMichelinLink(std::string_view text);

/// A link with the way through these points; the page takes any number. It is in French where
/// `language` is.
std::string ViaMichelinLink(LinkPoints points, const LinkOptions& options, const std::string& site,
                            const std::string& language);
