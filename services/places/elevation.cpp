#include "services/places/elevation.h"

#include <string>

#include "services/request_text.h"
#include "services/service_access.h"
#include "services/service_request.h"

uint32_t GetElevation(const CGpsCoordinate& position, CGpsPoint& point, int32_t waitMs) {
  const Service& service = ServiceNamed("google");
  std::string reply;
  const uint32_t status =
      AskService(service,
                 AccessTo(service).url +
                     "/maps/api/elevation/json?sensor=false&locations=" + LatLonText(position),
                 reply, waitMs);
  return status == kServiceSuccess ? ReadElevation(reply, point) : status;
}

uint32_t ReadElevation(std::string_view reply, CGpsPoint& point) {
  return ReadJsonReply(reply, [&point](const CJsonValue& document, bool& hasStatus) {
    const uint32_t status = GoogleStatus(document.Get("status").AsString());
    hasStatus = true;
    if (status != kServiceSuccess) return status;
    const CJsonValue* const result = FirstOf(document.Get("results"));
    if (!result) return uint32_t{kServiceNoResults};
    CGpsPoint found;
    found.latitude = result->Get("location").Get("lat").AsNumber();
    found.longitude = result->Get("location").Get("lng").AsNumber();
    found.altitude = result->Get("elevation").AsNumber();
    found.tolerance = kDefaultTolerance;
    point = found;
    return status;
  });
}
