#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "settings/map_layers.h"
#include "settings/map_sources.h"
#include "settings/settings_list.h"

// The layers of the map at the command line: "layer.NAME.address=...".

/// The layers and which of them are allowed.
struct LayerSettings {
  MapLayers layers;
  MapSources maps;
};

/// True for an assignment that is meant for a layer.
bool IsLayerAssignment(std::string_view assignment);

/// Makes the change in `settings`: the first setting of a name adds a layer, an empty address takes
/// it away. False, and why, when it means nothing.
bool ChangeLayer(LayerSettings& settings, std::string_view assignment, std::string& error);

/// False, and why, when one of the layers cannot be asked for tiles.
bool CheckLayers(const LayerSettings& settings, std::string& error);

/// All layers with their settings. What stands behind the question mark of an address may hold a
/// key and is masked.
std::vector<SettingListing> ListLayerSettings(const LayerSettings& settings);

/// Both return 0 or the platform's error code.
uint32_t LoadLayerSettings(const storage::Storage& storage, LayerSettings& settings);
uint32_t StoreLayerSettings(const storage::Storage& storage, const LayerSettings& settings);
