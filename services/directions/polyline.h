#pragma once

#include <cstdint>
#include <string_view>

#include "model/point_list.h"
#include "services/directions/route_reply.h"

// Polylines that services pack into text. Of a text that is cut short or damaged, decoding gives
// what could be decoded; it throws CJsonException only when the allowance for points is used up.

/// Takes the numbers of an encoded polyline off the front of a text: groups of five bits from
/// characters minus 63, low group first, 32 or more meaning that more follow, and the lowest bit
/// for the sign.
class PolylineNumbers {
 public:
  /// A number ends after `mostBits`, even if its last group says that more follow.
  explicit PolylineNumbers(std::string_view text, unsigned mostBits = kNoLimit)
      : m_rest(text), m_mostBits(mostBits) {}

  /// False when no whole number is left. Bits beyond the largest number are dropped.
  bool Next(int64_t& number);

 private:
  static constexpr unsigned kNoLimit = ~0U;

  std::string_view m_rest;
  unsigned m_mostBits;
};

/// Decimal places of an encoded polyline.
enum class PolylinePrecision { kFive, kSix };

/// Appends the points of an encoded polyline: differences of latitude and longitude in turn.
void DecodePolyline(std::string_view text, PolylinePrecision precision, CGpsPointList& points,
                    PointAllowance& allowance);

/// Appends the points of a flexible polyline as HERE's newer services send it, of version 1. A
/// third dimension becomes the altitude if it is one.
void DecodeFlexiblePolyline(std::string_view text, CGpsPointList& points,
                            PointAllowance& allowance);
