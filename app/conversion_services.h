#pragma once

#include "app/options.h"
#include "conversion/lookups.h"

/// Lets a conversion ask for the positions and the countries of stops, each where the user has set
/// up the service for it and --offline does not forbid it.
void AllowLookups(const Options& options, Lookups& lookups);

/// Why positions of addresses, or countries, were not asked for, and what to do about it; empty
/// when they were.
std::string PositionRemedy(const Options& options);
std::string CountryRemedy(const Options& options);
