// The frame of all providers, against a real server on the loopback.

#include "services/directions/route_provider.h"

#include <chrono>
#include <condition_variable>
#include <future>
#include <thread>

#include "services/service_table.h"
#include "tests/loopback_server.h"
#include "tests/services/directions/router_asked.h"
#include "tests/services/directions/sample_replies.h"

namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

constexpr uint32_t kCancelledStatus = 100 + 12017;

ServiceValuesByName At(std::string_view name, const LoopbackServer& server) {
  ServiceValues values;
  values.url = server.Url();
  values.key = "KEY";
  values.language = "en";
  return {{std::string(name), values}};
}

/// The outcomes that a provider tells.
class Told {
 public:
  explicit Told(CRouteProvider& provider) {
    provider.SetCompletion([this](uint32_t status, const CRouteProvider::Legs& legs) {
      const std::lock_guard lock(m_mutex);
      m_statuses.push_back(status);
      m_legs = legs.size();
    });
  }
  std::vector<uint32_t> Statuses() const {
    const std::lock_guard lock(m_mutex);
    return m_statuses;
  }
  size_t Legs() const {
    const std::lock_guard lock(m_mutex);
    return m_legs;
  }

 private:
  mutable std::mutex m_mutex;
  std::vector<uint32_t> m_statuses;
  size_t m_legs = 0;
};

std::unique_ptr<CGpsPointList> Row(size_t count) {
  return std::make_unique<CGpsPointList>(PointsInARow(count));
}

// What stands between the method and the version in a request's first line.
std::string TargetOf(const std::string& request) {
  const size_t start = request.find(' ') + 1;
  return request.substr(start, request.find(" HTTP/") - start);
}

TEST(RouteProvider, AsksOnceForAChunkAndTellsOnce) {
  LoopbackServer server(
      [](const std::string&) { return HttpReply(SampleReplyOf(provider::kOsrm)); });
  const ServiceValuesForTest values(At("osrm", server));
  const auto router = RouterOf(provider::kOsrm);
  const Told told(*router);
  router->Calculate(Row(2), kCar, {});
  EXPECT_EQ(router->Wait(-1), 0u);
  EXPECT_EQ(told.Statuses(), (std::vector<uint32_t>{0}));
  EXPECT_EQ(router->GetLegs().size(), 1u);
  ASSERT_EQ(server.Requests().size(), 1u);
  EXPECT_EQ(TargetOf(server.Requests()[0]),
            "/route/v1/driving/7.000000,48.000000;7.000000,48.010000?overview=full");
}

TEST(RouteProvider, RefusesOnePointWithoutARequest) {
  LoopbackServer server([](const std::string&) { return HttpReply("{}"); });
  const ServiceValuesForTest values(At("osrm", server));
  const auto router = RouterOf(provider::kOsrm);
  const Told told(*router);
  router->Calculate(Row(1), kCar, {});
  EXPECT_EQ(told.Statuses(), (std::vector<uint32_t>{8}));
  EXPECT_EQ(router->Wait(-1), 8u);
  router->Calculate(Row(0), kCar, {});
  EXPECT_EQ(told.Statuses(), (std::vector<uint32_t>{8, 8}));
  EXPECT_TRUE(server.Requests().empty());
}

// The numbers of points of the chunks, from the targets of OSRM's requests.
std::vector<size_t> ChunksOf(size_t points) {
  LoopbackServer server(
      [](const std::string&) { return HttpReply(SampleReplyOf(provider::kOsrm)); });
  const ServiceValuesForTest values(At("osrm", server));
  const auto router = RouterOf(provider::kOsrm);
  router->Calculate(Row(points), kCar, {});
  EXPECT_EQ(router->Wait(-1), 0u);
  std::vector<size_t> counts;
  std::string last;
  for (const std::string& request : server.Requests()) {
    const std::string target = TargetOf(request);
    const std::string list =
        target.substr(17, target.find('?') - 17);  // behind "/route/v1/driving"
    counts.push_back(static_cast<size_t>(std::count(list.begin(), list.end(), ';')) + 1);
    const std::string first = list.substr(1, list.find(';') - 1);
    EXPECT_TRUE(last.empty() || first == last);  // chunks share their border points
    last = list.substr(list.rfind(';') + 1);
  }
  EXPECT_EQ(router->GetLegs().size(), counts.size());
  return counts;
}

