#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "settings/map_layers.h"
#include "settings/map_sources.h"

/// Zooms of tiles that servers are known to have.
inline constexpr uint32_t kGreatestTileZoom = 22;

/// OpenStreetMap's standard layer with its credit: a suggestion, for whoever keeps to its rules.
MapLayer SuggestedLayer();
/// The rules of use of that layer.
inline constexpr char kSuggestedLayerRules[] = "operations.osmfoundation.org/policies/tiles/";

/// The number of the text that says what is wrong with a layer; 0 when nothing is.
uint32_t FaultOfLayer(const MapLayer& layer);
/// That text, filled.
std::string DescribeLayerFault(uint32_t fault);

/// An address as an example.
inline constexpr char kExampleTileAddress[] = "https://tile.example.org/{z}/{x}/{y}.png";

/// Which servers tiles of an address come from, each as "https://host" or "https://host:port" in
/// small letters; none when tiles cannot be asked for there.
std::vector<std::string> TileOrigins(std::string_view address);

/// The layers for the map page: all that can be asked at all, and whom the page may ask, which is
/// the servers of those that the user allows.
struct PageLayers {
  MapLayers layers;
  std::vector<std::string> origins;

  bool operator==(const PageLayers&) const = default;
};

PageLayers LayersForPage(std::span<const MapLayer> layers, const MapSources& maps);
/// Those of the user's settings; what cannot be read is not asked.
PageLayers LoadPageLayers(const storage::Storage& storage);

/// JSON text of the layers: an array of {name, url, credit, minZoom, maxZoom}.
std::string PageLayersJson(std::span<const MapLayer> layers);
