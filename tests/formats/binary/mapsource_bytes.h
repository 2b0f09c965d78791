#pragma once

#include <bit>
#include <cstdint>
#include <string>
#include <string_view>

#include "model/point_list.h"
#include "tests/hex_bytes.h"

// Pieces of Garmin MapSource files, put together byte by byte. Positions are given by their bytes:
// 180 degrees are 2147483648 units, so that 45 degrees are 0x20000000.

namespace mapsource {

inline constexpr std::string_view kEast90 = "00 00 00 40";
inline constexpr std::string_view kNorth45 = "00 00 00 20";
inline constexpr std::string_view kSouth45 = "00 00 00 E0";
inline constexpr std::string_view kWest22 = "00 00 00 F0";   // 22.5 degrees
inline constexpr std::string_view kNorth11 = "00 00 00 08";  // 11.25 degrees
inline constexpr std::string_view kAltitude100 = "00 00 00 00 00 00 59 40";
inline constexpr std::string_view kAltitude0 = "00 00 00 00 00 00 00 00";

inline std::string Int32(int32_t value) {
  std::string bytes;
  for (int shift = 0; shift < 32; shift += 8)
    bytes.push_back(static_cast<char>(static_cast<uint32_t>(value) >> shift & 0xFF));
  return bytes;
}

/// A text with its zero byte.
inline std::string Text(std::string_view text) { return std::string(text) + '\0'; }

/// A record with the length that it really has.
inline std::string Record(char type, const std::string& body) {
  return Int32(static_cast<int32_t>(body.size())) + type + body;
}

/// A record that claims another length.
inline std::string RecordOfLength(int32_t length, char type, const std::string& body) {
  return Int32(length) + type + body;
}

/// The 23 bytes of country and map object that all written points have.
inline std::string Subclass() {
  return Hex("00 00 00 00 00  FF FF FF FF FF FF FF FF FF FF FF FF  00 00  FF FF FF FF");
}

/// How the body of a route without a box begins.
inline std::string RouteHead(std::string_view name, int32_t count) {
  return Text(name) + Hex("00 01") + Int32(count);
}

/// The names of all points, each with a semicolon behind it.
inline std::string NamesOf(const CGpsPointArray& list) {
  std::string names;
  for (const CGpsPoint& point : list.points) names += point.name + ";";
  return names;
}

}  // namespace mapsource

// The newer format, `.gdb`, as other programs write it.
namespace mapsource::gdb {

inline std::string HeadOfVersion(char letter) {
  return Text("MsRcf") + Record('D', std::string{letter, '\0'}) + Record('A', Hex("5D 02")) +
         Text("MapSource");
}

inline std::string Place(std::string_view latitude, std::string_view longitude) {
  return Hex(latitude) + Hex(longitude) + Hex("00");
}

inline std::string Place(std::string_view latitude, std::string_view longitude,
                         std::string_view altitude) {
  return Hex(latitude) + Hex(longitude) + Hex("01") + Hex(altitude);
}

inline std::string Waypoint(std::string_view name, int32_t waypointClass, const std::string& place,
                            std::string_view comment = "") {
  return Record('W', Text(name) + Int32(waypointClass) + Text("FR") + Repeat(22, 0xAB) + place +
                         Text(comment) + "more");
}

/// What stands between subclass and links: 19 bytes.
inline std::string RoutePointMiddle() { return Hex("00 03 00 00 00 FF FF FF FF") + Repeat(10, 0); }

/// A route point without a box.
inline std::string LastStop(std::string_view name, int version) {
  const size_t tail = version < 2 ? 0 : version == 2 ? 8 : 10;
  return Text(name) + Int32(0) + Text("FR") + Repeat(22, 0xAB) + RoutePointMiddle() + Int32(0) +
         Hex("01") + Repeat(tail, 0xEE);
}

}  // namespace mapsource::gdb
