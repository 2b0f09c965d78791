#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "settings/csv_layout.h"

/// Shows `layout` to the user, who may change it. True on OK, with the layout stored for the next
/// time (`CsvLayoutForm::Accept`); everything else is a cancel.
using CsvLayoutAsker = std::function<bool(CsvUse use, CCsvLayout& layout)>;

/// Where the layout of a CSV file comes from.
struct CsvLayouts {
  /// The one told for this run, or else the stored one, which unless `silent` the user may change;
  /// left alone when the reader is to find it.
  /// Returns 0, or kStatusCancelled when the user does not want to go on.
  uint32_t Choose(CsvUse use, bool silent, CCsvLayout& layout);

  bool findsForReading = false;  ///< by the header or the content of each file, nobody is asked
  std::optional<CCsvLayout> forReading;  ///< told for this run: not stored, and nobody is asked
  std::optional<CCsvLayout> forWriting;
  CsvLayoutAsker ask;                 ///< without one the stored layout is used
  std::optional<CCsvLayout> written;  ///< chosen for writing last

  // What reading the last file has shown:
  std::optional<CCsvLayout> found;          ///< the layout that it was read with, when it was found
  std::optional<CCsvLayout> contradicting;  ///< what its header tells, unlike the layout in use
  bool isNotFound = false;                  ///< no layout was found
};
