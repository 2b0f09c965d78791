#include "services/links/here_link.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "base/text.h"
#include "services/links/link_text.h"

namespace {

constexpr std::string_view kDirectionsMark = "/directions/";

// Blanks of names are written as "-".
std::string NameOf(std::string_view text) {
  std::string name(text);
  std::replace(name.begin(), name.end(), '-', ' ');
  return std::string(Trim(name, " "));
}

LinkStop StopOf(std::string_view segment) {
  // A colon within a name is escaped; some senders escape the one in front of the position too.
  std::string name;
  std::string position;
  if (const size_t colon = segment.rfind(':'); colon != std::string_view::npos) {
    name = LinkText(segment.substr(0, colon));
    position = LinkText(segment.substr(colon + 1));
  } else {
    const std::string text = LinkText(segment);
    const size_t split = text.rfind(':');
    position = text.substr(split + 1);
    name = split == std::string::npos ? text : text.substr(0, split);
    if (split == std::string::npos && ParseLinkPosition(text)) name.clear();
  }
  // Behind the colon may stand a number of the service's own instead; then the name must do.
  return {NameOf(name), {}, ParseLinkPosition(position), {}};
}

uint32_t TravelModeOf(std::string_view word) {
  if (word == "drive") return kCar;
  if (word == "walk") return kPedestrian;
  if (word == "bicycle") return kBicycle;
  if (word == "truck") return kTruckMode;
  return kAnyMode;
}

}  // namespace

bool IsHereHost(std::string_view host) { return host == "here.com" || host.ends_with(".here.com"); }

MapLink ParseHereLink(std::string_view text) {
  MapLink link;
  const LinkPieces pieces = SplitLink(text);
  const size_t mark = pieces.path.find(kDirectionsMark);
  if (mark == std::string_view::npos) return link;
  const std::vector<std::string_view> segments =
      PathSegments(pieces.path.substr(mark + kDirectionsMark.size()));
  link.travelMode = TravelModeOf(segments.front());
  for (size_t i = 1; i < segments.size(); ++i) {
    LinkStop stop = StopOf(segments[i]);
    if (stop.position || !stop.name.empty()) link.stops.push_back(std::move(stop));
  }
  return link;
}

std::string HereLink(LinkPoints points, const LinkOptions& options, const std::string& site) {
  std::string link = site + std::string(kDirectionsMark);
  link += options.travelMode == kPedestrian ? "walk" : "drive";
  for (const CGpsNamedPoint* point : points) {
    std::string name = point->name;
    std::replace(name.begin(), name.end(), ' ', '-');
    link += "/" + LinkValue(name, "-_.~") + ":" + LinkPosition(*point);
  }
  return link;
}
