#include "planner/hand_off.h"

#include <algorithm>
#include <iterator>

#include <fmt/printf.h>

#include "base/numbers.h"
#include "base/product.h"
#include "base/status.h"
#include "base/text.h"
#include "base/text_ids.h"
#include "formats/xml/fresh_route.h"
#include "io/byte_sink.h"
#include "net/url.h"
#include "platform/desktop_handler.h"
#include "platform/open_link.h"
#include "platform/private_file.h"
#include "services/service_access.h"

namespace {

constexpr DeviceTarget kTargets[] = {
    {kTargetTomTomHome, "tomtom-home", "tthome", kTextAddToTomTom},
    {kTargetNavigonFresh, "navigon-fresh", "nvgfresh", kTextAddToNavigon},
    {kTargetNavgate, "navgate", "navgate", kTextAddToNavgate},
    {kTargetMioMore, "mio-more", "miomore", kTextAddToMio},
    {kTargetGarmin, "garmin", "garmin", kTextAddToGarmin},
};

constexpr std::string_view kTomTomScheme = "tomtomhome";
constexpr std::string_view kNavgateScheme = "avicfeeds";
constexpr std::string_view kMioScheme = "miomoredesktop";
constexpr std::string_view kFreshRouteType = "application/x-navigon-freshroute+xml";
constexpr std::string_view kFreshContactType = "application/x-navigon-freshcontact";

constexpr std::u16string_view kFreshContactFile = u"/corvane.freshcontact";
constexpr std::u16string_view kFreshRouteFile = u"/corvane.freshroute";

constexpr std::string_view kGarminService = "garmin-site";
constexpr std::string_view kGoogleService = "google";

constexpr int kDecimals = 6;

std::vector<std::string> SchemeHandler(std::string_view scheme) {
  return DesktopHandler("x-scheme-handler/" + std::string(scheme));
}

std::string Escaped(std::string_view text) { return UrlEscape(text, ""); }

std::string Number(double degrees) { return ToFixedString(degrees, kDecimals); }

std::string GarminLink(const CGpsNamedPoint& point) {
  std::string link = AccessTo(kGarminService).url +
                     "/locate/savePOI.htm?lat=" + Number(point.latitude) +
                     "&long=" + Number(point.longitude) + "&name=" + Escaped(point.name);
  const std::string language = AccessTo(kGoogleService).language;
  if (!language.empty()) link += "&hl=" + language;
  return link;
}

uint32_t OpenPrivateFile(std::u16string_view name, std::string_view bytes) {
  const WideString path = TemporaryFolderPath() + WideString(name);
  if (const uint32_t status = WritePrivateFile(path, bytes)) return status;
  return OpenLink(WideToUtf8Lossy(path));
}

// Opens the address; where the desktop refuses, the program behind the scheme is started itself.
uint32_t OpenInProgram(std::string_view scheme, const std::string& link) {
  const uint32_t status = OpenLink(link);
  if (status == 0) return 0;
  const std::vector<std::string> command = SchemeHandler(scheme);
  return command.empty() ? status : StartProgram(HandlerArguments(command, link));
}

}  // namespace

std::span<const DeviceTarget> DeviceTargets() { return kTargets; }

const DeviceTarget* FindDeviceTarget(std::string_view name) {
  const auto* const found =
      std::find_if(std::begin(kTargets), std::end(kTargets),
                   [name](const DeviceTarget& target) { return target.name == name; });
  return found == std::end(kTargets) ? nullptr : found;
}

const DeviceTarget* FindDeviceTarget(int32_t number) {
  const auto* const found =
      std::find_if(std::begin(kTargets), std::end(kTargets),
                   [number](const DeviceTarget& target) { return target.number == number; });
  return found == std::end(kTargets) ? nullptr : found;
}

bool IsTargetInstalled(int32_t target) {
  switch (target) {
    case kTargetTomTomHome:
      return !SchemeHandler(kTomTomScheme).empty();
    case kTargetNavigonFresh:
      return !DesktopHandler(kFreshRouteType).empty() && !DesktopHandler(kFreshContactType).empty();
    case kTargetNavgate:
      return !SchemeHandler(kNavgateScheme).empty();
    case kTargetMioMore:
      return !SchemeHandler(kMioScheme).empty();
    default:
      // The plug-in of Garmin's exists for other systems only.
      return false;
  }
}

std::string PointLink(int32_t target, const CGpsNamedPoint& point) {
  const std::string latitude = Number(point.latitude);
  const std::string longitude = Number(point.longitude);
  const std::string name = Escaped(point.name);
  const std::string comment = Escaped(point.comment);
  switch (target) {
    case kTargetTomTomHome:
      return "tomtomhome:geo:lat=" + latitude + "&long=" + longitude + "&name=" + name;
    case kTargetNavgate:
      return "avicfeeds:lat=" + latitude + "&long=" + longitude + "&name=" + name +
             "&notes=" + comment;
    case kTargetMioMore:
      return "miomoredesktop:poi?name=" + name +
             "&province=&city=&street=&streetnum=&postalcode=&country=&phone=&notes=" + comment +
             "&lat=" + latitude + "&lon=" + longitude;
    case kTargetGarmin:
      return GarminLink(point);
    default:
      return {};
  }
}

std::string FreshContact(const CGpsNamedPoint& point) {
  StringSink sink;
  sink.Utf16(fmt::sprintf("%s|%s|%s|-|-|-|-|%f|%f", kProductName, point.name, point.comment,
                          point.longitude, point.latitude));
  return sink.Bytes();
}

uint32_t SendPointToTarget(int32_t target, const CGpsNamedPoint& point) {
  switch (target) {
    case kTargetNavigonFresh:
      return OpenPrivateFile(kFreshContactFile, FreshContact(point));
    case kTargetNavgate:
      return OpenInProgram(kNavgateScheme, PointLink(target, point));
    case kTargetMioMore:
      return OpenInProgram(kMioScheme, PointLink(target, point));
    case kTargetTomTomHome:
    case kTargetGarmin:
      return OpenLink(PointLink(target, point));
    default:
      return kStatusInvalidParameter;
  }
}

uint32_t SendItineraryToNavigon(const CGpsPointArray& list) {
  StringSink sink;
  WriteFreshRouteBody(sink, list);
  return OpenPrivateFile(kFreshRouteFile, sink.Bytes());
}
