#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "model/point.h"

// Links that show one point in the map of another service.

/// By a page of the planner's site, which knows the point by its number.
std::string ShowInGoogleLink(const CGpsNamedPoint& point, int32_t number);
std::string ShowInBingLink(const CGpsNamedPoint& point, int32_t number);
std::string ShowInTomTomLink(const CGpsNamedPoint& point);
std::string ShowInHereLink(const CGpsNamedPoint& point);

/// An entry of the menu of a point.
struct ShowLink {
  uint32_t textId;  ///< what the entry says
  std::string link;
};

/// All of them in the order of the menu.
std::vector<ShowLink> ShowLinks(const CGpsNamedPoint& point, int32_t number);
