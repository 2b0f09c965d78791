#pragma once

#include <optional>
#include <string_view>

#include "model/point.h"

/// Latitude and longitude at the start of a line: decimal degrees, or degrees with minutes and
/// seconds, with signs or the letters N, S, E and W, parted by a comma, a semicolon or blanks. What
/// follows is the name. Nothing for any other line.
std::optional<CGpsNamedPoint> ReadPastedPosition(std::string_view line);
