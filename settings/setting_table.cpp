#include "settings/setting_table.h"

#include <algorithm>
#include <limits>
#include <string>

#include "base/languages.h"
#include "base/text_ids.h"
#include "io/byte_cursor.h"
#include "io/byte_sink.h"

namespace {

constexpr int32_t kNoLimit = std::numeric_limits<int32_t>::max();
constexpr size_t kMapKindSize = 4;

// Sizes and weights in tenths: what a truck can be, from 2 to 50 metres of height and so on.
constexpr SettingRow kTable[] = {
    {"ConverterPosition", &SettingValues::converterPosition, 0, 0, kTextConverterPosition, true},
    {"EditorPosition", &SettingValues::editorPosition, 0, 0, kTextEditorPosition, true},
    {"AUTO_CALC", &SettingValues::autoCalc, 0, 1, kTextRecalculateAutomatically, true},
    {"DIST_MILES", &SettingValues::distMiles, 0, 1, kTextDistancesInMiles, true},
    {"OPTIMIZE_USE_DIRECTION", &SettingValues::optimizeUseDirection, 0, 1, kTextOptimizeByRoad,
     true},
    {"AVOID_HIGHWAY", &SettingValues::avoidHighway, 0, 1, kTextAvoidMotorways, true},
    {"AVOID_TOLLS", &SettingValues::avoidTolls, 0, 1, kTextAvoidTolls, true},
    {"VehicleType", &SettingValues::vehicleType, 0, 7, kTextVehicleValue, true},
    {"ItineraryType", &SettingValues::itineraryType, 0, 5, kTextItineraryTypeValue, true},
    {"RouteProvider", &SettingValues::routeProvider, 0, kNoLimit, kTextProviderValue, true},
    {"ForceRoad", &SettingValues::forceRoad, 0, 1, kTextPlaceOnRoads, true},
    {"AutoAddStep", &SettingValues::autoAddStep, 0, 1, kTextAddStageByClicking, true},
    {"DisplayNumber", &SettingValues::displayNumber, 0, 1, kTextShowWaypointNumbers, true},
    {"Export", &SettingValues::exportIndex, -1, kNoLimit, kTextExportValue, true},
    {"Language", &SettingValues::language, 0, kNoLimit, kTextLanguageValue, false},
    {"Coordinates", &SettingValues::coordinates, 0, 2, kTextCoordinatesValue, true},
    {"TruckHeight", &SettingValues::truckHeight, 20, 500, kTextTruckHeight, true},
    {"TruckWidth", &SettingValues::truckWidth, 30, 500, kTextTruckWidth, true},
    {"TruckLength", &SettingValues::truckLength, 80, 3000, kTextTruckLength, true},
    {"TruckTrailersCount", &SettingValues::truckTrailersCount, 0, 4, kTextTruckTrailers, true},
    {"TruckLimitedWeight", &SettingValues::truckLimitedWeight, 30, 10000, kTextTruckWeight, true},
    {"TruckWeightAxle", &SettingValues::truckWeightAxle, 50, 10000, kTextTruckWeightAxle, true},
    {"TruckCategory", &SettingValues::truckCategory, 0, 14, kTextTruckCategory, true},
    {"UserID", &SettingValues::userId, 0, 0, kTextUserId, true},
    {"DefaultMap", &SettingValues::defaultMap, 0, 0, kTextDefaultMap, true},
    {"FindProvider", &SettingValues::findProvider, 0, kNoLimit, kTextFindProviderValue, true},
    {"CalculateAsked", &SettingValues::calculateAsked, 0, 1, kTextCalculateAsked, true},
    {"PlannerPage", &SettingValues::plannerPage, 0, 0, kTextPlannerPage, true},
    {"ProgramLanguage", &SettingValues::programLanguage, 0, kHighestLanguage, kTextProgramLanguage,
     true},
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

std::optional<SettingsValue> EncodeSetting(const SettingValues& settings, const SettingRow& row) {
  return std::visit([&settings](auto field) { return Encode(settings.*field); }, row.field);
}

void DecodeSetting(SettingValues& settings, const SettingRow& row, const storage::SValue& value) {
  std::visit([&settings, &value](auto field) { Decode(value, settings.*field); }, row.field);
}
