#pragma once

#include "conversion/country_service.h"

/// The countries of stops, as Geonames tells them to readers and writers. Any thread.
CountryService& GeonamesCountries();
