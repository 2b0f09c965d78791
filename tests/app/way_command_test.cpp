// Directions on the command line: a way that is printed.

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/app/way_home.h"
#include "tests/loopback_server.h"

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

const std::string kWayInJson =
    "{\"distance\": 1234, \"duration\": 62, \"path\": [{\"latitude\": 38.5, \"longitude\": -120.2, "
    "\"name\": \"First\"}, {\"latitude\": 43.252, \"longitude\": -126.453, \"name\": \"\"}], "
    "\"shape\": [[38.5, -120.2], [40.7, -120.95], [43.252, -126.453]], \"steps\": []}";

TEST_F(WayCommand, PrintsTheWayAsJson) {
  const LoopbackServer server([](const std::string&) { return HttpReply(kOsrmWay); });
  Set({"service.osrm.url=" + server.Url("/own")});
  const ProgramResult result = Way("trip.itn", {"--provider", "osrm", "--json"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors, "Requests to osrm: 1\n");
  EXPECT_EQ(result.output,
            "{\"provider\": {\"id\": 10, \"name\": \"osrm\"}, \"mode\": 1, \"status\": 0, "
            "\"message\": null, \"distance\": 1234, \"duration\": 62, \"legs\": [" +
                kWayInJson + "]}\n");
  ASSERT_EQ(server.Requests().size(), 1u);
  EXPECT_EQ(Target(server.Requests()[0]),
            "/own/route/v1/driving/7.000000,48.000000;7.000000,48.010000;7.000000,48.020000"
            "?overview=full");
}

TEST_F(WayCommand, PrintsTheWayForPeople) {
  const LoopbackServer server([](const std::string&) {
    return HttpReply(
        R"({"status": "OK", "routes": [{"legs": [{"start_location": {"lat": 48, "lng": 7},)"
        R"( "start_address": "A", "end_location": {"lat": 48.01, "lng": 7}, "end_address": "B",)"
        R"( "duration": {"value": 3725}, "distance": {"value": 12345}, "steps": [{)"
        R"("start_location": {"lat": 48, "lng": 7}, "duration": {"value": 5}, "distance":)"
        R"( {"value": 400}, "html_instructions": "Head <b>north</b><div>on \u001b[1mA1</div>"}]}]}]})");
  });
  Set({"service.google.url=" + server.Url(), "service.google.key=SECRET"});
  const ProgramResult result = Way("pair.itn", {"--provider", "2"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output,
            "Leg 1: 12.3km, 01:02  from Start to End\n"
            "        400m  Head north on \xEF\xBF\xBD[1mA1\n"
            "Total: 12.3km, 01:02\n");
  EXPECT_THAT(result.errors, Not(HasSubstr("SECRET")));
}

TEST_F(WayCommand, AsksForTheStopsAsTheListOptionsLeaveThem) {
  const LoopbackServer server([](const std::string&) { return HttpReply(kOsrmWay); });
  Set({"service.osrm.url=" + server.Url()});
  EXPECT_EQ(Way("pair.itn", {"--reverse", "--provider", "osrm"}).status, 0);
  ASSERT_EQ(server.Requests().size(), 1u);
  EXPECT_EQ(Target(server.Requests()[0]),
            "/route/v1/driving/7.000000,48.010000;7.000000,48.000000?overview=full");
}

TEST_F(WayCommand, SaysModeTypeAndAvoidances) {
  const LoopbackServer server([](const std::string&) { return HttpReply("{}"); });
  Set({"service.here.url=" + server.Url(), "service.here.key=K", "service.here.app-id=I",
       "service.tomtom.url=" + server.Url(), "service.tomtom.key=K", "TruckHeight=40",
       "TruckWidth=35", "TruckLength=165", "TruckTrailersCount=2", "TruckLimitedWeight=405",
       "TruckWeightAxle=115", "TruckCategory=4"});
  Way("pair.itn", {"--provider", "here", "--mode", "truck", "--type", "shortest", "--avoid",
                   "motorways,tolls,boat-ferries,rail-ferries,tunnels,dirt-roads", "--tractor"});
  Way("pair.itn", {"--provider", "tomtom", "--mode", "motorcycle", "--type", "thrilling", "--avoid",
                   "used-roads", "--hilliness", "high", "--windingness", "low"});
  ASSERT_EQ(server.Requests().size(), 2u);
  EXPECT_THAT(
      Target(server.Requests()[0]),
      HasSubstr("&mode=shortest;truck;traffic:disabled;motorway:-2;tollroad:-2;boatFerry:-2;"
                "railFerry:-2;tunnel:-2;dirtRoad:-2&truckType=tractorTruck&trailersCount=2"
                "&limitedWeight=40&weightPerAxle=11&height=4&width=3.5&length=16.5"
                "&shippedHazardousGoods=gas&waypoint0=geo!48.000000,7.000000"));
  EXPECT_THAT(Target(server.Requests()[1]),
              HasSubstr("&travelMode=motorcycle&routeType=thrilling&avoid=alreadyUsedRoads"
                        "&hilliness=high&windingness=low"));
}

TEST_F(WayCommand, TakesTheSettingsWhereNothingIsSaid) {
  const LoopbackServer server([](const std::string&) { return HttpReply("{}"); });
  Set({"service.bing.url=" + server.Url(), "service.bing.key=K", "VehicleType=4", "ItineraryType=2",
       "AVOID_HIGHWAY=1", "AVOID_TOLLS=1", "RouteProvider=3"});
  // The settings name Bing; it knows no bicycles, so its first vehicle goes.
  const ProgramResult result = Way("pair.itn", {"--json"});
  EXPECT_THAT(result.output,
              StartsWith("{\"provider\": {\"id\": 3, \"name\": \"bing\"}, \"mode\": 1, "));
  // What is said replaces what is set.
  Way("pair.itn", {"--avoid", "tolls", "--type", "fastest"});
  ASSERT_EQ(server.Requests().size(), 2u);
  EXPECT_THAT(Target(server.Requests()[0]),
              StartsWith("/REST/V1/Routes/Driving?o=json&rpo=Points&du=km&optmz=distance"
                         "&avoid=highways&avoid=tolls&wp.0="));
  EXPECT_THAT(Target(server.Requests()[1]), HasSubstr("&optmz=time&avoid=tolls&wp.0="));
}

TEST_F(WayCommand, SendsWhatIsNotOfferedAndTells) {
  const LoopbackServer server(
      [](const std::string&) { return HttpReply(R"({"status":"ZERO_RESULTS"})"); });
  Set({"service.google.url=" + server.Url(), "service.google.key=K"});
  const ProgramResult truck = Way("pair.itn", {"--provider", "google", "--mode", "truck"});
  EXPECT_EQ(truck.status, 1);
  EXPECT_EQ(truck.errors,
            "google does not offer \"truck\" here.\n"
            "google: No way was found. (status 1)\nRequests to google: 1\n");
  const ProgramResult onFoot =
      Way("pair.itn", {"--provider", "google", "--mode", "pedestrian", "--avoid", "tolls", "--type",
                       "economical", "--tractor", "--hilliness", "low", "--windingness", "high"});
  EXPECT_THAT(onFoot.errors, StartsWith("google does not offer \"economical\" here.\n"
                                        "google does not offer \"tolls\" here.\n"
                                        "google does not offer \"hilliness\" here.\n"
                                        "google does not offer \"windingness\" here.\n"
                                        "google does not offer \"tractor\" here.\n"));
  ASSERT_EQ(server.Requests().size(), 2u);
  EXPECT_THAT(Target(server.Requests()[0]), HasSubstr("&mode=driving&origin="));
  EXPECT_THAT(Target(server.Requests()[1]), HasSubstr("&mode=walking&avoid=tolls&origin="));
  EXPECT_EQ(Way("pair.itn", {"--provider", "google", "--mode", "truck", "--quiet"}).errors,
            "google: No way was found. (status 1)\n");
}

TEST_F(WayCommand, KeepsTheLegsInFrontOfAFailure) {
  // The second chunk of 25 and 2 points is refused.
  std::string stops;
  for (int i = 0; i < 26; ++i)
    stops += "700000|48" + std::to_string(10000 + i * 100) + "|Stop|0|\r\n";
  folder.Put("long.itn", stops);
  const LoopbackServer server([](const std::string& request) {
    const bool isFirst = request.find("7.000000,48.100000;") != std::string::npos;
    return HttpReply(isFirst ? kOsrmWay : R"({"code": "NoRoute"})");
  });
  Set({"service.osrm.url=" + server.Url()});
  const ProgramResult result = Way("long.itn", {"--provider", "osrm", "--json"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output,
            "{\"provider\": {\"id\": 10, \"name\": \"osrm\"}, \"mode\": 1, \"status\": 6, "
            "\"message\": \"The service reported an error.\", \"distance\": 1234, \"duration\": "
            "62, \"legs\": [" +
                kWayInJson + "]}\n");
  EXPECT_EQ(server.Requests().size(), 2u);
}

TEST_F(WayCommand, TellsOfATransportThatFails) {
  Set({"service.osrm.url=http://127.0.0.1:1"});
  const ProgramResult result = Way("pair.itn", {"--provider", "osrm", "--json"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.output, HasSubstr("\"status\": 12129, \"message\": \"The server cannot be "
                                       "reached. Check the connection to the Internet, or try "
                                       "again later.\", \"distance\": 0, \"duration\": 0, "
                                       "\"legs\": []}"));
}

TEST_F(WayCommand, AsksNobodyWhoIsNotSetUp) {
  const ProgramResult result = Way("pair.itn", {"--provider", "valhalla", "--json"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output,
            "{\"provider\": {\"id\": 103, \"name\": \"valhalla\"}, \"mode\": 1, \"status\": 4, "
            "\"message\": \"The service valhalla is not set up: url is missing. Set it with "
            "--set service.valhalla.url=...\", \"distance\": 0, \"duration\": 0, \"legs\": []}\n");
  const LoopbackServer server([](const std::string&) { return HttpReply(kOsrmWay); });
  Set({"service.osrm.url=" + server.Url()});
  const ProgramResult offline = Way("pair.itn", {"--provider", "osrm", "--offline"});
  EXPECT_EQ(offline.status, 1);
  EXPECT_EQ(offline.errors, "The service osrm was not asked because of --offline.\n");
  EXPECT_EQ(Way("pair.itn", {"--provider", "photon"}).status, 2);
  EXPECT_EQ(Way("pair.itn", {"--provider", "orsm"}).status, 2);
  EXPECT_THAT(server.Requests(), IsEmpty());
}

TEST_F(WayCommand, TakesStraightLinesForAServiceOfTheSettingsThatIsNotSetUp) {
  // A hundredth of a degree of latitude is 1113 metres.
  const ProgramResult result = Way("trip.itn", {"--json"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.output, StartsWith("{\"provider\": {\"id\": 0, \"name\": \"straight\"}, "
                                        "\"mode\": 0, \"status\": 0, \"message\": null, "
                                        "\"distance\": 2226, \"duration\": 0, \"legs\": ["));
  EXPECT_EQ(result.errors,
            "The service bing is not set up: key is missing. Set it with --set "
            "service.bing.key=...\nStraight lines are taken instead.\n");
  Set({"service.osrm.url=http://127.0.0.1:1", "RouteProvider=10"});
  EXPECT_THAT(Way("trip.itn", {"--offline"}).errors, HasSubstr("Straight lines are taken"));
  EXPECT_EQ(Way("trip.itn", {"--offline", "--quiet"}).errors, "");
}

TEST_F(WayCommand, RefusesFewerThanTwoStops) {
  folder.Put("one.itn", "700000|4800000|Start|4|\r\n");
  const ProgramResult result = Way("one.itn", {"--provider", "straight", "--json"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.output, HasSubstr("\"status\": 8, \"message\": \"A way needs at least two "
                                       "stops.\", \"distance\": 0"));
}

TEST_F(WayCommand, RefusesWhatCannotBeRead) {
  EXPECT_EQ(Way("nowhere.itn", {"--provider", "straight"}).status, 2);
  folder.Put("junk.itn", "junk");
  EXPECT_EQ(Way("junk.itn", {"--provider", "straight"}).status, 1);
  EXPECT_EQ(Way("pair.itn", {"--provider", "straight", "--list", "7"}).status, 1);
}

TEST_F(WayCommand, RefusesWordsThatMeanNothing) {
  const std::vector<std::vector<std::string>> kWrong = {
      {"--mode", "plane"},     {"--type", "quick"},   {"--avoid", "tolls,cows"},
      {"--hilliness", "very"}, {"--windingness", ""}, {"--avoid", ""}};
  for (const std::vector<std::string>& wrong : kWrong)
    EXPECT_EQ(Way("pair.itn", wrong).status, 2) << wrong[0];
  EXPECT_EQ(Way("pair.itn", {"--mode", "plane"}).errors,
            "The value \"plane\" of --mode is not understood. It takes: car, truck, pedestrian, "
            "bicycle, motorcycle, van, bus\n");
}

}  // namespace
