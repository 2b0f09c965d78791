#include "services/directions/road_lengths.h"

#include <cmath>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "services/directions/route_options.h"
#include "services/directions/route_providers.h"
#include "services/service_access.h"
#include "services/service_table.h"
#include "tests/list_builder.h"
#include "tests/loopback_server.h"

namespace {

// "/route/v1/driving/7.200000,48.100000;7.300000,48.100000?..." as "7.200000 7.300000".
std::string Longitudes(const std::string& request) {
  const size_t first = request.find("/driving/") + 9;
  const size_t second = request.find(';') + 1;
  return request.substr(first, request.find(',', first) - first) + " " +
         request.substr(second, request.find(',', second) - second);
}

std::string OsrmReply(uint32_t metres) {
  return HttpReply(R"({"code": "Ok", "routes": [{"distance": )" + std::to_string(metres) +
                   R"(, "duration": 60, "geometry": "_p~iF~ps|U_ulLnnqC"}], "waypoints": []})");
}

// Stops at longitudes 7.0, 7.1, ... in this order.
CGpsRoute StopsAt(const std::vector<int>& tenths) {
  CGpsRoute list;
  for (const int tenth : tenths) list.points.push_back(MakePoint(48.1, 7.0 + tenth / 10.0));
  return list;
}

class RoadLengthsTest : public testing::Test {
 protected:
  RoadLengthsTest() : m_options(MakeRouteOptions(kRouteTypeOnly)) {}
  ~RoadLengthsTest() override { SetServiceValues({}); }
  // The provider asks this server.
  CRouteProvider& ProviderAt(const LoopbackServer& server) {
    ServiceValues osrm;
    osrm.url = server.Url();
    SetServiceValues({{"osrm", osrm}});
    m_provider = MakeRouteProvider(provider::kOsrm);
    return *m_provider;
  }

  std::unique_ptr<CRouteProvider> m_provider;
  const std::unique_ptr<CRouteOptions> m_options;
};

TEST(MostRoadQuestions, IsEveryPairButFirstAndLast) {
  EXPECT_EQ(MostRoadQuestions(0), 0u);
  EXPECT_EQ(MostRoadQuestions(3), 0u);
  EXPECT_EQ(MostRoadQuestions(4), 5u);
  EXPECT_EQ(MostRoadQuestions(32), 495u);
  EXPECT_EQ(MostRoadQuestions(33), 527u);
  EXPECT_EQ(MostRoadQuestions(5000), 12'497'499u);
}

TEST_F(RoadLengthsTest, EachPairIsAskedOnce) {
  const LoopbackServer server([](const std::string&) { return OsrmReply(1234); });
  const CGpsRoute list = StopsAt({0, 1, 2});
  RoadLengths lengths(ProviderAt(server), kCar, *m_options, list);
  EXPECT_EQ(lengths.Between(1, 0), 1234u);
  EXPECT_EQ(lengths.Between(0, 1), 1234u);
  EXPECT_EQ(lengths.Between(1, 2), 1234u);
  ASSERT_EQ(server.Requests().size(), 2u);
  // In the direction of the first question.
  EXPECT_EQ(Longitudes(server.Requests()[0]), "7.100000 7.000000");
  EXPECT_EQ(lengths.Asked(), 2u);
  EXPECT_TRUE(lengths.Failures().empty());
}

TEST_F(RoadLengthsTest, OptimisesByRoad) {
  // As far as the longitudes, but over the mountain between 7.1 and 7.2 it is 100 km.
  const LoopbackServer server([](const std::string& request) {
    const std::string pair = Longitudes(request);
    const double from = std::stod(pair.substr(0, 8));
    const double to = std::stod(pair.substr(9));
    const bool isMountain = std::abs(from + to - 14.3) < 0.001 && std::abs(from - to) < 0.11;
    return OsrmReply(isMountain ? 100'000 : static_cast<uint32_t>(std::abs(from - to) * 10'000));
  });
  // 0 -> 2 -> 1 -> 3: turning the middle gives 0-1 (1000), 1-2 (100,000), 2-3 (1000); as it is,
  // 0-2 (2000), 2-1 (100,000), 1-3 (2000).
  const CGpsRoute list = StopsAt({0, 2, 1, 3});
  RoadLengths lengths(ProviderAt(server), kCar, *m_options, list);
  CItineraryOptimizer optimizer(list, lengths.ForOptimizer(), lengths.Stop());
  EXPECT_EQ(optimizer.Optimise(true), (std::vector<size_t>{0, 2, 1, 3}));
  // The way as it is: 0-2, 2-1, 1-3; then the turned one: 0-1 and 2-3.
  std::vector<std::string> asked;
  for (const std::string& request : server.Requests()) asked.push_back(Longitudes(request));
  EXPECT_EQ(asked,
            (std::vector<std::string>{"7.000000 7.200000", "7.200000 7.100000", "7.100000 7.300000",
                                      "7.000000 7.100000", "7.200000 7.300000"}));
  EXPECT_LE(lengths.Asked(), MostRoadQuestions(4));
}

TEST_F(RoadLengthsTest, NoWayIsAskedOnceToo) {
  const LoopbackServer server(
      [](const std::string&) { return HttpReply(R"({"code": "NoRoute"})"); });
  const CGpsRoute list = StopsAt({0, 1});
  RoadLengths lengths(ProviderAt(server), kCar, *m_options, list);
  EXPECT_EQ(lengths.Between(1, 0), 0u);
  EXPECT_EQ(lengths.Between(0, 1), 0u);
  EXPECT_EQ(server.Requests().size(), 1u);
  ASSERT_EQ(lengths.Failures().size(), 1u);
  EXPECT_EQ(lengths.Failures()[0].from, 1u);
  EXPECT_EQ(lengths.Failures()[0].to, 0u);
  EXPECT_EQ(lengths.Failures()[0].status, kRouteFailed);
  EXPECT_FALSE(lengths.Stop().stop_requested());
}

