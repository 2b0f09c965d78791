// Every provider against a real server: two chunks that share their border point.

#include <fmt/format.h>

#include "services/directions/travel_modes.h"
#include "services/service_table.h"
#include "tests/loopback_server.h"
#include "tests/services/directions/router_asked.h"
#include "tests/services/directions/sample_replies.h"

namespace {

// The samples of those that ask once for a chunk; Tripy has a way of its own.
std::vector<SampleReply> SamplesOfChunks() {
  std::vector<SampleReply> samples = SampleReplies();
  std::erase_if(samples, [](const SampleReply& row) { return row.id == provider::kTripy; });
  return samples;
}

class EveryRouter : public testing::TestWithParam<SampleReply> {
 protected:
  static ServiceValuesByName ValuesAt(const LoopbackServer& server) {
    ServiceValues values = ValuesOf("KEY", "en", "", "ID");
    values.url = server.Url("/own/path");
    return {{std::string(FindService(GetParam().id)->name), values}};
  }
};

TEST_P(EveryRouter, AsksAServerOfTheUsersForTwoChunksThatShareAPoint) {
  const int32_t id = GetParam().id;
  const LoopbackServer server([](const std::string&) { return HttpReply(GetParam().text); });
  const ServiceValuesForTest values(ValuesAt(server));
  const auto router = RouterOf(id);
  const uint32_t mode = FirstTravelMode(id);
  CRouteProvider::Legs ofOneReply;
  ASSERT_EQ(router->ParseResponse(GetParam().text, mode, {}, ofOneReply), 0u);

  const size_t most = router->GetMaxPoints();
  router->Calculate(std::make_unique<CGpsPointList>(PointsInARow(most + 1)), mode, OfType(1));
  EXPECT_EQ(router->Wait(-1), 0u);
  EXPECT_EQ(router->GetLegs().size(), 2 * ofOneReply.size());
  const std::vector<std::string> requests = server.Requests();
  ASSERT_EQ(requests.size(), 2u);
  const auto latitude = [](size_t index) {
    return fmt::format("{:.6f}", 48.0 + static_cast<double>(index) * 0.01);
  };
  for (const std::string& request : requests) {
    EXPECT_NE(request.find(" /own/path/"), std::string::npos);
    EXPECT_NE(request.find(latitude(most - 1)), std::string::npos);
  }
  EXPECT_NE(requests[0].find(latitude(0)), std::string::npos);
  EXPECT_EQ(requests[0].find(latitude(most)), std::string::npos);
  EXPECT_NE(requests[1].find(latitude(most)), std::string::npos);
  EXPECT_EQ(requests[1].find(latitude(most - 2)), std::string::npos);
}

TEST_P(EveryRouter, AsksOnceForAsManyPointsAsTheServiceTakes) {
  const LoopbackServer server([](const std::string&) { return HttpReply(GetParam().text); });
  const ServiceValuesForTest values(ValuesAt(server));
  const auto router = RouterOf(GetParam().id);
  router->Calculate(std::make_unique<CGpsPointList>(PointsInARow(router->GetMaxPoints())),
                    FirstTravelMode(GetParam().id), OfType(1));
  EXPECT_EQ(router->Wait(-1), 0u);
  EXPECT_EQ(server.Requests().size(), 1u);
}

TEST_P(EveryRouter, TellsWhatIsNoReply) {
  for (const char* const reply : {"", "<html>busy</html>", "[]", "null", "{}", "{\"a\":1"}) {
    const LoopbackServer server([reply](const std::string&) { return HttpReply(reply); });
    const ServiceValuesForTest values(ValuesAt(server));
    const auto router = RouterOf(GetParam().id);
    router->Calculate(std::make_unique<CGpsPointList>(PointsInARow(2)),
                      FirstTravelMode(GetParam().id), OfType(1));
    const uint32_t status = router->Wait(-1);
    EXPECT_NE(status, 0u) << reply;
    EXPECT_LT(status, 9u) << reply;
    EXPECT_TRUE(router->GetLegs().empty());
  }
}

INSTANTIATE_TEST_SUITE_P(Providers, EveryRouter, testing::ValuesIn(SamplesOfChunks()),
                         [](const testing::TestParamInfo<SampleReply>& row) {
                           std::string name(FindService(row.param.id)->name);
                           std::erase(name, '-');
                           return name;
                         });

}  // namespace
