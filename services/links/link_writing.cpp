#include "services/links/link_writing.h"

#include <algorithm>
#include <string>
#include <vector>

#include "base/status.h"
#include "conversion/conversion_context.h"
#include "services/links/google_link.h"
#include "services/links/here_link.h"
#include "services/links/map_link.h"
#include "services/links/mydrive_link.h"
#include "services/links/viamichelin_link.h"
#include "services/service_access.h"

namespace {

// Makes the link of a part of the list.
using MakeLink = std::string (*)(LinkPoints points, const LinkOptions& options);

uint32_t WriteLinks(const CGpsPointArray& list, size_t pageLimit, uint32_t splitLimit,
                    MakeLink makeLink) {
  ContextInPlace context;
  if (!context->takeLink) return kStatusNotImplemented;
  const size_t limit = splitLimit == 0 ? pageLimit : std::min<size_t>(splitLimit, pageLimit);
  if (list.points.empty() || limit < 2) return kStatusInvalidParameter;

  std::vector<const CGpsNamedPoint*> points;
  for (const CGpsPoint& point : list.points) points.push_back(&point);
  for (size_t first = 0;;) {
    const size_t count = std::min(limit, points.size() - first);
    const std::string link =
        makeLink(LinkPoints(points).subspan(first, count), context->linkOptions);
    if (const uint32_t status = context->takeLink(link)) return context->Keep(status);
    first += count - 1;
    if (first + 1 >= points.size()) return kStatusSuccess;
  }
}

// The page speaks the language that is set for it, else that of the service's account.
std::string GoogleLanguage() {
  const std::string language = AccessTo("google-site").language;
  return language.empty() ? AccessTo("google").language : language;
}

}  // namespace

uint32_t WriteGoogleMapsLink(const WideString&, const CGpsPointArray& list, uint32_t splitLimit,
                             bool) {
  return WriteLinks(
      list, kGooglePoints, splitLimit, [](LinkPoints points, const LinkOptions& options) {
        return GoogleLink(points, options, AccessTo("google-site").url, GoogleLanguage());
      });
}

uint32_t WriteHereLink(const WideString&, const CGpsPointArray& list, uint32_t splitLimit, bool) {
  return WriteLinks(list, kHerePoints, splitLimit,
                    [](LinkPoints points, const LinkOptions& options) {
                      return HereLink(points, options, AccessTo("here-site").url);
                    });
}

uint32_t WriteViaMichelinLink(const WideString&, const CGpsPointArray& list, uint32_t splitLimit,
                              bool) {
  return WriteLinks(list, list.Count() + 1, splitLimit,
                    [](LinkPoints points, const LinkOptions& options) {
                      return ViaMichelinLink(points, options, AccessTo("viamichelin-site").url,
                                             AccessTo("viamichelin").language);
                    });
}

uint32_t WriteMyDriveLink(const WideString&, const CGpsPointArray& list, uint32_t splitLimit,
                          bool) {
  return WriteLinks(list, kMyDrivePoints, splitLimit,
                    [](LinkPoints points, const LinkOptions& options) {
                      return MyDriveLink(points, options, AccessTo("mydrive-site").url);
                    });
}

LinkOptions LinkOptionsFor(const RouteWishes& wishes, const CSettings& settings) {
  const auto stored = [](int32_t value) { return static_cast<uint32_t>(std::max(value, 0)); };
  LinkOptions options;
  options.travelMode = wishes.mode.value_or(stored(settings.vehicleType));
  options.routeType = wishes.type.value_or(stored(settings.itineraryType));
  options.avoidsMotorways = wishes.avoided ? wishes.avoided->motorways : settings.avoidHighway;
  options.avoidsTolls = wishes.avoided ? wishes.avoided->tolls : settings.avoidTolls;
  options.hilliness = wishes.hilliness.value_or(kNormal);
  options.windingness = wishes.windingness.value_or(kNormal);
  return options;
}
