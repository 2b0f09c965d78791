#pragma once

#include <cstdint>

#include "base/status.h"

/// Why a file could not be read or written, as far as that is known.
struct FailureReason {
  uint32_t platformError = kStatusSuccess;  ///< of the last file operation that failed
  uint64_t line = 0;          ///< of a text or of an XML document, from 1; 0 when it is not known
  uint64_t column = 0;        ///< of an XML document, from 1; 0 when it is not known
  uint32_t detailTextId = 0;  ///< a text that says what is wrong there; 0 when it is not known
  uint32_t adviceTextId = 0;  ///< a text that says what the user can do; 0 for none

  bool operator==(const FailureReason&) const = default;
};
