#pragma once

class ConversionContext;
class CSettings;

/// Lets the next conversion ask for what the user has set up: the finder in use, the geocoder and
/// the countries; and lets it hand itineraries over and open links.
void AllowServices(const CSettings& settings, ConversionContext& context);
