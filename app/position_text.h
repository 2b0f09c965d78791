#pragma once

#include <optional>
#include <string_view>

#include "model/point.h"

/// Understands a position as it is typed: latitude, comma, longitude, in decimal degrees within
/// their ranges. Nothing for any other text.
std::optional<CGpsCoordinate> ParsePosition(std::string_view text);
