#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "base/status.h"
#include "base/wide_string.h"
#include "conversion/conversion_context.h"
#include "conversion/files_of_run.h"
#include "conversion/format_table.h"
#include "conversion/loss_check.h"
#include "model/point_list.h"

/// How an itinerary is written.
struct WriteOptions {
  uint32_t option = 0;  ///< the writer's third argument; what it means stands in the row's facts
  /// What was done to the list so that the format can hold it; what is to be done yet is to write
  /// it into several numbered files.
  FitReport fit = {};
  bool silent = false;  ///< no question is asked
  bool checks = false;  ///< what was written is read back and compared
  /// Nothing of what is written stays; for the check alone.
  bool keepsNothing = false;
  Durability durability = Durability::kSynced;
  /// Points of the source were taken out on purpose, which would be lost with it.
  bool leavesPointsOut = false;
  /// Any file may be replaced, also the one that the points come from, whatever is lost with it.
  /// Without this the source is replaced only when what would be written has been read back and
  /// nothing of it is lost.
  bool force = false;
  /// The files of a run that are not to be replaced; null for none.
  FilesOfRun* run = nullptr;
};

/// Why a file was not even tried to be written.
enum class WriteRefusal {
  kNone,
  kSourceHoldsMore,  ///< it is the source, of which only a part was taken
  kSourceWouldLose,  ///< it is the source, and something of it would be lost; `check` tells what
  kKept,             ///< it is a file that the run must leave alone
};

/// What writing an itinerary has given.
struct TripWrite {
  uint32_t status = kStatusSuccess;
  FailureReason reason;                        ///< empty with the status 0
  WriteRefusal refusal = WriteRefusal::kNone;  ///< with the status kStatusDeclined
  WideString refusedFile;                      ///< which file that is about
  std::vector<WideString> files;               ///< that stand complete, in their order
  ConversionNotes notes;
  std::optional<LossCheck> check;  ///< when asked for, with the status 0; or with a refusal
};

/// Writes `list` with the writer of a row, which must have one. A file that could not be made is a
/// failure even where the writer says success. Any thread may call this; nothing leaves it as an
/// exception. A write that is cancelled leaves the former file.
TripWrite WriteTrip(const FormatTable& table, const CItineraryFormat& row, const WideString& path,
                    const CGpsPointArray& list, const TripSource& source,
                    const WriteOptions& options, ConversionContext& context);

/// The same to a stream, with the row's inner function, which it must have. It cannot
/// be read back: a check tells only what is known of the source.
TripWrite WriteTripTo(ByteSink& sink, const CItineraryFormat& row, const CGpsPointArray& list,
                      const TripSource& source, const WriteOptions& options,
                      ConversionContext& context);