TEST_F(RoadLengthsTest, AProviderThatNeverAnswersIsGivenUp) {
  const LoopbackServer server([](const std::string&) { return std::string(); });
  const CGpsRoute list = StopsAt({0, 3, 1, 2, 4});
  RoadLengths lengths(ProviderAt(server), kCar, *m_options, list);
  CItineraryOptimizer optimizer(list, lengths.ForOptimizer(), lengths.Stop());
  EXPECT_EQ(optimizer.Optimise(true), (std::vector<size_t>{0, 1, 2, 3, 4}));
  EXPECT_TRUE(lengths.IsGivenUp());
  EXPECT_FALSE(lengths.IsCancelled());
  EXPECT_EQ(lengths.Asked(), 3u);
  ASSERT_EQ(lengths.Failures().size(), 3u);
  EXPECT_EQ(lengths.Failures()[2].status, TransportStatus(12030));
  // It stays so.
  EXPECT_EQ(lengths.Between(0, 4), 0u);
  EXPECT_EQ(lengths.Asked(), 3u);
}

TEST_F(RoadLengthsTest, CanBeCancelledBetweenAndWithinQuestions) {
  LoopbackServer server(LoopbackServer::Talk([](LoopbackConnection& connection) {
    if (connection.ReadRequest().find("/driving/7.000000") != std::string::npos) {
      connection.Send(OsrmReply(1000));
    } else {
      connection.WaitForEnd();
    }
  }));
  const CGpsRoute list = StopsAt({0, 3, 1, 2, 4});
  size_t looks = 0;
  RoadLengths lengths(ProviderAt(server), kCar, *m_options, list, [&looks](size_t asked) {
    // The second question is never answered.
    return asked < 2 || ++looks < 3;
  });
  CItineraryOptimizer optimizer(list, lengths.ForOptimizer(), lengths.Stop());
  EXPECT_EQ(optimizer.Optimise(true), (std::vector<size_t>{0, 1, 2, 3, 4}));
  EXPECT_TRUE(lengths.IsCancelled());
  EXPECT_TRUE(lengths.Failures().empty());
  EXPECT_FALSE(lengths.IsGivenUp());
  EXPECT_EQ(lengths.Asked(), 2u);
}

// Stops A to D at 7.0 to 7.3. Each way is 1000 m long, but A to C has no answer and B to D takes
// 1500 m: A, C, B, D costs 0 + 1000 + 1500 instead of 3000 m.
TEST_F(RoadLengthsTest, APairWithoutAnAnswerLooksFree) {
  for (const char* const failure : {"<html>503</html>", R"({"code": "NoRoute"})", ""}) {
    const LoopbackServer server([failure](const std::string& request) {
      const std::string pair = Longitudes(request);
      if (pair == "7.000000 7.200000") return *failure ? HttpReply(failure) : std::string();
      return OsrmReply(pair == "7.100000 7.300000" ? 1500 : 1000);
    });
    const CGpsRoute list = StopsAt({0, 1, 2, 3});
    RoadLengths lengths(ProviderAt(server), kCar, *m_options, list);
    CItineraryOptimizer optimizer(list, lengths.ForOptimizer(), lengths.Stop());
    EXPECT_EQ(optimizer.Optimise(true), (std::vector<size_t>{0, 2, 1, 3})) << failure;
    // The pair is asked once, however often it is looked at.
    EXPECT_EQ(server.Requests().size(), 5u) << failure;
    ASSERT_EQ(lengths.Failures().size(), 1u) << failure;
    EXPECT_EQ(lengths.Failures()[0].from, 0u);
    EXPECT_EQ(lengths.Failures()[0].to, 2u);
    EXPECT_FALSE(lengths.IsGivenUp());
  }
}

// Once it has answered, a provider is asked on.
TEST_F(RoadLengthsTest, AProviderThatHasAnsweredIsNotGivenUp) {
  const LoopbackServer server([](const std::string& request) {
    return Longitudes(request) == "7.000000 7.100000" ? OsrmReply(1000) : HttpReply("{}");
  });
  const CGpsRoute list = StopsAt({0, 1, 2, 3, 4});
  RoadLengths lengths(ProviderAt(server), kCar, *m_options, list);
  CItineraryOptimizer optimizer(list, lengths.ForOptimizer(), lengths.Stop());
  // 1000 + 0 + 0 + 0 m as it is; 0 m for everything that does not begin with the first two.
  EXPECT_EQ(optimizer.Optimise(true), (std::vector<size_t>{0, 2, 1, 3, 4}));
  EXPECT_GT(lengths.Failures().size(), 3u);
  EXPECT_FALSE(lengths.Stop().stop_requested());
}

TEST_F(RoadLengthsTest, CannotOutrunTheCancelling) {
  // Straight lines are there at once.
  m_provider = MakeRouteProvider(provider::kStraight);
  const CGpsRoute list = StopsAt({0, 3, 1, 2, 4});
  RoadLengths lengths(*m_provider, kCar, *m_options, list, [](size_t asked) { return asked < 2; });
  CItineraryOptimizer optimizer(list, lengths.ForOptimizer(), lengths.Stop());
  EXPECT_EQ(optimizer.Optimise(true), (std::vector<size_t>{0, 1, 2, 3, 4}));
  EXPECT_TRUE(lengths.IsCancelled());
  EXPECT_TRUE(lengths.Stop().stop_requested());
  EXPECT_EQ(lengths.Asked(), 2u);
}

}  // namespace
