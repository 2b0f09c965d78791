#include "services/places/panorama.h"

#include <string>

#include "base/numbers.h"
#include "services/request_text.h"
#include "services/service_access.h"
#include "services/service_request.h"

uint32_t GetStreetViewLocation(const CGpsCoordinate& position, PlaceList& places, int32_t waitMs) {
  places.clear();
  const Service& service = ServiceNamed("google-panorama");
  std::string reply;
  const uint32_t status =
      AskService(service,
                 AccessTo(service).url +
                     "/cbk?output=json&oe=utf-8&cb_client=apiv3&ll=" + LatLonText(position),
                 reply, waitMs);
  return status == kServiceSuccess ? ReadPanorama(reply, places) : status;
}

uint32_t ReadPanorama(std::string_view reply, PlaceList& places) {
  return ReadPlaces(reply, places, [&places](const CJsonValue& document, bool&) {
    const CJsonValue* const location = document.AsObject().Find("Location");
    if (!location) return kServiceNoResults;
    places.push_back(MakePlace(
        ParseReal(location->Get("lat").AsString()), ParseReal(location->Get("lng").AsString()),
        OptionalText(*location, "description"), OptionalText(*location, "region")));
    return kServiceSuccess;
  });
}
