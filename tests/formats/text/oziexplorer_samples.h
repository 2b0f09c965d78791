#pragma once

#include <string>
#include <string_view>

#include "conversion/conversion_context.h"
#include "formats/text/oziexplorer.h"

namespace oziexplorer {

// How files of the four kinds begin.
inline constexpr std::string_view kRteHead =
    "OziExplorer Route File Version 1.0\r\nWGS 84\r\nReserved 1\r\nReserved 2\r\n";
inline constexpr std::string_view kRt2Head =
    "H1,OziExplorer CE Route2 File Version 1.0\r\nH2,WGS 84\r\n";
inline constexpr std::string_view kPltHead =
    "OziExplorer Track Point File Version 2.1\r\nWGS 84\r\nAltitude is in Feet\r\nReserved 3\r\n";
inline constexpr std::string_view kWptHead =
    "OziExplorer Waypoint File Version 1.0\r\nWGS 84\r\nReserved 2\r\nReserved 3\r\n";

inline std::string Joined(std::string_view head, std::string_view rest) {
  return std::string(head) + std::string(rest);
}

/// What a parser gives for some bytes.
struct Parsed {
  Parsed(FormatParseFn parse, std::string_view bytes) : status(parse(bytes, lists, context)) {}

  PointLists lists;
  ConversionContext context;
  uint32_t status;

  uint64_t PassedOver() const { return context.notes.Count(ConversionNote::kLinePassedOver); }
};

}  // namespace oziexplorer
