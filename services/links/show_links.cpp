#include "services/links/show_links.h"

#include "base/format_text.h"
#include "base/product.h"
#include "base/text_ids.h"
#include "services/links/link_text.h"
#include "services/service_access.h"

std::string ShowInGoogleLink(const CGpsNamedPoint& point, int32_t number) {
  return std::string(kProductSite) + FormatText(kTextShowInGoogleLink, number, point.latitude,
                                                point.longitude, LinkValue(point.name),
                                                LinkValue(point.comment));
}

std::string ShowInBingLink(const CGpsNamedPoint& point, int32_t number) {
  return AccessTo("bing-site").url + FormatText(kTextShowInBingLink, point.latitude,
                                                point.longitude, point.latitude, point.longitude,
                                                number, LinkValue(point.name));
}

std::string ShowInTomTomLink(const CGpsNamedPoint& point) {
  return AccessTo("tomtom-site").url +
         FormatText(kTextShowInTomTomLink, AccessTo("tomtom").language, LinkPosition(point));
}

std::string ShowInHereLink(const CGpsNamedPoint& point) {
  return AccessTo("here-site").url +
         FormatText(kTextShowInHereLink, point.latitude, point.longitude, LinkValue(point.name));
}

std::vector<ShowLink> ShowLinks(const CGpsNamedPoint& point, int32_t number) {
  return {{kTextShowInGoogle, ShowInGoogleLink(point, number)},
          {kTextShowInBing, ShowInBingLink(point, number)},
          {kTextShowInTomTom, ShowInTomTomLink(point)},
          {kTextShowInHere, ShowInHereLink(point)}};
}
