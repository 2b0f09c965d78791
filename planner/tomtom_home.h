#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/wide_string.h"
#include "model/point_list.h"

// The hand-off of an itinerary to TomTom HOME: the program fetches an archive with the itinerary
// from a server of ours on this machine, after it was given the address of a description.

/// The key of the format row.
inline constexpr std::u16string_view kTomTomHomeKey = u"tth";

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

/// The writer of the format row: offers the bundle on the local server and calls TomTom HOME.
/// `path` gives the bundle's name only. Returns a status; `kStatusPortTaken` where another program
/// has the server's port.
uint32_t WriteTomTomHome(const WideString& path, const CGpsPointArray& list, uint32_t splitLimit,
                         bool silent);

/// Waits until TomTom HOME has fetched all that was offered; false when the time is over first.
bool WaitUntilTomTomHasFetched(std::chrono::milliseconds time);
