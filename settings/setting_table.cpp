#include "settings/setting_table.h"

#include <algorithm>
#include <limits>
#include <string>

#include "io/byte_cursor.h"
#include "io/byte_sink.h"

namespace {

constexpr int32_t kNoLimit = std::numeric_limits<int32_t>::max();
constexpr size_t kMapKindSize = 4;

// Sizes and weights in tenths: what a truck can be, from 2 to 50 metres of height and so on.
constexpr SettingRow kTable[] = {
    {"ConverterPosition", &CSettings::converterPosition, 0, 0, 0, 1060, true},
    {"EditorPosition", &CSettings::editorPosition, 0, 0, 0, 1061, true},
    {"AUTO_CALC", &CSettings::autoCalc, 0, 0, 1, 210, true},
    {"DIST_MILES", &CSettings::distMiles, 0, 0, 1, 213, true},
    {"OPTIMIZE_USE_DIRECTION", &CSettings::optimizeUseDirection, 0, 0, 1, 1062, true},
    {"AVOID_HIGHWAY", &CSettings::avoidHighway, 0, 0, 1, 233, true},
    {"AVOID_TOLLS", &CSettings::avoidTolls, 0, 0, 1, 234, true},
    {"VehicleType", &CSettings::vehicleType, 0, 0, 7, 1063, true},
    {"ItineraryType", &CSettings::itineraryType, 1, 0, 5, 1064, true},
    {"RouteProvider", &CSettings::routeProvider, kDefaultRouteProvider, 0, kNoLimit, 1065, true},
    {"ForceRoad", &CSettings::forceRoad, 0, 0, 1, 258, true},
    {"AutoAddStep", &CSettings::autoAddStep, 0, 0, 1, 274, true},
    {"DisplayNumber", &CSettings::displayNumber, 1, 0, 1, 321, true},
    {"Export", &CSettings::exportIndex, -1, -1, kNoLimit, 1066, true},
    {"Language", &CSettings::language, 0, 0, kNoLimit, 1067, false},
    {"Coordinates", &CSettings::coordinates, 0, 0, 2, 1068, true},
    {"TruckHeight", &CSettings::truckHeight, 20, 20, 500, 1069, true},
    {"TruckWidth", &CSettings::truckWidth, 30, 30, 500, 1070, true},
    {"TruckLength", &CSettings::truckLength, 80, 80, 3000, 1071, true},
    {"TruckTrailersCount", &CSettings::truckTrailersCount, 1, 0, 4, 1072, true},
    {"TruckLimitedWeight", &CSettings::truckLimitedWeight, 30, 30, 10000, 1073, true},
    {"TruckWeightAxle", &CSettings::truckWeightAxle, 50, 50, 10000, 1074, true},
    {"TruckCategory", &CSettings::truckCategory, 0, 0, 14, 1075, true},
    {"UserID", &CSettings::userId, 0, 0, 0, 1076, true},
    {"DefaultMap", &CSettings::defaultMap, 0, 0, 0, 1077, true},
};

// One function a kind, chosen by the type of the field.

std::optional<SettingsValue> Encode(bool flag) { return std::string(1, flag ? '\1' : '\0'); }
std::optional<SettingsValue> Encode(int32_t number) { return static_cast<uint32_t>(number); }
std::optional<SettingsValue> Encode(const WideString& text) { return text; }

std::optional<SettingsValue> Encode(const std::optional<WindowPlacement>& placement) {
  if (!placement) return std::nullopt;
  return std::string(placement->begin(), placement->end());
}

std::optional<SettingsValue> Encode(const std::optional<MapChoice>& map) {
  if (!map) return std::nullopt;
  StringSink sink;
  sink.Uint32(map->kind);
  sink.Write(map->name);
  return sink.Bytes();
}

void Decode(const storage::SValue& value, bool& flag) {
  const std::string bytes = value.ReadBytes();
  if (!bytes.empty()) flag = bytes[0] != 0;
}

void Decode(const storage::SValue& value, int32_t& number) {
  number = static_cast<int32_t>(value.ReadNumber());
}

void Decode(const storage::SValue& value, WideString& text) { text = value.ReadText(); }

void Decode(const storage::SValue& value, std::optional<WindowPlacement>& placement) {
  const std::string bytes = value.ReadBytes();
  if (bytes.empty()) return;
  placement.emplace();
  placement->fill(0);
  std::copy_n(bytes.begin(), std::min(bytes.size(), placement->size()), placement->begin());
}

void Decode(const storage::SValue& value, std::optional<MapChoice>& map) {
  const std::string bytes = value.ReadBytes();
  if (bytes.size() <= kMapKindSize) return;
  map = MapChoice{ByteCursor(bytes).Uint32(), bytes.substr(kMapKindSize)};
}

}  // namespace

std::span<const SettingRow> SettingTable() { return kTable; }

std::optional<SettingsValue> EncodeSetting(const CSettings& settings, const SettingRow& row) {
  return std::visit([&settings](auto field) { return Encode(settings.*field); }, row.field);
}

void DecodeSetting(CSettings& settings, const SettingRow& row, const storage::SValue& value) {
  std::visit([&settings, &value](auto field) { Decode(value, settings.*field); }, row.field);
}
