#pragma once

#include <cstdint>
#include <string>

#include "model/route_leg.h"

/// What the road engine is told about a vehicle and the user's wishes: an XML document with one
/// profile named "way". For a shortest way all roads that the vehicle may use count the same; what
/// is to be avoided is used only where there is hardly another way.
std::string RoadProfile(uint32_t travelMode, const CRouteOptions& options);

/// Rules for making a road database, from those that come with the engine: one of its marks of a
/// road, that of a hiking route, is made to say that the road costs a toll. Rules of another shape
/// come back as they are; then tolls are not known.
std::string RulesWithTolls(std::string rules);
