#include "services/directions/route_request.h"

#include <cassert>

#include <fmt/format.h>

#include "markup/json.h"
#include "services/request_text.h"
#include "services/service_table.h"

ServiceAccess AccessToProvider(int32_t id) {
  const Service* const service = FindService(id);
  assert(service != nullptr);
  return AccessTo(*service);
}

std::string_view WordFor(std::span<const ValueWord> words, uint32_t value,
                         std::string_view otherwise) {
  for (const ValueWord& row : words) {
    if (row.value == value) return row.word;
  }
  return otherwise;
}

std::vector<std::string_view> AvoidedWords(const CRouteOptions& options,
                                           std::span<const RoadWord> words) {
  std::vector<std::string_view> avoided;
  const AvoidanceOptions* const avoidances = AvoidancesOf(options);
  if (!avoidances) return avoided;
  for (const RoadWord& row : words) {
    if (!(avoidances->*row.mayBeUsed)) avoided.push_back(row.word);
  }
  return avoided;
}

void AppendPosition(std::string& text, const CGpsCoordinate& position, AxisOrder order,
                    std::string_view separator) {
  text += order == AxisOrder::kLatitudeFirst ? LatLonText(position, separator)
                                             : LonLatText(position, separator);
}

void AppendPositions(std::string& text, const CGpsPointList& points, AxisOrder order,
                     std::string_view separator) {
  bool isFirst = true;
  for (const auto& point : points.points) {
    if (!isFirst) text += separator;
    AppendPosition(text, *point, order);
    isFirst = false;
  }
}

std::string TenthsText(uint32_t tenths) { return fmt::format("{}", tenths / 10.0); }

void AppendJsonText(std::string& json, std::string_view text) {
  CJsonValue value;
  value.SetString(text);
  AppendJson(json, value);
}
