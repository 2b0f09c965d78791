#pragma once

#include <cstdint>
#include <string_view>

#include "base/status.h"
#include "base/wide_string.h"
#include "conversion/conversion_context.h"
#include "conversion/format_table.h"
#include "model/point_list.h"

/// What reading a file has given.
struct TripRead {
  uint32_t status = kStatusBadFormat;
  FailureReason reason;  ///< empty with the status 0
  const CItineraryFormat* row =
      nullptr;       ///< whose reader gave the status; null when none was tried
  PointLists lists;  ///< with the status 0: at least one, none without points
  /// What a reader notes counts only with the status 0, for the notes of one that the file was not
  /// for mean nothing; what was asked of a service is told in any case.
  ConversionNotes notes;
};

/// True for a path that is no file but a link: "http://" or "https://" and more.
bool IsWebAddress(std::u16string_view path);

/// Tries the readers of the path's extension ("kml" for "kmz") in table order until one ends with
/// success, with a file that is locked, or with the user's cancelling; gives the last result. A web
/// address goes to the readers of the extension "url". A file that no reader knows has the status
/// kStatusBadFormat, and so has one without points. `silent`: no question is asked. Any thread may
/// call this; nothing leaves it as an exception.
///
/// `after`: begins behind this row, when the lists of its reader were not wanted and the next one
/// may see others in the file. `row` is null then when no reader is left.
TripRead ReadTrip(const FormatTable& table, const WideString& path, ConversionContext& context,
                  bool silent, const CItineraryFormat* after = nullptr);

/// The same with the reader of one row, which must have one.
TripRead ReadTripWith(const CItineraryFormat& row, const WideString& path,
                      ConversionContext& context, bool silent);
