#include "planner/start_json.h"

#include "base/localized_text.h"
#include "base/text.h"
#include "base/text_ids.h"
#include "planner/hand_off.h"
#include "planner/json_text.h"
#include "planner/page_maps.h"

namespace {

void AddPosition(JsonText& json, double latitude, double longitude) {
  json.BeginObject();
  json.Key("lat").Number(latitude);
  json.Key("lng").Number(longitude);
  json.End();
}

void AddMap(JsonText& json, const std::string& name, uint32_t number) {
  json.BeginObject();
  json.Key("flag").Text(name);
  json.Key("map").Boolean(IsMapOn(number, kMapPlain));
  json.Key("sat").Boolean(IsMapOn(number, kMapSatellite));
  json.Key("hybrid").Boolean(IsMapOn(number, kMapHybrid));
  json.Key("topo").Boolean(IsMapOn(number, kMapTopo));
  json.End();
}

}  // namespace

std::string StartJson(const CSettings& settings, const MapSources& maps,
                      const std::optional<UserCountry>& country) {
  JsonText json;
  json.BeginObject();
  if (country) {
    json.Key("country").Text(country->code).Key("center");
    AddPosition(json, country->latitude, country->longitude);
  }
  if (settings.defaultMap) {
    json.Key("map").BeginObject();
    json.Key("flag").Text(settings.defaultMap->name);
    json.Key("type").Number(static_cast<int32_t>(settings.defaultMap->kind));
    json.End();
  }
  json.Key("maps").BeginArray();
  for (const auto& [name, number] : maps) AddMap(json, name, number);
  json.End();
  json.Key("userId").Text(WideToUtf8Lossy(settings.userId));
  json.Key("number").Boolean(settings.displayNumber);
  json.Key("lang").BeginObject().Key("hl").Text(LoadTextUtf8(kTextLanguage)).End();
  for (const DeviceTarget& target : DeviceTargets()) {
    if (IsTargetInstalled(target.number))
      json.Key(target.startKey).Text(LoadTextUtf8(target.labelTextId));
  }
  json.End();
  return json.Result();
}
