#pragma once

#include <string>
#include <string_view>

#include "model/point.h"

// Pieces of the addresses of requests.

/// A coordinate in a request: fixed notation, six decimals.
std::string CoordinateText(double degrees);

/// Latitude, `separator`, longitude.
std::string LatLonText(const CGpsCoordinate& position, std::string_view separator = ",");

/// Longitude, `separator`, latitude.
std::string LonLatText(const CGpsCoordinate& position, std::string_view separator = ",");

/// A value of an account as it stands in a query: escaped, save for the signs that mean nothing
/// there, so that keys and codes go out as the services gave them.
std::string AccountText(std::string_view value);

/// Appends `name` (with "&" and "=") and the value as `AccountText` has it, even an empty one.
void AppendParameter(std::string& url, std::string_view name, std::string_view value);
/// The same; nothing when the value is empty.
void AppendParameterIfAny(std::string& url, std::string_view name, std::string_view value);