TEST(RouteProvider, CutsListsIntoChunks) {
  EXPECT_EQ(ChunksOf(24), (std::vector<size_t>{24}));
  EXPECT_EQ(ChunksOf(25), (std::vector<size_t>{25}));
  EXPECT_EQ(ChunksOf(26), (std::vector<size_t>{25, 2}));
  EXPECT_EQ(ChunksOf(49), (std::vector<size_t>{25, 25}));
  EXPECT_EQ(ChunksOf(50), (std::vector<size_t>{25, 25, 2}));
}

TEST(RouteProvider, StartsTheNextGoogleChunkWithTheLastPoint) {
  LoopbackServer server(
      [](const std::string&) { return HttpReply(SampleReplyOf(provider::kGoogle)); });
  const ServiceValuesForTest values(At("google", server));
  const auto router = RouterOf(provider::kGoogle);
  router->Calculate(Row(24), kCar, {});
  EXPECT_EQ(router->Wait(-1), 0u);
  ASSERT_EQ(server.Requests().size(), 2u);
  EXPECT_NE(server.Requests()[0].find("&origin=48.000000,7.000000&destination=48.220000,7.000000"),
            std::string::npos);
  EXPECT_NE(server.Requests()[1].find("&origin=48.220000,7.000000&destination=48.230000,7.000000"),
            std::string::npos);
}

TEST(RouteProvider, KeepsTheLegsInFrontOfAFailure) {
  std::atomic<int> count = 0;
  LoopbackServer server([&count](const std::string&) {
    return HttpReply(count++ == 0 ? SampleReplyOf(provider::kOsrm) : "{\"code\":\"NoRoute\"}");
  });
  const ServiceValuesForTest values(At("osrm", server));
  const auto router = RouterOf(provider::kOsrm);
  const Told told(*router);
  router->Calculate(Row(60), kCar, {});
  EXPECT_EQ(router->Wait(-1), 6u);
  EXPECT_EQ(router->GetLegs().size(), 1u);
  EXPECT_EQ(told.Legs(), 1u);
  EXPECT_EQ(server.Requests().size(), 2u);
}

TEST(RouteProvider, FindsNothingInASuccessWithoutLegs) {
  LoopbackServer server([](const std::string&) {
    return HttpReply("{\"status\":\"OK\",\"routes\":[{\"legs\":[]}]}");
  });
  const ServiceValuesForTest values(At("google", server));
  const auto router = RouterOf(provider::kGoogle);
  router->Calculate(Row(2), kCar, {});
  EXPECT_EQ(router->Wait(-1), 1u);
}

TEST(RouteProvider, AsksOverLimitOnlyOnce) {
  LoopbackServer server(
      [](const std::string&) { return HttpReply("{\"status\":\"OVER_QUERY_LIMIT\"}"); });
  const ServiceValuesForTest values(At("google", server));
  const auto router = RouterOf(provider::kGoogle);
  router->Calculate(Row(2), kCar, {});
  EXPECT_EQ(router->Wait(-1), 2u);
  EXPECT_EQ(server.Requests().size(), 1u);
}

TEST(RouteProvider, CanCalculateAgainAfterEveryEnd) {
  std::atomic<int> count = 0;
  LoopbackServer server([&count](const std::string&) {
    return HttpReply(count++ == 0 ? "no" : SampleReplyOf(provider::kOsrm));
  });
  const ServiceValuesForTest values(At("osrm", server));
  const auto router = RouterOf(provider::kOsrm);
  const Told told(*router);
  router->Calculate(Row(2), kCar, {});
  EXPECT_EQ(router->Wait(-1), 4u);
  router->Calculate(Row(2), kCar, {});
  EXPECT_EQ(router->Wait(-1), 0u);
  EXPECT_EQ(router->GetLegs().size(), 1u);
  router->Calculate(Row(1), kCar, {});
  EXPECT_EQ(router->Wait(-1), 8u);
  EXPECT_TRUE(router->GetLegs().empty());
  EXPECT_EQ(told.Statuses(), (std::vector<uint32_t>{4, 0, 8}));
}

