#include "settings/setting_table.h"

#include <algorithm>
#include <limits>
#include <string>

#include "base/text_ids.h"
#include "io/byte_cursor.h"
#include "io/byte_sink.h"

namespace {

constexpr int32_t kNoLimit = std::numeric_limits<int32_t>::max();
constexpr size_t kMapKindSize = 4;

// Sizes and weights in tenths: what a truck can be, from 2 to 50 metres of height and so on.
constexpr SettingRow kTable[] = {
    {"ConverterPosition", &CSettings::converterPosition, 0, 0, 0, kTextConverterPosition, true},
    {"EditorPosition", &CSettings::editorPosition, 0, 0, 0, kTextEditorPosition, true},
    {"AUTO_CALC", &CSettings::autoCalc, 0, 0, 1, kTextRecalculateAutomatically, true},
    {"DIST_MILES", &CSettings::distMiles, 0, 0, 1, kTextDistancesInMiles, true},
    {"OPTIMIZE_USE_DIRECTION", &CSettings::optimizeUseDirection, 0, 0, 1, kTextOptimizeByRoad,
     true},
    {"AVOID_HIGHWAY", &CSettings::avoidHighway, 0, 0, 1, kTextAvoidMotorways, true},
    {"AVOID_TOLLS", &CSettings::avoidTolls, 0, 0, 1, kTextAvoidTolls, true},
    {"VehicleType", &CSettings::vehicleType, 0, 0, 7, kTextVehicleValue, true},
    {"ItineraryType", &CSettings::itineraryType, 1, 0, 5, kTextItineraryTypeValue, true},
    {"RouteProvider", &CSettings::routeProvider, kDefaultRouteProvider, 0, kNoLimit,
     kTextProviderValue, true},
    {"ForceRoad", &CSettings::forceRoad, 0, 0, 1, kTextPlaceOnRoads, true},
    {"AutoAddStep", &CSettings::autoAddStep, 0, 0, 1, kTextAddStageByClicking, true},
    {"DisplayNumber", &CSettings::displayNumber, 1, 0, 1, kTextShowWaypointNumbers, true},
    {"Export", &CSettings::exportIndex, -1, -1, kNoLimit, kTextExportValue, true},
    {"Language", &CSettings::language, 0, 0, kNoLimit, kTextLanguageValue, false},
    {"Coordinates", &CSettings::coordinates, 0, 0, 2, kTextCoordinatesValue, true},
    {"TruckHeight", &CSettings::truckHeight, 20, 20, 500, kTextTruckHeight, true},
    {"TruckWidth", &CSettings::truckWidth, 30, 30, 500, kTextTruckWidth, true},
    {"TruckLength", &CSettings::truckLength, 80, 80, 3000, kTextTruckLength, true},
    {"TruckTrailersCount", &CSettings::truckTrailersCount, 1, 0, 4, kTextTruckTrailers, true},
    {"TruckLimitedWeight", &CSettings::truckLimitedWeight, 30, 30, 10000, kTextTruckWeight, true},
    {"TruckWeightAxle", &CSettings::truckWeightAxle, 50, 50, 10000, kTextTruckWeightAxle, true},
    {"TruckCategory", &CSettings::truckCategory, 0, 0, 14, kTextTruckCategory, true},
    {"UserID", &CSettings::userId, 0, 0, 0, kTextUserId, true},
    {"DefaultMap", &CSettings::defaultMap, 0, 0, 0, kTextDefaultMap, true},
    {"FindProvider", &CSettings::findProvider, kDefaultFindProvider, 0, kNoLimit,
     kTextFindProviderValue, true},
    {"CalculateAsked", &CSettings::calculateAsked, 0, 0, 1, kTextCalculateAsked, true},
    {"PlannerPage", &CSettings::plannerPage, 0, 0, 0, kTextPlannerPage, true},
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
