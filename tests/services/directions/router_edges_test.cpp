// Accounts without keys, answers without a way, and lists at the edge of what a service takes.

#include "services/service_table.h"
#include "tests/loopback_server.h"
#include "tests/services/directions/router_asked.h"
#include "tests/services/directions/sample_replies.h"

namespace {

using Positions = std::vector<std::pair<double, double>>;

const CGpsPointList& Pair() {
  static const CGpsPointList points = PointsOf({{48.5, 7.25}, {49, -1}});
  return points;
}

// What a provider asks for a pair of points with an account of which nothing is known.
std::string AskedWithoutAccount(int32_t id) {
  const ServiceValuesForTest values({{std::string(FindService(id)->name), ValuesOf("", "")}});
  return AskedOf(id, Pair(), kCar, OfType(1)).url;
}

TEST(EmptyAccounts, LeaveOutNoParameterButTheLanguage) {
  EXPECT_EQ(AskedWithoutAccount(provider::kGoogle),
            "http://server/maps/api/directions/json?sensor=false&units=metric&key=&mode=driving"
            "&origin=48.500000,7.250000&destination=49.000000,-1.000000");
  EXPECT_EQ(AskedWithoutAccount(provider::kHere),
            "http://server/routing/7.2/calculateroute.json?metricsystem=metric"
            "&representation=overview&routeattributes=shape&app_id=&app_code="
            "&mode=fastest;car;traffic:disabled&waypoint0=geo!48.500000,7.250000"
            "&waypoint1=geo!49.000000,-1.000000");
  for (const int32_t id : {provider::kTomTom, provider::kTomTom6}) {
    EXPECT_EQ(AskedWithoutAccount(id),
              "http://server/routing/1/calculateRoute/48.500000,7.250000:49.000000,-1.000000/json"
              "?key=&traffic=false&travelMode=car");
  }
  EXPECT_EQ(AskedWithoutAccount(provider::kBing),
            "http://server/REST/V1/Routes/Driving?o=json&rpo=Points&du=km&optmz=time"
            "&wp.0=48.500000,7.250000&wp.1=49.000000,-1.000000&key=");
  EXPECT_EQ(AskedWithoutAccount(provider::kViaMichelin),
            "http://server/apir/1/iti.json/?charset=UTF-8&ie=UTF-8&distUnit=m&avoidBorders=true"
            "&avoidCCZ=false&avoidORC=false&multipleIti=false&itiIdx=0"
            "&callback=HTTPResponseLoaded&steps=1:7.250000:48.500000;1:-1.000000:49.000000"
            "&veht=0&itit=1&authkey=");
  EXPECT_EQ(AskedWithoutAccount(provider::kIgn),
            "http://server//itineraire/rest/route.json?origin=7.250000,48.500000"
            "&destination=-1.000000,49.000000&graphName=Voiture&method=TIME");
}

TEST(IgnRequest, TellsTheMiddlePointsBehindTheEnds) {
  const ServiceValuesForTest values({{"ign", ValuesOf("abc", "")}});
  const auto tail = [](const CGpsPointList& points) {
    return Behind(AskedOf(provider::kIgn, points, kCar).url, "/route.json");
  };
  EXPECT_EQ(tail(PointsOf({{48.5, 7.25}, {48.75, 7}, {49, -1}})),
            "?origin=7.250000,48.500000&destination=-1.000000,49.000000"
            "&waypoints=7.000000,48.750000&graphName=Voiture&method=TIME");
  EXPECT_EQ(tail(PointsOf({{48.5, 7.25}, {48.75, 7}, {48.875, 6.5}, {49, -1}})),
            "?origin=7.250000,48.500000&destination=-1.000000,49.000000"
            "&waypoints=7.000000,48.750000;6.500000,48.875000&graphName=Voiture&method=TIME");
}

// Eleven points are one too many: the last one goes with the tenth, counted from 0 again.
TEST(HereRequest, CountsThePointsOfEachChunkFromZero) {
  const LoopbackServer server(
      [](const std::string&) { return HttpReply(SampleReplyOf(provider::kHere)); });
  ServiceValues here = ValuesOf("CODE", "", "", "ID");
  here.url = server.Url();
  const ServiceValuesForTest values({{"here", here}});
  const auto router = RouterOf(provider::kHere);
  router->Calculate(std::make_unique<CGpsPointList>(PointsInARow(11)), kCar, OfType(1));
  EXPECT_EQ(router->Wait(-1), 0u);
  EXPECT_EQ(router->GetLegs().size(), 2u);
  const std::vector<std::string> requests = server.Requests();
  ASSERT_EQ(requests.size(), 2u);
  EXPECT_NE(requests[0].find("&waypoint9=geo!48.090000,7.000000 HTTP/1.1\r\n"), std::string::npos);
  EXPECT_NE(requests[1].find(";traffic:disabled&waypoint0=geo!48.090000,7.000000"
                             "&waypoint1=geo!48.100000,7.000000 HTTP/1.1\r\n"),
            std::string::npos);
}

TEST(GoogleReply, MayHoldARouteThatHasNoLegsAtAll) {
  const std::string reply = R"({"status":"OK","routes":[{"summary":""}]})";
  CRouteProvider::Legs legs;
  EXPECT_EQ(RouterOf(provider::kGoogle)->ParseResponse(reply, kCar, {}, legs), 0u);
  EXPECT_TRUE(legs.empty());

  const LoopbackServer server([&reply](const std::string&) { return HttpReply(reply); });
  ServiceValues google = ValuesOf("KEY", "");
  google.url = server.Url();
  const ServiceValuesForTest values({{"google", google}});
  const auto router = RouterOf(provider::kGoogle);
  router->Calculate(std::make_unique<CGpsPointList>(PointsInARow(2)), kCar, {});
  EXPECT_EQ(router->Wait(-1), 1u);
  EXPECT_TRUE(router->GetLegs().empty());
  EXPECT_EQ(server.Requests().size(), 1u);
}

TEST(WazeReply, FailsByAnErrorThatIsAnObject) {
  const std::string rest = SampleReplyOf(provider::kWazeUs).substr(1);
  const auto read = [&rest](const std::string& error, CRouteProvider::Legs& legs) {
    const std::string reply = "{\"error\": " + error + ", " + rest;
    return RouterOf(provider::kWazeUs)->ParseResponse(reply, 0, {}, legs);
  };
  CRouteProvider::Legs legs;
  EXPECT_EQ(read("{\"code\": 1}", legs), 4u);
  EXPECT_TRUE(legs.empty());
  EXPECT_EQ(read("null", legs), 0u);
  EXPECT_EQ(legs.size(), 1u);
}

TEST(ViaMichelinReply, HasRowsThatDoNotCount) {
  CRouteProvider::Legs legs;
  ASSERT_EQ(
      RouterOf(provider::kViaMichelin)
          ->ParseResponse(R"(HTTPResponseLoaded({"header": {}, "roadSheet": [[[], [7], ["c"],)"
                          R"( ["C", {"lon": 7.25, "lat": 48.5}, 100, 12, 0, 0, "b", "a", 3],)"
                          R"( ["CC", 1]]], "itineraryTrace": "xy"}))",
                          kCar, {}, legs),
      0u);
  ASSERT_EQ(legs.size(), 1u);
  ASSERT_EQ(legs[0].steps.size(), 1u);
  EXPECT_EQ(legs[0].steps[0].instruction, "a, b");
  EXPECT_EQ(legs[0].measure.distance, 100u);
  EXPECT_EQ(legs[0].measure.duration, 12u);
  EXPECT_EQ(PositionsOf(legs[0].shape.points), Positions{});
}

TEST(StraightLines, AreNeverWaitedFor) {
  const auto router = RouterOf(provider::kStraight);
  EXPECT_EQ(router->Wait(-1), 0u);
  router->Cancel();
  router->Calculate(std::make_unique<CGpsPointList>(Pair()), kCar, {});
  router->Cancel();
  EXPECT_EQ(router->Wait(-1), 0u);
  EXPECT_EQ(router->GetLegs().size(), 1u);
}

}  // namespace
