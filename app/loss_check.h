#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "base/wide_string.h"
#include "conversion/conversion_context.h"
#include "conversion/conversion_notes.h"
#include "conversion/format_table.h"
#include "conversion/loss_report.h"
#include "io/byte_sink.h"

/// What is known of the losses of one conversion.
struct ConversionCheck {
  enum class EOutcome { kChecked, kOnlyWritten, kNotReadable };

  WideString source;
  WideString target;
  EOutcome outcome = EOutcome::kChecked;
  LossReport losses;       ///< between the itinerary and the file, when checked
  size_t listsMerged = 0;  ///< lists of the source that became one; 0 when there was one
  uint64_t linesPassedOver = 0;
  uint64_t stopsWithoutWaypoint = 0;
  uint64_t pointsWithoutPosition = 0;

  /// True when something is known to be lost on the way from the source to the target, and when
  /// nothing can be found in the target.
  bool HasLosses() const;
};

/// Takes what the reader of the source has told.
void TakeReaderNotes(const ConversionNotes& notes, ConversionCheck& check);

/// Reads the written files back and compares them with `list`: with the row's reader, or else with
/// those of the same extension or text. `context` is that of the writing.
void CheckWrittenFiles(const FormatTable& table, const CItineraryFormat& row,
                       const std::vector<WideString>& files, const CGpsPointArray& list,
                       const ConversionContext& context, ConversionCheck& check);

/// One to five lines for the user.
std::string DescribeCheck(const ConversionCheck& check);

/// The same as a JSON object.
void WriteJsonCheck(ByteSink& sink, const ConversionCheck& check);
