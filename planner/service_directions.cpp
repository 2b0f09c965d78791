#include "planner/service_directions.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <utility>

#include "services/directions/route_wishes.h"
#include "services/service_access.h"
#include "services/service_registry.h"

namespace {

// How often a waiting caller is asked whether to go on.
constexpr std::chrono::milliseconds kLookInterval(15);

// More previews at a time than these are of no use to anybody; the oldest is cancelled.
constexpr size_t kMostRunning = 8;

// The end of a calculation, told by the HTTP thread.
struct Ending {
  std::mutex mutex;
  std::condition_variable signal;
  bool hasEnded = false;
  uint32_t status = 0;
};

}  // namespace

ServiceDirections::~ServiceDirections() { *m_isThere = false; }

std::unique_ptr<CRouteProvider> ServiceDirections::MakeProvider() const {
  const Service* const service = FindService(m_settings.routeProvider);
  if (service && !IsUsable(*service)) return nullptr;
  return CServiceRegistry::Instance().CreateRouteProvider(m_settings.routeProvider);
}

void ServiceDirections::Begin(CRouteProvider& provider,
                              const std::vector<CGpsPoint>& points) const {
  auto list = std::make_unique<CGpsPointList>();
  for (const CGpsPoint& point : points)
    list->points.push_back(std::make_unique<CGpsNamedPoint>(point));
  const RouteRequest request = RequestFor({}, m_settings, provider);
  provider.Calculate(std::move(list), request.travelMode, *request.options);
}

DirectionsAnswer ServiceDirections::Ask(const std::vector<CGpsPoint>& points,
                                        const std::function<bool()>& goesOn) {
  DirectionsAnswer answer{kRouteInvalidRequest, {}, Provider()};
  const auto ending = std::make_shared<Ending>();
  const std::unique_ptr<CRouteProvider> provider = MakeProvider();
  if (!provider) return answer;
  provider->SetCompletion([ending](uint32_t status, const CRouteProvider::Legs&) {
    const std::lock_guard lock(ending->mutex);
    ending->hasEnded = true;
    ending->status = status;
    ending->signal.notify_one();
  });
  Begin(*provider, points);

  std::unique_lock lock(ending->mutex);
  const auto hasEnded = [&] { return ending->hasEnded; };
  while (!ending->signal.wait_for(lock, kLookInterval, hasEnded)) {
    lock.unlock();
    const bool cancels = !goesOn();
    if (cancels) provider->Cancel();
    lock.lock();
    if (cancels) ending->signal.wait(lock, hasEnded);
  }
  answer.status = ending->status;
  lock.unlock();
  answer.legs = std::move(provider->GetLegs());
  return answer;
}

void ServiceDirections::AskLater(const std::vector<CGpsPoint>& points,
                                 std::function<void(const DirectionsAnswer&)> answered) {
  std::unique_ptr<CRouteProvider> provider = MakeProvider();
  const uint64_t number = ++m_lastNumber;
  if (!provider) {
    m_posts.Post([answered = std::move(answered), id = Provider()] {
      answered({kRouteInvalidRequest, {}, id});
    });
    return;
  }
  if (m_running.size() >= kMostRunning) m_running.front().provider->Cancel();
  provider->SetCompletion(
      [this, isThere = m_isThere, number](uint32_t status, const CRouteProvider::Legs&) {
        // `this` is used on the window's thread only, and only while it is there.
        m_posts.Post([this, isThere, number, status] {
          if (*isThere) Answer(number, status);
        });
      });
  m_running.push_back({number, std::move(provider), std::move(answered)});
  Begin(*m_running.back().provider, points);
}

void ServiceDirections::Answer(uint64_t number, uint32_t status) {
  for (auto each = m_running.begin(); each != m_running.end(); ++each) {
    if (each->number != number) continue;
    const Running ended = std::move(*each);
    m_running.erase(each);
    const DirectionsAnswer answer{status, std::move(ended.provider->GetLegs()),
                                  ended.provider->GetId()};
    ended.answered(answer);
    return;
  }
}
