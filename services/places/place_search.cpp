#include "services/places/place_search.h"

#include <algorithm>
#include <atomic>
#include <map>
#include <mutex>
#include <utility>

#include "io/byte_sink.h"
#include "net/url.h"
#include "services/places/google.h"
#include "services/places/here.h"
#include "services/places/here_v8.h"
#include "services/request_log.h"
#include "services/service_request.h"

namespace {

// What tells the searches of two services apart.
struct SearchKind {
  int32_t id;
  std::string_view service;
  std::string (*buildUrl)(const ServiceAccess& access, std::string_view text,
                          const CGpsCoordinate& position, uint32_t radius);
  uint32_t (*read)(std::string_view reply, PlaceList& places);
};

// HERE's first interface chooses the distance itself.
std::string HereUrl(const ServiceAccess& access, std::string_view text,
                    const CGpsCoordinate& position, uint32_t) {
  return HereSearchUrl(access, text, position);
}

constexpr SearchKind kKinds[] = {
    {provider::kGoogle, "google", GoogleSearchUrl, ReadGooglePlaces},
    {provider::kHere, "here-places", HereUrl, ReadHereSearch},
    {provider::kHereV8, "here-v8-search", HereV8SearchUrl, ReadHereV8Places},
};

class HttpPlaceSearch final : public CPlaceSearch {
 public:
  explicit HttpPlaceSearch(const SearchKind& kind)
      : m_kind(kind), m_service(ServiceNamed(kind.service)), m_client(HttpOptionsFor(m_service)) {
    m_client.SetCompletion(
        [this](CHttpRequest&, const CInternetException& failure) { TakeReply(failure.code); });
  }
  ~HttpPlaceSearch() override { Stop(); }

  void Search(const std::string& text, const CGpsCoordinate& position, uint32_t radius) override;
  void SearchNear(const std::string& text, const CGpsCoordinate& position) override {
    Search(text, position, kDefaultSearchRadius);
  }
  void Cancel() override { m_client.Cancel(); }
  int32_t GetId() const override { return m_kind.id; }
  uint32_t Wait(int32_t timeoutMs) override;
  const PlaceList& GetResults() const override { return m_results; }
  void SetCompletion(Completion completion) override { m_completion = std::move(completion); }
  uint32_t BuildRequest(const std::string& text, const CGpsCoordinate& position, uint32_t radius,
                        std::string& url) const override {
    url = m_kind.buildUrl(AccessTo(m_service), text, position, radius);
    return kServiceSuccess;
  }
  uint32_t ParseResponse(std::string_view reply, PlaceList& places) const override {
    return m_kind.read(reply, places);
  }

 private:
  void Stop() noexcept;
  void TakeReply(uint32_t failure);
  void Finish(uint32_t status);

  const SearchKind& m_kind;
  const Service& m_service;
  std::atomic<uint32_t> m_status = kServiceInvalid;
  CHttpClient m_client;
  std::unique_ptr<StringSink> m_body;
  PlaceList m_results;
  Completion m_completion;
};

// Ends what runs and waits until its completion has returned.
void HttpPlaceSearch::Stop() noexcept {
  m_client.Cancel();
  try {
    m_client.Wait(-1);
  } catch (const CInternetException&) {
    // The completion has told of it.
  }
}

void HttpPlaceSearch::Search(const std::string& text, const CGpsCoordinate& position,
                             uint32_t radius) {
  Stop();
  m_status = kServiceBusy;
  m_results.clear();
  std::string url;
  if (const uint32_t refusal = BuildRequest(text, position, radius, url)) return Finish(refusal);
  try {
    BeforeRequest(m_service, url);
    m_body = std::make_unique<StringSink>();
    m_client.Start(*m_body, UrlEscapeOnce(url), {}, AccessTo(m_service).referrer);
  } catch (const CInternetException& failure) {
    Finish(kServiceTransport + failure.code);
  }
}

uint32_t HttpPlaceSearch::Wait(int32_t timeoutMs) {
  try {
    if (!m_client.Wait(timeoutMs)) return kServiceTimedOut;
  } catch (const CInternetException&) {
    // The completion has made a status of it.
  }
  return m_status;
}

void HttpPlaceSearch::TakeReply(uint32_t failure) {
  Finish(failure == 0 ? ParseResponse(m_body->Bytes(), m_results) : kServiceTransport + failure);
}

void HttpPlaceSearch::Finish(uint32_t status) {
  m_status = status;
  if (m_completion) m_completion(status, m_results);
}

struct Makers {
  std::mutex mutex;
  std::map<int32_t, std::function<std::unique_ptr<CPlaceSearch>()>> byId;
};

Makers& RegisteredMakers() {
  static Makers makers;
  return makers;
}

}  // namespace

std::unique_ptr<CPlaceSearch> CreatePlaceSearch(int32_t id) {
  {
    Makers& makers = RegisteredMakers();
    const std::lock_guard lock(makers.mutex);
    if (const auto found = makers.byId.find(id); found != makers.byId.end()) return found->second();
  }
  const auto* const kind = std::ranges::find(kKinds, id, &SearchKind::id);
  return kind == std::end(kKinds) ? nullptr : std::make_unique<HttpPlaceSearch>(*kind);
}

void RegisterPlaceSearch(int32_t id, std::function<std::unique_ptr<CPlaceSearch>()> maker) {
  Makers& makers = RegisteredMakers();
  const std::lock_guard lock(makers.mutex);
  if (maker)
    makers.byId[id] = std::move(maker);
  else
    makers.byId.erase(id);
}
