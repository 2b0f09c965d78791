#include "planner/tile_layers.h"

#include <algorithm>
#include <charconv>

#include "base/format_text.h"
#include "base/status.h"
#include "base/text.h"
#include "base/text_ids.h"
#include "net/url.h"
#include "planner/json_text.h"
#include "planner/page_maps.h"

namespace {

struct Scheme {
  std::string_view prefix;
  std::string_view ownPort;
};

constexpr Scheme kSchemes[] = {{"https://", ":443"}, {"http://", ":80"}};

constexpr std::string_view kServerLetters[] = {"a", "b", "c"};
constexpr std::string_view kServerMark = "{s}";

std::string Replaced(std::string text, std::string_view mark, std::string_view by) {
  for (size_t at = text.find(mark); at != std::string::npos; at = text.find(mark, at + by.size()))
    text.replace(at, mark.size(), by);
  return text;
}

// An underscore is legal in a request, but not in the rule that lets the page send it.
bool IsTileHost(std::string_view host) {
  return IsHostName(host) && host.find('_') == std::string_view::npos && !host.starts_with('.') &&
         host.find("..") == std::string_view::npos;
}

bool IsPort(std::string_view text) {
  uint16_t port = 0;
  const char* const end = text.data() + text.size();
  const auto [read, error] = std::from_chars(text.data(), end, port);
  return error == std::errc() && read == end && port != 0;
}

// The server of an address without marks; empty when it is none.
std::string OriginOf(const Scheme& scheme, std::string_view server) {
  if (server.ends_with(scheme.ownPort)) server.remove_suffix(scheme.ownPort.size());
  const size_t colon = server.find(':');
  if (!IsTileHost(server.substr(0, colon))) return {};
  if (colon != std::string_view::npos && !IsPort(server.substr(colon + 1))) return {};
  return ToLowerAscii(std::string(scheme.prefix).append(server));
}

// What stands behind the server: visible ASCII with each of the three marks and no others.
bool IsTilePath(std::string_view path) {
  std::string rest(path);
  for (const std::string_view mark : {"{z}", "{x}", "{y}"}) {
    if (path.find(mark) == std::string_view::npos) return false;
    rest = Replaced(std::move(rest), mark, "");
  }
  rest = Replaced(std::move(rest), kServerMark, "");
  return std::ranges::all_of(rest, [](char c) {
    return c > 0x20 && c < 0x7F && c != '{' && c != '}' && c != '#' && c != '\\';
  });
}

bool IsName(std::string_view name) {
  return !name.empty() && Trim(name, " ") == name &&
         std::ranges::none_of(name, [](char c) { return static_cast<unsigned char>(c) < 0x20; });
}

}  // namespace

MapLayer SuggestedLayer() {
  return {"OpenStreetMap", "https://tile.openstreetmap.org/{z}/{x}/{y}.png",
          "© OpenStreetMap contributors https://www.openstreetmap.org/copyright", 0, 19};
}

uint32_t FaultOfLayer(const MapLayer& layer) {
  if (!IsName(layer.name)) return kTextMapLayerName;
  if (TileOrigins(layer.address).empty()) return kTextMapLayerAddress;
  if (layer.leastZoom > layer.greatestZoom || layer.greatestZoom > kGreatestTileZoom)
    return kTextMapLayerZooms;
  return 0;
}

std::string DescribeLayerFault(uint32_t fault) {
  if (fault != kTextMapLayerAddress) return std::string(LoadTextUtf8(fault));
  return FormatText(fault, "{z}", "{x}", "{y}", kExampleTileAddress);
}

std::vector<std::string> TileOrigins(std::string_view address) {
  const auto* const scheme = std::ranges::find_if(kSchemes, [address](const Scheme& each) {
    return ToLowerAscii(address.substr(0, each.prefix.size())) == each.prefix;
  });
  if (scheme == std::end(kSchemes)) return {};
  const std::string_view rest = address.substr(scheme->prefix.size());
  const size_t slash = std::min(rest.find('/'), rest.size());
  const std::string server(rest.substr(0, slash));
  if (!IsTilePath(rest.substr(slash))) return {};
  std::vector<std::string> origins;
  for (const std::string_view letter : kServerLetters) {
    const std::string origin = OriginOf(*scheme, Replaced(server, kServerMark, letter));
    if (origin.empty()) return {};
    if (std::ranges::find(origins, origin) == origins.end()) origins.push_back(origin);
  }
  return origins;
}

PageLayers LayersForPage(std::span<const MapLayer> layers, const MapSources& maps) {
  PageLayers page;
  for (const MapLayer& layer : layers) {
    if (FaultOfLayer(layer) != 0) continue;
    page.layers.push_back(layer);
    const auto stored = maps.find(layer.name);
    if (stored == maps.end() || !IsMapOn(stored->second, kMapPlain)) continue;
    for (std::string& origin : TileOrigins(layer.address)) {
      if (std::ranges::find(page.origins, origin) == page.origins.end())
        page.origins.push_back(std::move(origin));
    }
  }
  return page;
}

PageLayers LoadPageLayers(const storage::Storage& storage) {
  MapLayers layers;
  MapSources maps;
  if (LoadMapLayers(storage, layers) != kStatusSuccess || LoadMaps(storage, maps) != kStatusSuccess)
    return {};
  return LayersForPage(layers, maps);
}

std::string PageLayersJson(std::span<const MapLayer> layers) {
  JsonText json;
  json.BeginArray();
  for (const MapLayer& layer : layers) {
    json.BeginObject();
    json.Key("name").Text(layer.name);
    json.Key("url").Text(layer.address);
    json.Key("credit").Text(layer.credit);
    json.Key("minZoom").Number(layer.leastZoom);
    json.Key("maxZoom").Number(layer.greatestZoom);
    json.End();
  }
  json.End();
  return json.Result();
}
