#include "services/links/viamichelin_link.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "base/text.h"
#include "services/links/link_text.h"

namespace {

constexpr std::string_view kFrenchPath = "/web/Itineraires";
constexpr std::string_view kPath = "/web/Routes";

void AddStop(std::string_view text, std::string_view placeId, std::vector<LinkStop>& stops) {
  text = Trim(text, " ");
  if (text.empty() && placeId.empty()) return;
  LinkStop stop;
  stop.position = ParseLinkPosition(text);
  if (!stop.position) stop.name = text;
  stop.placeId = placeId;
  stops.push_back(std::move(stop));
}

// The first of two keys that has a value.
std::string_view EitherValueOf(const LinkQuery& query, std::string_view key,
                               std::string_view otherKey) {
  const std::string_view value = ValueOf(query, key);
  return value.empty() ? ValueOf(query, otherKey) : value;
}

// The number of a vehicle is its travel mode less one.
uint32_t TravelModeOf(std::string_view vehicle) {
  constexpr std::string_view kVehicleDigits = "01234";
  const size_t digit = vehicle.size() == 1 ? kVehicleDigits.find(vehicle) : std::string_view::npos;
  return digit == std::string_view::npos ? kAnyMode : kCar + static_cast<uint32_t>(digit);
}

uint32_t VehicleOf(uint32_t travelMode) {
  return travelMode > kCar && travelMode <= kMotorcycle ? travelMode - kCar : 0;
}

}  // namespace

bool IsViaMichelinHost(std::string_view host) {
  std::vector<std::string_view> labels;
  SplitFields(host, '.', labels);
  const auto name = std::find(labels.begin(), labels.end(), "viamichelin");
  // What stands behind the name is a country's ending.
  return name != labels.end() && labels.end() - name >= 2 && labels.end() - name <= 3;
}

MapLink ParseViaMichelinLink(std::string_view text) {
  MapLink link;
  const LinkPieces pieces = SplitLink(text);
  if (!pieces.path.starts_with(kFrenchPath) && !pieces.path.starts_with(kPath)) return link;
  const LinkQuery query = ParseLinkQuery(pieces.query);
  AddStop(ValueOf(query, "departure"), EitherValueOf(query, "departureId", "strStartLocid"),
          link.stops);
  for (size_t number = 1;; ++number) {
    const std::string key = "step-" + std::to_string(number);
    const std::string idKey = key + "Id";
    if (!query.contains(key) && !query.contains(idKey)) break;
    AddStop(ValueOf(query, key), ValueOf(query, idKey), link.stops);
  }
  AddStop(ValueOf(query, "arrival"), EitherValueOf(query, "arrivalId", "strDestLocid"), link.stops);
  link.travelMode = TravelModeOf(ValueOf(query, "vehicle"));
  link.avoidsMotorways = ValueOf(query, "motorway") == "false";
  return link;
}

std::string ViaMichelinLink(LinkPoints points, const LinkOptions& options, const std::string& site,
                            const std::string& language) {
  std::string link = site;
  link += language.starts_with("fr") ? kFrenchPath : kPath;
  link += "?departure=" + LinkPosition(*points.front());
  if (points.size() > 1) link += "&arrival=" + LinkPosition(*points.back());
  for (size_t i = 1; i + 1 < points.size(); ++i)
    link += fmt::format("&step-{}=", i) + LinkPosition(*points[i]);
  link += fmt::format("&vehicle={}&motorway={}&distance=km&printRoadSheet=true",
                      VehicleOf(options.travelMode), !options.avoidsMotorways);
  return link;
}
