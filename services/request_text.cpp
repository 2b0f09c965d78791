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

void AppendIfAny(std::string& url, std::string_view parameter, std::string_view value) {
  if (!value.empty()) url.append(parameter).append(value);
}
