#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "settings/map_sources.h"

/// Kinds of a map in the number that is stored for it: bits 0 to 3 tell which the map offers, bits
/// 4 to 7 which of them are switched on.
enum MapKind : uint32_t { kMapPlain = 1, kMapSatellite = 2, kMapHybrid = 4, kMapTopo = 8 };

constexpr bool IsMapOn(uint32_t number, MapKind kind) {
  return (number & kind) != 0 && (number >> 4 & kind) != 0;
}

/// A map that the page has.
struct PageMap {
  std::string name;             ///< UTF-8
  std::optional<int32_t> icon;  ///< number of its picture
  uint32_t number = 0;          ///< what it offers, and what is switched on at first
};

/// Reads what the page answers to `GetMaps`: a kind that is there is offered, and its value tells
/// whether it is switched on. What cannot be read gives no maps.
std::vector<PageMap> ReadPageMaps(std::string_view json);

/// Adds the page's maps by name. For a kind that the stored number knows the stored switch counts,
/// for others the page's. True when `stored` has changed.
bool MergePageMaps(const std::vector<PageMap>& maps, MapSources& stored);