TEST(RouteProvider, CanCalculateAgainFromItsCompletion) {
  LoopbackServer server(
      [](const std::string&) { return HttpReply(SampleReplyOf(provider::kOsrm)); });
  const ServiceValuesForTest values(At("osrm", server));
  const auto router = RouterOf(provider::kOsrm);
  int times = 0;
  router->SetCompletion([&](uint32_t, const CRouteProvider::Legs&) {
    if (++times < 3) router->Calculate(Row(2), kCar, {});
  });
  router->Calculate(Row(2), kCar, {});
  EXPECT_EQ(router->Wait(-1), 0u);
  EXPECT_EQ(times, 3);
  EXPECT_EQ(server.Requests().size(), 3u);
}

TEST(RouteProvider, SwallowsWhatItsCompletionThrows) {
  LoopbackServer server(
      [](const std::string&) { return HttpReply(SampleReplyOf(provider::kOsrm)); });
  const ServiceValuesForTest values(At("osrm", server));
  const auto router = RouterOf(provider::kOsrm);
  int times = 0;
  router->SetCompletion([&times](uint32_t, const CRouteProvider::Legs&) {
    ++times;
    throw 1;
  });
  router->Calculate(Row(2), kCar, {});
  EXPECT_EQ(router->Wait(-1), 0u);
  EXPECT_NO_THROW(router->Calculate(Row(1), kCar, {}));
  EXPECT_EQ(times, 2);
}

TEST(RouteProvider, TellsTheTransportsFailures) {
  uint16_t port = 0;
  {
    const LoopbackServer gone([](const std::string&) { return std::string(); });
    port = gone.Port();
  }
  ServiceValues nobody;
  nobody.url = "http://127.0.0.1:" + std::to_string(port);
  const ServiceValuesForTest values({{"osrm", nobody}});
  const auto router = RouterOf(provider::kOsrm);
  const Told told(*router);
  router->Calculate(Row(2), kCar, {});
  EXPECT_EQ(router->Wait(-1), 100u + 12029u);
  EXPECT_EQ(told.Statuses(), (std::vector<uint32_t>{100 + 12029}));
}

TEST(RouteProvider, TellsAddressesThatCannotBe) {
  ServiceValues wrong;
  wrong.url = "ftp://127.0.0.1";
  const ServiceValuesForTest values({{"osrm", wrong}});
  const auto router = RouterOf(provider::kOsrm);
  const Told told(*router);
  router->Calculate(Row(2), kCar, {});
  EXPECT_GE(router->Wait(-1), 100u + 12000u);
  EXPECT_EQ(told.Statuses().size(), 1u);
}

/// A server that keeps its clients waiting.
class SlowServer {
 public:
  SlowServer()
      : m_server(LoopbackServer::Talk([this](LoopbackConnection& connection) {
          connection.ReadRequest();
          ++asked;
          connection.WaitForEnd();
        })) {}
  const LoopbackServer& Server() const { return m_server; }
  void WaitForRequest() const {
    while (asked == 0) std::this_thread::sleep_for(milliseconds(1));
  }

  std::atomic<int> asked = 0;

 private:
  LoopbackServer m_server;
};

TEST(RouteProvider, TellsWhenTheWaitRanOut) {
  const SlowServer slow;
  const ServiceValuesForTest values(At("osrm", slow.Server()));
  const auto router = RouterOf(provider::kOsrm);
  router->Calculate(Row(2), kCar, {});
  EXPECT_EQ(router->Status(), 7u);
  EXPECT_EQ(router->Wait(20), 9u);
}

