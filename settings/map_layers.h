#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "settings/map_sources.h"
#include "settings/storage.h"

/// A map of pictures ("tiles") from a server that the user has entered. Texts are UTF-8.
struct MapLayer {
  std::string name = {};
  /// Of a tile: {z}, {x} and {y} stand for its zoom, column and row, {s} for a, b or c.
  std::string address = {};
  std::string credit = {};
  uint32_t leastZoom = 0;
  uint32_t greatestZoom = 19;

  bool operator==(const MapLayer&) const = default;
};

/// In the order in which the user sees them.
using MapLayers = std::vector<MapLayer>;

/// Replaces `layers` by the stored ones; those without a name are passed over. Returns 0 or the
/// platform's error code: then `layers` stays as it is.
uint32_t LoadMapLayers(const storage::Storage& storage, MapLayers& layers,
                       std::string_view root = kSettingsRoot);

/// Stores these layers in place of all that are stored, together with the maps, which say which of
/// them are allowed: both or none. Returns 0 or the platform's error code.
uint32_t SaveMapLayers(storage::Storage storage, const MapLayers& layers, const MapSources& maps,
                       std::string_view root = kSettingsRoot);
