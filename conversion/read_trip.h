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

/// How a file is read.
struct ReadOptions {
  bool silent = false;  ///< no question is asked
  /// Names the format: an extension, "extension:textId" for one row, or one of `FormatAliases`.
  /// Empty: the path's extension does.
  WideString key = {};
  /// The content decides where neither key nor extension do.
  bool byContent = false;
  /// Begins behind this row, when the lists of its reader were not wanted and the next one may see
  /// others in the file. The result's row is null then when no reader is left.
  const CItineraryFormat* after = nullptr;
};

/// Tries the readers of the path's extension ("kml" for "kmz") in table order until one ends with
/// success, with a file that is locked, or with the user's cancelling; gives the last result. A web
/// address goes to the readers of the extension "url". A file that no reader knows has the status
/// kStatusBadFormat, and so has one without points. Any thread may call this; nothing leaves it as
/// an exception.
TripRead ReadTrip(const FormatTable& table, const WideString& path, ConversionContext& context,
                  const ReadOptions& options);

/// The same for the bytes of a file, whose format the key names or the content decides.
TripRead ReadTripBytes(const FormatTable& table, std::string_view bytes, ConversionContext& context,
                       const ReadOptions& options);

/// The same with the reader of one row, which must have one.
TripRead ReadTripWith(const CItineraryFormat& row, const WideString& path,
                      ConversionContext& context, bool silent);

/// The first row with a reader for a key, as in ReadOptions; null when there is none.
const CItineraryFormat* FindReader(const FormatTable& table, std::u16string_view key);
