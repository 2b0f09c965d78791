#include "planner/page_maps.h"

#include "base/numbers.h"
#include "markup/json.h"

namespace {

constexpr uint32_t kOfferMask = 0xF;
constexpr uint32_t kSwitchShift = 4;

struct KindKey {
  std::string_view key;
  MapKind kind;
};

constexpr KindKey kKindKeys[] = {
    {"map", kMapPlain}, {"sat", kMapSatellite}, {"hybrid", kMapHybrid}, {"topo", kMapTopo}};

PageMap ReadMap(const CJsonObject& object) {
  PageMap map;
  map.name = object.Get("name").AsString();
  const CJsonValue* const icon = object.Find("icon");
  if (icon && icon->type == kJsonNumber) map.icon = TruncateToInt32(icon->AsNumber());
  for (const KindKey& each : kKindKeys) {
    const CJsonValue* const value = object.Find(each.key);
    if (!value || value->type != kJsonBool) continue;
    map.number |= each.kind;
    if (value->AsBool()) map.number |= static_cast<uint32_t>(each.kind) << kSwitchShift;
  }
  return map;
}

}  // namespace

std::vector<PageMap> ReadPageMaps(std::string_view json) {
  std::vector<PageMap> maps;
  try {
    CJsonDocument document;
    if (document.Parse(json) != 0) return {};
    for (const auto& value : document.AsArray()) maps.push_back(ReadMap(value->AsObject()));
  } catch (const CJsonException&) {
    return {};
  }
  return maps;
}

bool MergePageMaps(const std::vector<PageMap>& maps, MapSources& stored) {
  const MapSources before = stored;
  for (const PageMap& map : maps) {
    if (map.name.empty()) continue;
    uint32_t& number = stored[map.name];
    const uint32_t isNew = map.number & kOfferMask & ~number;
    number |= isNew | (map.number & isNew << kSwitchShift);
  }
  return stored != before;
}
