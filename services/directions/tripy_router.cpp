#include "services/directions/tripy_router.h"

#include "base/localized_text.h"
#include "base/numbers.h"
#include "base/text.h"
#include "base/text_ids.h"
#include "markup/xml_reader.h"
#include "net/http_client.h"
#include "net/url.h"
#include "services/directions/route_reply.h"
#include "services/directions/route_request.h"
#include "services/request_log.h"
#include "services/service_table.h"

namespace {

/// Reads the GPX of a reply: the points of its track, and its named way points as steps.
class TripyReply : public CXmlReader {
 public:
  explicit TripyReply(CRouteData& leg) : m_leg(leg) {}

  void StartElement(const XML_Char* name, const XML_Char** attributes) override {
    CXmlReader::StartElement(name, attributes);
    if (IsName(name, "gpx")) {
      m_inGpx = true;
    } else if (!m_inGpx) {
      return;
    } else if (IsName(name, "trkseg")) {
      m_inSegment = true;
    } else if (IsName(name, "trkpt") && m_inSegment) {
      CountPoint();
      TakePosition(attributes, AppendPoint(m_leg.shape.points, 0.0, 0.0));
    } else if (IsName(name, "wpt")) {
      m_inWaypoint = true;
      CountPoint();
      TakePosition(attributes, m_leg.steps.emplace_back());
    }
  }

  void EndElement(const XML_Char* name) override {
    if (IsName(name, "trkseg")) m_inSegment = false;
    if (IsName(name, "wpt")) m_inWaypoint = false;
    if (!m_inWaypoint || !IsName(name, "name")) return;
    m_leg.steps.back().name = m_text;
    m_leg.steps.back().instruction = m_text;
  }

 private:
  static void TakePosition(const XML_Char** attributes, CGpsCoordinate& position) {
    position.latitude = ParseReal(AttributeValue(attributes, "lat"));
    position.longitude = ParseReal(AttributeValue(attributes, "lon"));
  }

  void CountPoint() {
    if (!m_allowance.Take()) throw XML_ERROR_NO_MEMORY;
  }

  CRouteData& m_leg;
  PointAllowance m_allowance;
  bool m_inGpx = false;
  bool m_inSegment = false;
  bool m_inWaypoint = false;
};

// The host with the port where it is not the scheme's own.
std::string HostOf(std::string_view url) {
  std::string host;
  std::string path;
  uint16_t port = 0;
  bool isSecure = false;
  SplitUrl(url, host, path, port, isSecure);
  constexpr uint16_t kPlainPort = 80;
  constexpr uint16_t kSecurePort = 443;
  if (port != (isSecure ? kSecurePort : kPlainPort)) host += ":" + std::to_string(port);
  return host;
}

}  // namespace

int32_t CTripyRouter::GetId() const { return provider::kTripy; }

void CTripyRouter::Calculate(std::unique_ptr<CGpsPointList> points, uint32_t travelMode,
                             const CRouteOptions& options) {
  Begin();
  {
    const std::lock_guard lock(m_stopMutex);
    m_stop = {};
  }
  uint32_t status = points->points.size() < 2 ? kRoutePointCount : kRouteSuccess;
  const CGpsNamedPoint* from = nullptr;
  for (const auto& to : points->points) {
    if (from && status == kRouteSuccess) {
      CGpsPointList pair;
      AppendPoint(pair, *from);
      AppendPoint(pair, *to);
      status = CalculateLeg(pair, travelMode, options);
    }
    from = to.get();
  }
  Finish(status);
}

uint32_t CTripyRouter::CalculateLeg(const CGpsPointList& pair, uint32_t travelMode,
                                    const CRouteOptions& options) {
  std::string reply;
  HttpOptions request;
  request.stop = StopToken();
  try {
    const std::string host = HostOf(AccessToProvider(GetId()).url);
    for (const bool isEnd : {false, true}) {
      if (IsCancelled()) return TransportStatus(kInternetCancelled);
      CHttpRequestSpec spec;
      BuildPointRequest(isEnd ? *pair.points.back() : *pair.points.front(), isEnd, spec);
      BeforeRequest(*FindService(GetId()), spec.url);
      reply = HttpGet(Utf8ToWideLossy(spec.url), spec.referrer, host, request);
    }
  } catch (const CInternetException& failure) {
    return TransportStatus(failure.code);
  } catch (const std::logic_error&) {  // the port of the address is no number
    return TransportStatus(kInternetInvalidUrl);
  }
  return ParseResponse(reply, travelMode, options, GetLegs());
}

void CTripyRouter::Cancel() {
  NoteCancel();
  std::stop_source stop;
  {
    const std::lock_guard lock(m_stopMutex);
    stop = m_stop;
  }
  stop.request_stop();
}

std::stop_token CTripyRouter::StopToken() const {
  const std::lock_guard lock(m_stopMutex);
  return m_stop.get_token();
}

uint32_t CTripyRouter::Wait(int32_t /*timeoutMs*/) { return Status(); }

void CTripyRouter::BuildPointRequest(const CGpsCoordinate& point, bool isEnd,
                                     CHttpRequestSpec& spec) const {
  const std::string address = AccessToProvider(GetId()).url;
  spec.url = address + "/rtweb/rtweb5.php?cmd=add&level=" + (isEnd ? "2" : "1") + "&lon=";
  AppendPosition(spec.url, point, AxisOrder::kLongitudeFirst, "&lat=");
  spec.referrer = address + "/rtweb/index.php?lg=fr";
}

uint32_t CTripyRouter::BuildRequest(const CGpsPointList& chunk, uint32_t /*travelMode*/,
                                    const CRouteOptions& /*options*/, CHttpRequestSpec& spec) {
  BuildPointRequest(*chunk.points.back(), true, spec);
  return kRouteSuccess;
}

uint32_t CTripyRouter::ParseResponse(std::string_view text, uint32_t travelMode,
                                     const CRouteOptions& options, Legs& legs) {
  CRouteData leg = MakeLeg(travelMode, options);
  try {
    TripyReply reply(leg);
    reply.ParseBuffer(text.data(), text.size());
  } catch (const XML_Error&) {
    return kRouteInvalidRequest;
  }
  if (leg.shape.points.points.empty()) return kRouteNothingFound;
  legs.push_back(std::move(leg));
  return kRouteSuccess;
}

std::string CTripyRouter::FailureText() const {
  const uint32_t status = Status();
  const bool isFailed = status != kRouteSuccess && status != kRoutePointCount;
  return isFailed ? std::string(LoadTextUtf8(kTextTripyCommunicationError)) : std::string();
}
