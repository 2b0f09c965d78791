#include "services/links/mydrive_link.h"

#include <string>
#include <utility>

#include <fmt/format.h>

#include "base/text.h"
#include "markup/json.h"
#include "net/url.h"
#include "services/links/link_text.h"

namespace {

constexpr std::string_view kRoutesMark = "+routes=";
constexpr std::string_view kPointMark = "hw~";

std::string_view CharacterWord(uint32_t character) {
  if (character == kHigh) return "HIGH";
  return character == kLow ? "LOW" : "NORMAL";
}

}  // namespace

bool IsMyDriveHost(std::string_view host) { return host == "mydrive.tomtom.com"; }

MapLink ParseMyDriveLink(std::string_view text) {
  MapLink link;
  // In the fragment a "+" is no blank but stands between its parts.
  const size_t mark = text.find(kRoutesMark);
  if (mark == std::string_view::npos) return link;
  CJsonDocument document;
  if (document.Parse(UrlUnescape(text.substr(mark + kRoutesMark.size()))) != 0 ||
      document.type != kJsonObject) {
    return link;
  }
  if (const CJsonValue* const points = document.object.Find("points");
      points && points->type == kJsonArray) {
    for (const auto& point : points->array) {
      if (point->type != kJsonString) continue;
      LinkStop stop;
      stop.position = ParseLinkPosition(point->text.substr(point->text.rfind('~') + 1));
      if (stop.position) link.stops.push_back(std::move(stop));
    }
  }
  if (const CJsonValue* const mode = document.object.Find("travelMode"); mode)
    link.travelMode = mode->text == "TRUCK" ? kTruckMode : kCar;
  return link;
}

std::string MyDriveLink(LinkPoints points, const LinkOptions& options, const std::string& site) {
  std::string json = "{\"points\":[";
  for (size_t i = 0; i < points.size(); ++i) {
    if (i > 0) json += ',';
    json += fmt::format("\"{}{}\"", kPointMark, LinkPosition(*points[i]));
  }
  json += fmt::format(
      "],\"travelMode\":\"{}\",\"routeType\":\"{}\",\"hilliness\":\"{}\",\"windingness\":\"{}\"}}",
      options.travelMode == kTruckMode ? "TRUCK" : "CAR",
      options.routeType == kThrilling ? "THRILLING" : "FASTEST", CharacterWord(options.hilliness),
      CharacterWord(options.windingness));
  return fmt::format("{}/en_gb/#mode=routes+viewport={},10{}{}", site,
                     LinkPosition(*points[points.size() / 2]), kRoutesMark, UrlEscapeUri(json));
}
