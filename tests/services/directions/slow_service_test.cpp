// Services that never stop answering and never get anywhere.

#include <atomic>
#include <chrono>
#include <stop_token>
#include <thread>

#include "services/service_request.h"
#include "services/service_table.h"
#include "tests/loopback_server.h"
#include "tests/services/directions/router_asked.h"

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

// Far below what a service is granted otherwise, far above what a busy machine needs.
constexpr auto kSoon = 20s;
constexpr uint32_t kCancelledStatus = 100 + 12017;

class DrippingServer {
 public:
  const LoopbackServer& Server() const { return m_server; }
  void WaitForClient() const {
    while (m_drops == 0) std::this_thread::sleep_for(1ms);
  }

 private:
  std::atomic<int> m_drops = 0;
  LoopbackServer m_server{LoopbackServer::Talk([this](LoopbackConnection& connection) {
    connection.ReadRequest();
    connection.Send("HTTP/1.1 200 OK\r\n\r\n");
    for (; connection.Sleep(20ms) && connection.Send("["); ++m_drops) {
    }
  })};
};

ServiceValuesByName At(std::string_view name, const LoopbackServer& server) {
  ServiceValues values;
  values.url = server.Url();
  return {{std::string(name), values}};
}

TEST(SlowServices, AreAllGivenUpInTheEnd) {
  for (const Service& service : Services()) {
    const HttpOptions options = HttpOptionsFor(service);
    EXPECT_EQ(options.connectTimeoutMs, 30'000u) << service.name;
    EXPECT_EQ(options.idleTimeoutMs, 60'000u) << service.name;
    EXPECT_EQ(options.lagMs, 120'000u) << service.name;
    EXPECT_EQ(options.longestMs, 1'800'000u) << service.name;
  }
}

void ExpectDirectionsEndWhenCancelled(std::string_view name, int32_t id) {
  const DrippingServer slow;
  const ServiceValuesForTest values(At(name, slow.Server()));
  const auto router = RouterOf(id);
  const auto start = Clock::now();
  std::thread user([&] {
    slow.WaitForClient();
    router->Cancel();
  });
  router->Calculate(std::make_unique<CGpsPointList>(PointsInARow(2)), kCar, {});
  EXPECT_EQ(router->Wait(-1), kCancelledStatus);
  EXPECT_LT(Clock::now() - start, kSoon);
  user.join();
}

TEST(SlowServices, AreLeftAtOnceByWhoCancels) {
  ExpectDirectionsEndWhenCancelled("osrm", provider::kOsrm);
}

TEST(SlowServices, AreLeftAtOnceByWhoCancelsACallThatWaits) {
  ExpectDirectionsEndWhenCancelled("tripy", provider::kTripy);
}

TEST(SlowServices, AreLeftAtOnceByWhoStopsAsking) {
  const DrippingServer slow;
  const Service& service = ServiceNamed("photon");
  const ServiceValuesForTest values(At(service.name, slow.Server()));
  const auto start = Clock::now();
  std::stop_source stop;
  std::thread user([&] {
    slow.WaitForClient();
    stop.request_stop();
  });
  std::string reply;
  EXPECT_EQ(AskService(service, slow.Server().Url("/api"), reply, -1, stop.get_token()),
            kCancelledStatus);
  EXPECT_LT(Clock::now() - start, kSoon);
  user.join();
}

}  // namespace
