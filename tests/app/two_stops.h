#pragma once

#include <string>

/// A small trip as its file in two formats.
inline const std::string kItinerary = "235222|4885661|Paris|4|\r\n434870|5085045|Brussels|2|\r\n";
// 235222 is 0x396D6, 4885661 0x4A8C9D, 434870 0x6A2B6, 5085045 0x4D9775.
inline const std::string kPois(
    "\x02\x13\x00\x00\x00\xD6\x96\x03\x00\x9D\x8C\x4A\x00Paris\x00"
    "\x02\x16\x00\x00\x00\xB6\xA2\x06\x00\x75\x97\x4D\x00"
    "Brussels\x00",
    19 + 22);

/// What the converter says when it has written them.
inline std::string Checked(const std::string& target) {
  return target + ": checked: all 2 stops are as they were, within 0.0 m\n";
}
