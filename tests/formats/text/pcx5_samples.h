#pragma once

#include <string>
#include <string_view>

#include "base/product.h"
#include "formats/text/pcx5.h"
#include "tests/formats/written_bytes.h"

namespace pcx5 {

/// The moment at which all files here are written.
inline constexpr CalendarTime kMoment = {2023, 9, 9, 8, 5, 7};

inline constexpr std::string_view kSoftware = "H  SOFTWARE NAME & VERSION\r\n";
inline constexpr std::string_view kTitles =
    "H  IDNT     LATITUDE    LONGITUDE    DATE      TIME     ALT   "
    "DESCRIPTION                              PROXIMITY     SYMBOL ;waypts\r\n";

/// What stands in front of the points of a route.
inline std::string Head(std::string_view routeName) {
  std::string head(kSoftware);
  head += "I  PCX5 2.09 by ";
  head += kCreatorTag;
  head +=
      "\r\n\r\n"
      "H  R DATUM                IDX DA            DF            DX            DY            DZ\r\n"
      "M  G WGS 84               121 +0.000000e+00 +0.000000e+00 +0.000000e+00 +0.000000e+00 "
      "+0.000000e+00\r\n"
      "\r\nH  COORDINATE SYSTEM\r\nU  LAT LON DEG\r\n\r\nR  01 ";
  head += routeName;
  head += "\r\n\r\n";
  head += kTitles;
  return head;
}

/// What the writer gives for a list.
inline std::string Bytes(const CGpsPointArray& list, const CalendarTime& moment = kMoment) {
  return BytesOf(WritePcx5Body, list, moment);
}

}  // namespace pcx5
