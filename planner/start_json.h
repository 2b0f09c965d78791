#pragma once

#include <optional>
#include <string>

#include "planner/page_services.h"
#include "settings/map_sources.h"
#include "settings/settings.h"

/// The JSON text that the page's `InitMap` gets: where the user is if that is known, maps,
/// settings, language, and a button's label for every companion program that is installed.
std::string StartJson(const CSettings& settings, const MapSources& maps,
                      const std::optional<UserCountry>& country);
