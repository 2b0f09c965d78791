#include "services/request_text.h"

#include "base/numbers.h"
#include "net/url.h"

namespace {

constexpr int kDecimals = 6;

}  // namespace

std::string CoordinateText(double degrees) { return ToFixedString(degrees, kDecimals); }

std::string LatLonText(const CGpsCoordinate& position, std::string_view separator) {
  return CoordinateText(position.latitude).append(separator) + CoordinateText(position.longitude);
}

std::string LonLatText(const CGpsCoordinate& position, std::string_view separator) {
  return CoordinateText(position.longitude).append(separator) + CoordinateText(position.latitude);
}

std::string AccountText(std::string_view value) { return UrlEscape(value, "-_.~"); }

void AppendParameter(std::string& url, std::string_view name, std::string_view value) {
  url.append(name).append(AccountText(value));
}

void AppendParameterIfAny(std::string& url, std::string_view name, std::string_view value) {
  if (!value.empty()) AppendParameter(url, name, value);
}