TEST(RouteProvider, IsCancelledFromAnotherThread) {
  const SlowServer slow;
  const ServiceValuesForTest values(At("osrm", slow.Server()));
  const auto router = RouterOf(provider::kOsrm);
  const Told told(*router);
  router->Calculate(Row(2), kCar, {});
  std::thread other([&] {
    slow.WaitForRequest();
    router->Cancel();
    router->Cancel();
  });
  EXPECT_EQ(router->Wait(-1), kCancelledStatus);
  other.join();
  EXPECT_EQ(told.Statuses(), (std::vector<uint32_t>{kCancelledStatus}));
}

TEST(RouteProvider, IsCancelledBetweenChunks) {
  LoopbackServer server(
      [](const std::string&) { return HttpReply(SampleReplyOf(provider::kWazeUs)); });
  const ServiceValuesForTest values(At("waze-us", server));
  const auto router = RouterOf(provider::kWazeUs);
  router->Calculate(Row(5), 0, {});  // held half a second apart
  while (server.Requests().empty()) std::this_thread::sleep_for(milliseconds(1));
  router->Cancel();
  EXPECT_EQ(router->Wait(-1), kCancelledStatus);
  EXPECT_LT(server.Requests().size(), 4u);
}

TEST(RouteProvider, MayBeDestroyedWhileItRuns) {
  const SlowServer slow;
  const ServiceValuesForTest values(At("osrm", slow.Server()));
  auto router = RouterOf(provider::kOsrm);
  std::atomic<int> times = 0;
  router->SetCompletion([&times](uint32_t status, const CRouteProvider::Legs&) {
    EXPECT_EQ(status, kCancelledStatus);
    ++times;
  });
  router->Calculate(Row(2), kCar, {});
  slow.WaitForRequest();
  router.reset();
  EXPECT_EQ(times, 1);
}

TEST(RouteProvider, ReplacesACalculationThatIsStillRunning) {
  const SlowServer slow;
  const ServiceValuesForTest values(At("osrm", slow.Server()));
  const auto router = RouterOf(provider::kOsrm);
  const Told told(*router);
  router->Calculate(Row(2), kCar, {});
  slow.WaitForRequest();
  router->Calculate(Row(1), kCar, {});
  EXPECT_EQ(told.Statuses(), (std::vector<uint32_t>{kCancelledStatus, 8}));
}

TEST(RouteProvider, TellsTheProductToItsOwnServicesOnly) {
  LoopbackServer server([](const std::string&) { return HttpReply("{}"); });
  const ServiceValuesForTest own(At("ors", server));
  const auto router = RouterOf(provider::kOrs);
  router->Calculate(Row(2), kCar, {});
  EXPECT_EQ(router->Wait(-1), 4u);
  ASSERT_EQ(server.Requests().size(), 1u);
  const std::string request = server.Requests()[0];
  EXPECT_TRUE(request.starts_with("POST /v2/directions/driving-car/json HTTP/1.1\r\n"));
  EXPECT_NE(request.find("\r\nUser-Agent: Corvane Map 1.21\r\n"), std::string::npos);
  EXPECT_NE(request.find("\r\nAuthorization: KEY\r\n"), std::string::npos);
  EXPECT_NE(request.find("\r\nContent-Type: application/json\r\n"), std::string::npos);
}

TEST(WazeProvider, AsksForThreePointsTwiceHalfASecondApart) {
  std::vector<Clock::time_point> times;
  LoopbackServer server([&times](const std::string&) {
    times.push_back(Clock::now());
    return HttpReply(SampleReplyOf(provider::kWazeUs));
  });
  const ServiceValuesForTest values(At("waze-world", server));
  const auto router = RouterOf(provider::kWazeWorld);
  router->Calculate(Row(3), 0, {});
  EXPECT_EQ(router->Wait(-1), 0u);
  EXPECT_EQ(router->GetLegs().size(), 2u);
  ASSERT_EQ(times.size(), 2u);
  EXPECT_GE(times[1] - times[0], milliseconds(450));
}

