#include "app/layer_settings.h"

#include <algorithm>
#include <charconv>

#include <fmt/format.h>

#include "base/format_text.h"
#include "base/status.h"
#include "base/text.h"
#include "base/text_ids.h"
#include "planner/page_maps.h"
#include "planner/tile_layers.h"

namespace {

constexpr std::string_view kPrefix = "layer.";
constexpr std::string_view kMask = "********";
constexpr uint32_t kAllowed = kMapPlain | kMapPlain << 4;

// The settings of a layer: what it has, as it is typed and shown.
struct LayerSetting {
  std::string_view name;
  uint32_t kindTextId;
  uint32_t meaningTextId;
  std::string (*show)(const MapLayer& layer, uint32_t map);
  /// False for a value that cannot be taken.
  bool (*take)(std::string_view value, MapLayer& layer, uint32_t& map);
};

std::string Masked(const std::string& address) {
  const size_t query = address.find('?');
  return query == std::string::npos ? address : address.substr(0, query + 1).append(kMask);
}

bool TakeText(std::string_view value, std::string& text) {
  if (!IsValidUtf8(value)) return false;
  text = value;
  return true;
}

bool TakeZoom(std::string_view value, uint32_t& zoom) {
  const char* const end = value.data() + value.size();
  const auto [read, error] = std::from_chars(value.data(), end, zoom);
  return error == std::errc() && read == end;
}

constexpr LayerSetting kSettings[] = {
    {"address", kTextKindText, kTextServiceUrlLabel,
     [](const MapLayer& layer, uint32_t) { return Masked(layer.address); },
     [](std::string_view value, MapLayer& layer, uint32_t&) {
       return TakeText(value, layer.address);
     }},
    {"credit", kTextKindText, kTextMapLayerCredit,
     [](const MapLayer& layer, uint32_t) { return layer.credit; },
     [](std::string_view value, MapLayer& layer, uint32_t&) {
       return TakeText(value, layer.credit);
     }},
    {"least-zoom", kTextKindNumber, kTextMapLayerLeastZoom,
     [](const MapLayer& layer, uint32_t) { return std::to_string(layer.leastZoom); },
     [](std::string_view value, MapLayer& layer, uint32_t&) {
       return TakeZoom(value, layer.leastZoom);
     }},
    {"greatest-zoom", kTextKindNumber, kTextMapLayerGreatestZoom,
     [](const MapLayer& layer, uint32_t) { return std::to_string(layer.greatestZoom); },
     [](std::string_view value, MapLayer& layer, uint32_t&) {
       return TakeZoom(value, layer.greatestZoom);
     }},
    {"allowed", kTextKindFlag, kTextMapLayerAllowed,
     [](const MapLayer&, uint32_t map) { return std::string(IsMapOn(map, kMapPlain) ? "1" : "0"); },
     [](std::string_view value, MapLayer&, uint32_t& map) {
       map = value == "1" ? kAllowed : uint32_t{kMapPlain};
       return value == "0" || value == "1";
     }},
};

std::string SettingNames() {
  std::string names;
  for (const LayerSetting& setting : kSettings) {
    if (!names.empty()) names += ", ";
    names += setting.name;
  }
  return names;
}

std::string AllowedValues(const LayerSetting& setting) {
  if (setting.kindTextId == kTextKindFlag) return "0, 1";
  if (setting.kindTextId == kTextKindNumber) return FormatText(kTextRange, 0, kGreatestTileZoom);
  return FormatText(kTextAnyText);
}

}  // namespace

bool IsLayerAssignment(std::string_view assignment) {
  return ToLowerAscii(assignment.substr(0, kPrefix.size())) == kPrefix;
}

bool ChangeLayer(LayerSettings& settings, std::string_view assignment, std::string& error) {
  const size_t equals = assignment.find('=');
  const std::string_view key = assignment.substr(0, equals);
  if (equals == std::string_view::npos) {
    error = FormatText(kTextNoAssignment, key);
    return false;
  }
  const std::string_view value = assignment.substr(equals + 1);
  const std::string_view names = key.substr(kPrefix.size());
  const size_t dot = std::min(names.rfind('.'), names.size());
  const std::string name(names.substr(0, dot));
  const auto* const setting = std::ranges::find(
      kSettings, ToLowerAscii(names.substr(std::min(dot + 1, names.size()))), &LayerSetting::name);
  if (setting == std::end(kSettings)) {
    error = FormatText(kTextUnknownLayerSetting, key, SettingNames());
    return false;
  }
  auto layer = std::ranges::find(settings.layers, name, &MapLayer::name);
  if (setting->name == "address" && value.empty()) {
    if (layer != settings.layers.end()) settings.layers.erase(layer);
    settings.maps.erase(name);
    return true;
  }
  if (layer == settings.layers.end()) layer = settings.layers.insert(layer, {.name = name});
  const auto map = settings.maps.try_emplace(name, uint32_t{kMapPlain}).first;
  if (setting->take(value, *layer, map->second)) return true;
  error = FormatText(kTextWrongValue, Masked(std::string(value)), key, AllowedValues(*setting));
  return false;
}

bool CheckLayers(const LayerSettings& settings, std::string& error) {
  for (const MapLayer& layer : settings.layers) {
    const uint32_t fault = FaultOfLayer(layer);
    if (fault == 0) continue;
    error = fmt::format("{}{}: {}", kPrefix, Printable(layer.name), DescribeLayerFault(fault));
    return false;
  }
  return true;
}

std::vector<SettingListing> ListLayerSettings(const LayerSettings& settings) {
  std::vector<SettingListing> listings;
  for (const MapLayer& layer : settings.layers) {
    const auto stored = settings.maps.find(layer.name);
    const uint32_t map = stored == settings.maps.end() ? 0 : stored->second;
    for (const LayerSetting& setting : kSettings) {
      listings.push_back({fmt::format("{}{}.{}", kPrefix, layer.name, setting.name),
                          FormatText(setting.kindTextId), setting.show(layer, map),
                          setting.show(MapLayer(), 0), FormatText(setting.meaningTextId)});
    }
  }
  return listings;
}

uint32_t LoadLayerSettings(const storage::Storage& storage, LayerSettings& settings) {
  const uint32_t status = LoadMapLayers(storage, settings.layers);
  return status == kStatusSuccess ? LoadMaps(storage, settings.maps) : status;
}

uint32_t StoreLayerSettings(const storage::Storage& storage, const LayerSettings& settings) {
  return SaveMapLayers(storage, settings.layers, settings.maps);
}
