#pragma once

#include <string>

#include "app/options.h"
#include "conversion/lookups.h"

/// Lets a conversion ask for the positions and the countries of stops, each where the user has set
/// up the service for it and --offline does not forbid it; and for the places of links, which are
/// looked up on this machine until the user has chosen another finder.
void AllowLookups(const Options& options, Lookups& lookups);

/// The same for looking at a file: nothing is asked beyond this machine.
void AllowLocalLookups(const Options& options, Lookups& lookups);

/// Why positions of addresses, countries, or places of links were not asked for, and what to do
/// about it; empty when they were.
std::string PositionRemedy(const Options& options);
std::string CountryRemedy(const Options& options);
std::string PlaceRemedy(const Options& options);
