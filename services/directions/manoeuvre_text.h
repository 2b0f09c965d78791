#pragma once

#include <string>
#include <string_view>

/// What to do at a place, in the language of the program, for services that tell it in words of
/// their own: `type` ("turn", "depart", "roundabout") and `modifier` ("left", "slight right") are
/// those of OSRM's interface, which others share. `road` is where it leads to, and may be empty.
std::string ManoeuvreText(std::string_view type, std::string_view modifier, std::string_view road);
