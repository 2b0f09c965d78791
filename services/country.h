#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "conversion/country_service.h"
#include "model/point.h"
#include "net/manual_reset_event.h"

// Which country this machine or a position is in. Calls wait for the answer. They return 0, a
// ServiceStatus (kServiceOther for an error that the service reports), or 100 + the number of the
// transport's failure; what they fill stays as it was then.

/// The country where this machine is, by its address in the internet, and a position there to begin
/// a map with. Waits at most so many milliseconds.
uint32_t GetCountry(CCountryInfo& country, CGpsCoordinate& position, int32_t waitMs = kWaitForever);

/// The name and the two letters of the country at a position.
uint32_t GetCountryCode(double latitude, double longitude, CCountryInfo& country);

/// What is known about a country, by its two letters.
uint32_t GetCountryInfo(std::string_view countryCode, CCountryInfo& country);

// Their replies.
uint32_t ReadMachineCountry(std::string_view reply, CCountryInfo& country,
                            CGpsCoordinate& position);
uint32_t ReadCountryCode(std::string_view reply, CCountryInfo& country);
uint32_t ReadCountryInfo(std::string_view reply, CCountryInfo& country);
