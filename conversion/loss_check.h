#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "base/wide_string.h"
#include "conversion/conversion_context.h"
#include "conversion/fit.h"
#include "conversion/format_table.h"
#include "conversion/loss_report.h"
#include "model/point_list.h"

/// Where the points that are written come from.
struct TripSource {
  /// True when the file holds more than was taken of it, which would be lost with it.
  bool HoldsMore() const { return listsTaken < listsFound; }

  std::vector<WideString> paths;  ///< none for a link or a stream
  size_t listsFound = 0;
  size_t listsTaken = 0;
  ConversionNotes notes;  ///< of its reader
};

/// What is known of the losses of one conversion.
struct LossCheck {
  enum class Outcome {
    kChecked,
    kOnlyWritten,  ///< no reader understands the format
    kNotReadable,  ///< a reader should, and does not
    kNoFile,       ///< a pipe or a device, which cannot be read again
  };

  Outcome outcome = Outcome::kChecked;
  LossReport losses;             ///< between the itinerary and the file, when checked
  size_t listsMerged = 0;        ///< lists of the source that became one; 0 when there was one
  size_t listsLeft = 0;          ///< lists of the source that were not taken
  ConversionNotes notes;         ///< of the source's reader
  size_t doubtfulPositions = 0;  ///< that no latitude or longitude can be
  FitReport fit;                 ///< what was done to the itinerary before
  bool fitHelps = false;         ///< something was lost that fitting would keep

  size_t LinesPassedOver() const { return notes.Count(ConversionNote::kLinePassedOver); }
  size_t StopsWithoutWaypoint() const { return notes.Count(ConversionNote::kStopWithoutWaypoint); }
  size_t PointsWithoutPosition() const {
    return notes.Count(ConversionNote::kPointWithoutPosition) + StopsNotLookedUp();
  }

  /// Stops of a link or file with an address in place of a position, which nobody was asked for or
  /// nobody knows, beyond those that are counted without.
  size_t StopsNotLookedUp() const {
    return notes.Count(ConversionNote::kStopNotFound) + notes.Count(ConversionNote::kPlaceNotAsked);
  }

  /// True when something is known to be lost on the way from the source to the target, and when
  /// nothing can be found in the target.
  bool HasLosses() const;
  /// True when that are stops or their places, or the target as a whole.
  bool HasGraveLosses() const;
  /// True when there is more to say than that all is well.
  bool IsWorthTelling() const {
    return HasLosses() || doubtfulPositions > 0 || fit.HasDone() || fit.lacksSpeller;
  }
  /// True when something was lost that fitting might keep: names, comments, or stops that are found
  /// by their names.
  bool MayBeFitted() const;
  /// True when all of the source that an itinerary can be is in it.
  bool IsComplete() const { return !notes.HasLosses() && listsLeft == 0; }
};

/// The rows whose readers may understand what `row` writes, its own first.
std::vector<const CItineraryFormat*> ReadersOf(const FormatTable& table,
                                               const CItineraryFormat& row);

/// What is known when nothing can be read back: what came of the source, and the list.
LossCheck CheckStream(const CGpsPointArray& list, const TripSource& source);

/// Reads the written files back and compares them with `list`: with the row's reader, or else with
/// those of the same extension or text. What is `known` from reading while the file was written
/// need not be found out again. `context` is that of the writing.
LossCheck CheckWrittenFiles(const FormatTable& table, const CItineraryFormat& row,
                            const std::vector<WideString>& files, const CGpsPointArray& list,
                            const std::optional<LossReport>& known, const TripSource& source,
                            const ConversionContext& context);