TEST(OpenRouteProvider, EndsWithStatusFourWhateverTheServiceSays) {
  LoopbackServer server([](const std::string&) { return HttpReply("<xls:Response/>"); });
  const ServiceValuesForTest values(At("openrouteservice", server));
  const auto router = RouterOf(provider::kOpenRouteService);
  router->Calculate(Row(2), kCar, {});
  EXPECT_EQ(router->Wait(-1), 4u);
  ASSERT_EQ(server.Requests().size(), 1u);
  EXPECT_TRUE(server.Requests()[0].starts_with("POST /php/OpenLSRS_DetermineRoute.php "));
  EXPECT_TRUE(server.Requests()[0].ends_with(
      "\r\n\r\nStart=7.000000,48.000000&End=7.000000,48.010000&routepref=Fastest&lang=en"));
}

TEST(TripyProvider, AsksTwiceForEachPairOfPoints) {
  LoopbackServer server([](const std::string& request) {
    return HttpReply(
        request.find("level=2") == std::string::npos ? "ok" : SampleReplyOf(provider::kTripy));
  });
  const ServiceValuesForTest values(At("tripy", server));
  const auto router = RouterOf(provider::kTripy);
  const Told told(*router);
  router->Calculate(Row(3), 0, {});
  EXPECT_EQ(told.Statuses(), (std::vector<uint32_t>{0}));  // within the call
  EXPECT_EQ(router->Wait(0), 0u);
  EXPECT_EQ(router->GetLegs().size(), 2u);
  std::vector<std::string> targets;
  for (const std::string& request : server.Requests()) {
    targets.push_back(TargetOf(request));
    EXPECT_NE(request.find("\r\nReferer: " + server.Url() + "/rtweb/index.php?lg=fr\r\n"),
              std::string::npos);
    EXPECT_NE(request.find("\r\nHost: 127.0.0.1:" + std::to_string(server.Port()) + "\r\n"),
              std::string::npos);
  }
  EXPECT_EQ(targets, (std::vector<std::string>{
                         "/rtweb/rtweb5.php?cmd=add&level=1&lon=7.000000&lat=48.000000",
                         "/rtweb/rtweb5.php?cmd=add&level=2&lon=7.000000&lat=48.010000",
                         "/rtweb/rtweb5.php?cmd=add&level=1&lon=7.000000&lat=48.010000",
                         "/rtweb/rtweb5.php?cmd=add&level=2&lon=7.000000&lat=48.020000"}));
}

TEST(TripyProvider, SaysThatItsServerCouldNotBeReached) {
  ServiceValues nobody;
  nobody.url = "http://127.0.0.1:1";
  const ServiceValuesForTest values({{"tripy", nobody}});
  const auto router = RouterOf(provider::kTripy);
  router->Calculate(Row(2), 0, {});
  EXPECT_GE(router->Status(), 100u);
  EXPECT_EQ(router->FailureText(), "A communication error with the Tripy server was occurred.");
}

TEST(StraightLines, LeadFromPointToPoint) {
  const auto router = RouterOf(provider::kStraight);
  const Told told(*router);
  router->Calculate(Row(3), kBicycle, OfType(2));
  EXPECT_EQ(told.Statuses(), (std::vector<uint32_t>{0}));
  EXPECT_EQ(router->Wait(0), 0u);
  ASSERT_EQ(router->GetLegs().size(), 2u);
  const CRouteData& leg = router->GetLegs()[1];
  EXPECT_EQ(leg.measure.distance, 1113u);
  EXPECT_EQ(leg.measure.duration, 0u);
  EXPECT_EQ(leg.measure.flag, 1);
  EXPECT_EQ(leg.travelMode, 4u);
  EXPECT_EQ(leg.options->mode, 2u);
  EXPECT_EQ(PositionsOf(leg.path).size(), 2u);
  EXPECT_EQ(PositionsOf(leg.shape.points), PositionsOf(leg.path));
  router->Calculate(Row(1), kBicycle, {});
  EXPECT_EQ(router->Wait(0), 8u);
}

}  // namespace
