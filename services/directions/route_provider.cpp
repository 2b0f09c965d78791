#include "services/directions/route_provider.h"

#include <algorithm>
#include <cassert>
#include <iterator>
#include <new>

#include "net/http_client.h"
#include "services/directions/route_reply.h"
#include "services/directions/travel_modes.h"
#include "services/request_log.h"
#include "services/service_request.h"
#include "services/service_table.h"

CRouteProvider::CRouteProvider() = default;

CRouteProvider::~CRouteProvider() { assert(!m_client && "Stop is missing in the destructor"); }

void CRouteProvider::Stop() {
  Halt();
  m_client.reset();
}

void CRouteProvider::Halt() {
  CHttpClient* const client = ClientIfMade();
  if (!client) return;
  // The class's own `Cancel` may belong to a part that is gone already.
  CRouteProvider::Cancel();
  try {
    client->Wait(kWaitForever);
  } catch (const CInternetException&) {  // NOLINT(bugprone-empty-catch)
    // How the calculation has ended, or that this is its completion.
  }
}

CHttpClient& CRouteProvider::Client() {
  const std::lock_guard lock(m_clientMutex);
  if (!m_client) {
    const Service* const service = FindService(GetId());
    m_client = std::make_unique<CHttpClient>(service ? HttpOptionsFor(*service) : HttpOptions());
    m_client->SetCompletion(
        [this](CHttpRequest&, const CInternetException& failure) { TakeReply(failure); });
  }
  return *m_client;
}

CHttpClient* CRouteProvider::ClientIfMade() {
  const std::lock_guard lock(m_clientMutex);
  return m_client.get();
}

void CRouteProvider::Calculate(std::unique_ptr<CGpsPointList> points, uint32_t travelMode,
                               const CRouteOptions& options) {
  Begin();
  const size_t most = GetMaxPoints();
  if (points->points.size() < 2 || most < 2) {
    Finish(kRoutePointCount);
    return;
  }
  CutIntoChunks(*points, most);
  m_travelMode = travelMode;
  m_options = options.Clone();
  points.reset();
  RunNextChunk();
}

void CRouteProvider::Calculate(const CGpsNamedPoint& from, const CGpsNamedPoint& to,
                               uint32_t travelMode, const CRouteOptions& options) {
  auto points = std::make_unique<CGpsPointList>();
  AppendPoint(*points, from);
  AppendPoint(*points, to);
  Calculate(std::move(points), travelMode, options);
}

void CRouteProvider::Begin() {
  Halt();
  m_status = kRouteBusy;
  m_cancelled = false;
  m_requested = false;
  m_legs.clear();
}

// Each next chunk begins with the last point of the one before.
void CRouteProvider::CutIntoChunks(CGpsPointList& points, size_t most) {
  m_chunks.clear();
  m_currentChunk = 0;
  auto& rest = points.points;
  m_chunks.reserve(rest.size() > most ? rest.size() / most + 1 : 1);
  while (!rest.empty()) {
    auto& chunk = m_chunks.emplace_back().points;
    const auto end = std::next(rest.begin(), static_cast<ptrdiff_t>(std::min(most, rest.size())));
    chunk.splice(chunk.end(), rest, rest.begin(), end);
    if (!rest.empty()) rest.push_front(std::make_unique<CGpsNamedPoint>(*chunk.back()));
  }
}

void CRouteProvider::RunNextChunk() {
  if (m_currentChunk == m_chunks.size()) {
    Finish(m_legs.empty() ? kRouteNothingFound : kRouteSuccess);
    return;
  }
  const uint32_t status = StartRequest(m_chunks[m_currentChunk++]);
  if (status != kRouteSuccess) Finish(status);
}

uint32_t CRouteProvider::StartRequest(const CGpsPointList& chunk) {
  CHttpRequestSpec spec;
  const uint32_t status = BuildRequest(chunk, m_travelMode, *m_options, spec);
  if (status != kRouteSuccess) return status;
  if (const Service* const service = FindService(GetId())) BeforeRequest(*service, spec.url);
  if (m_cancelled) return TransportStatus(kInternetCancelled);

  CHttpClient& client = Client();
  m_body.emplace();
  const bool hadRequest = m_requested.exchange(true);
  try {
    client.Start(*m_body, spec.url, spec.postData, spec.referrer, {}, spec.headers);
  } catch (const CInternetException& failure) {
    m_requested = hadRequest;
    return TransportStatus(failure.code);
  }
  // Who has cancelled in the meantime has found no request to end.
  if (m_cancelled) client.Request().Close();
  return kRouteSuccess;
}

void CRouteProvider::TakeReply(const CInternetException& failure) {
  const uint32_t status = failure.code != 0 ? TransportStatus(failure.code) : ParseBody();
  if (status == kRouteSuccess) {
    RunNextChunk();
  } else {
    Finish(status);
  }
}

uint32_t CRouteProvider::ParseBody() {
  try {
    return ParseResponse(m_body->Bytes(), m_travelMode, *m_options, m_legs);
  } catch (const CJsonException&) {
    return kRouteInvalidRequest;
  } catch (const std::bad_alloc&) {
    return kRouteFailed;
  }
}

void CRouteProvider::Finish(uint32_t status) {
  m_status = status;
  // Its own copy: the completion may set another one.
  const Completion completion = m_completion;
  if (!completion) return;
  try {
    completion(status, m_legs);
  } catch (...) {  // NOLINT(bugprone-empty-catch)
    // Nobody is there to hear of it.
  }
}

void CRouteProvider::Cancel() {
  m_cancelled = true;
  if (CHttpClient* const client = ClientIfMade()) client->Request().Close();
}

CRouteProvider::Legs& CRouteProvider::GetLegs() { return m_legs; }

uint32_t CRouteProvider::Wait(int32_t timeoutMs) {
  CHttpClient* const client = ClientIfMade();
  if (!client || !m_requested) return m_status;
  try {
    uint32_t busy = kRouteBusy;
    if (!client->Wait(timeoutMs)) m_status.compare_exchange_strong(busy, kRouteTimedOut);
  } catch (const CInternetException& failure) {
    m_status = TransportStatus(failure.code);
  }
  return m_status;
}

TravelModes CRouteProvider::GetTravelModes() const { return TravelModesOf(GetId()); }

void CRouteProvider::SetCompletion(Completion newCompletion) {
  m_completion = std::move(newCompletion);
}

std::string CRouteProvider::FailureText() const { return {}; }
