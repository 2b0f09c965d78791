#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "conversion/format_table.h"
#include "model/point_list.h"

/// What was done to an itinerary so that a format can hold it.
struct FitReport {
  size_t namesGiven = 0;          ///< to stops without one, where stops are found by name
  size_t namesMadeUnique = 0;     ///< where several places had one name
  size_t textsSpelled = 0;        ///< texts with letters that the format lacks
  size_t separatorsReplaced = 0;  ///< texts with characters that mean something else in the file
  size_t textsCut = 0;
  size_t mostPoints = 0;      ///< in one file, when that makes several; 0 for one file
  bool lacksSpeller = false;  ///< the part of the program that spells texts is not installed

  bool HasDone() const { return namesGiven > 0 || mostPoints > 0 || HasLosses(); }
  /// True when texts are not as they were.
  bool HasLosses() const {
    return namesMadeUnique > 0 || textsSpelled > 0 || separatorsReplaced > 0 || textsCut > 0;
  }
};

/// Adapts an itinerary to what files of a row can hold: letters spelled in the format's alphabet,
/// separators replaced, texts cut between letters, names unique where stops are found by them.
/// `encoding` is that of the file's texts, empty for the format's own. Takes linear time.
FitReport FitItinerary(CGpsPointArray& list, const CItineraryFormat& row,
                       const std::string& encoding);

/// Whether fitting would change anything.
bool WouldFit(const CGpsPointArray& list, const CItineraryFormat& row, const std::string& encoding);
