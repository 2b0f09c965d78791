#pragma once

#include <cstdint>
#include <string>

#include "base/wide_string.h"
#include "model/point_list.h"

// The hand-off of an itinerary to TomTom HOME: the program fetches an archive with the itinerary
// from a server of ours on this machine, after it was given the address of a description.

/// What TomTom HOME fetches, each once.
struct TomTomBundle {
  std::string archiveName;
  std::string archive;  ///< a ZIP file with the itineraries in the folder "ITN"
  std::string descriptionName;
  std::string description;  ///< XML
  std::string link;         ///< what makes TomTom HOME fetch both
};

/// Makes the bundle. A list of more than `limit` points, where that is not 0, goes in numbered
/// parts, each beginning with the last stop of the one before. `baseName` names archive and
/// description. Returns 0 or a status: kStatusInvalidParameter for parts of one point.
uint32_t MakeTomTomBundle(const std::string& baseName, const CGpsPointArray& list, uint32_t limit,
                          TomTomBundle& bundle);

