#include "services/country.h"

#include "net/url.h"
#include "services/reply.h"
#include "services/request_text.h"
#include "services/service_access.h"
#include "services/service_request.h"

namespace {

const Service& Geonames() { return ServiceNamed("geonames"); }

// The start of every question to GeoNames.
std::string GeonamesUrl(std::string_view path) {
  const ServiceAccess access = AccessTo(Geonames());
  std::string url = access.url;
  url.append(path).append("?type=JSON&username=").append(AccountText(access.key));
  AppendParameterIfAny(url, "&lang=", access.language);
  return url;
}

// An error comes as an object with a number.
bool IsError(const CJsonValue& document) {
  const CJsonValue* const status = document.AsObject().Find("status");
  if (!status || status->type != kJsonObject) return false;
  static_cast<void>(status->Get("value").AsNumber());
  return true;
}

}  // namespace

uint32_t GetCountry(CCountryInfo& country, CGpsCoordinate& position, int32_t waitMs) {
  const Service& service = ServiceNamed("geoip");
  std::string reply;
  const uint32_t status =
      AskService(service, AccessTo(service).url + "/country.php", reply, waitMs);
  return status == kServiceSuccess ? ReadMachineCountry(reply, country, position) : status;
}

uint32_t GetCountryCode(double latitude, double longitude, CCountryInfo& country) {
  const std::string url = GeonamesUrl("/countryCode") + "&lat=" + CoordinateText(latitude) +
                          "&lng=" + CoordinateText(longitude);
  std::string reply;
  const uint32_t status = AskService(Geonames(), url, reply);
  return status == kServiceSuccess ? ReadCountryCode(reply, country) : status;
}

uint32_t GetCountryInfo(std::string_view countryCode, CCountryInfo& country) {
  const std::string url = GeonamesUrl("/countryInfo") + "&country=" + UrlEscape(countryCode, "");
  std::string reply;
  const uint32_t status = AskService(Geonames(), url, reply);
  return status == kServiceSuccess ? ReadCountryInfo(reply, country) : status;
}

uint32_t ReadMachineCountry(std::string_view reply, CCountryInfo& country,
                            CGpsCoordinate& position) {
  return ReadJsonReply(reply, [&](const CJsonValue& document, bool&) {
    CGpsCoordinate middle;
    middle.longitude = document.Get("lng").AsNumber();
    middle.latitude = document.Get("lat").AsNumber();
    CCountryInfo found;
    found.countryName = ReplyText(document.Get("name"));
    found.countryCode = ReplyText(document.Get("code"));
    position = middle;
    country = std::move(found);
    return kServiceSuccess;
  });
}

uint32_t ReadCountryCode(std::string_view reply, CCountryInfo& country) {
  return ReadJsonReply(reply, [&country](const CJsonValue& document, bool&) {
    if (IsError(document)) return kServiceOther;
    CCountryInfo found;
    found.countryName = ReplyText(document.Get("countryName"));
    found.countryCode = ReplyText(document.Get("countryCode"));
    country = std::move(found);
    return kServiceSuccess;
  });
}

uint32_t ReadCountryInfo(std::string_view reply, CCountryInfo& country) {
  return ReadJsonReply(reply, [&country](const CJsonValue& document, bool&) {
    if (IsError(document)) return kServiceOther;
    const CJsonArray& countries = document.Get("geonames").AsArray();
    if (countries.Count() == 0) return kServiceNoResults;
    const CJsonValue& first = countries.At(0);
    CCountryInfo found;
    found.countryName = ReplyText(first.Get("countryName"));
    found.currencyCode = ReplyText(first.Get("currencyCode"));
    found.countryCode = ReplyText(first.Get("countryCode"));
    found.capital = ReplyText(first.Get("capital"));
    found.languages = ReplyText(first.Get("languages"));
    found.isoAlpha3 = ReplyText(first.Get("isoAlpha3"));
    found.continent = ReplyText(first.Get("continent"));
    country = std::move(found);
    return kServiceSuccess;
  });
}
