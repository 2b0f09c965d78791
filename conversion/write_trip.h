#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "base/status.h"
#include "base/wide_string.h"
#include "conversion/conversion_context.h"
#include "conversion/format_table.h"
#include "conversion/loss_check.h"
#include "model/point_list.h"

/// How an itinerary is written.
struct WriteOptions {
  uint32_t option = 0;  ///< the writer's third argument; what it means stands in the row's facts
  /// Written into several numbered files when the list has more points; 0 for one file.
  size_t mostPoints = 0;
  bool silent = false;  ///< no question is asked
  bool checks = false;  ///< what was written is read back and compared
  /// Nothing of what is written stays; for the check alone.
  bool keepsNothing = false;
  /// The file that the points come from may be overwritten whatever is lost with it.
  bool force = false;
};

/// Why a file was not even tried to be written.
enum class WriteRefusal {
  kNone,
  kSourceHoldsMore,  ///< it is the source, of which only a part was taken
};

/// What writing an itinerary has given.
struct TripWrite {
  uint32_t status = kStatusSuccess;
  FailureReason reason;                        ///< empty with the status 0
  WriteRefusal refusal = WriteRefusal::kNone;  ///< with the status kStatusDeclined
  std::vector<WideString> files;               ///< that stand complete, in their order
  ConversionNotes notes;
  std::optional<LossCheck> check;  ///< when asked for, with the status 0
};

/// Writes `list` with the writer of a row, which must have one. A file that could not be made is a
/// failure even where the writer says success. Any thread may call this; nothing leaves it as an
/// exception. A write that is cancelled leaves the former file.
TripWrite WriteTrip(const FormatTable& table, const CItineraryFormat& row, const WideString& path,
                    const CGpsPointArray& list, const TripSource& source,
                    const WriteOptions& options, ConversionContext& context);
