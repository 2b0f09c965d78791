#pragma once

#include <string>
#include <vector>

#include "services/links/link_text.h"
#include "services/links/map_link.h"
#include "tests/list_builder.h"

/// What a link says about its stops in one line: "name@latitude,longitude" or an address, between
/// bars.
inline std::string Said(const std::vector<LinkStop>& stops) {
  std::string said;
  for (const LinkStop& stop : stops) {
    if (!said.empty()) said += '|';
    said += stop.name;
    if (stop.position) said += "@" + LinkPosition(*stop.position);
  }
  return said;
}

/// Pointers to the points of a list.
inline std::vector<const CGpsNamedPoint*> PointersTo(const CGpsPointArray& list) {
  std::vector<const CGpsNamedPoint*> pointers;
  for (const CGpsPoint& point : list.points) pointers.push_back(&point);
  return pointers;
}
