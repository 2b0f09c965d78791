// Directions on the command line: a way that is printed, and ways that are written.

#include <algorithm>
#include <atomic>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/app/service_home.h"
#include "tests/loopback_server.h"

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

// Three stops on a meridian.
const std::string kStops =
    "700000|4800000|Start|4|\r\n700000|4801000||0|\r\n700000|4802000|End|2|\r\n";
const std::string kTwoStops = "700000|4800000|Start|4|\r\n700000|4801000|End|2|\r\n";

// A way of 1234 metres and 62 seconds over 38.5, -120.2; 40.7, -120.95; 43.252, -126.453.
const std::string kOsrmWay =
    R"({"code": "Ok", "routes": [{"duration": 61.5, "distance": 1234.4, "geometry":)"
    R"( "_p~iF~ps|U_ulLnnqC_mqNvxq`@"}], "waypoints": [{"location": [-120.2, 38.5],)"
    R"( "name": "First"}, {"location": [-126.453, 43.252], "name": ""}]})";
const std::string kWayInJson =
    "{\"distance\": 1234, \"duration\": 62, \"path\": [{\"latitude\": 38.5, \"longitude\": -120.2, "
    "\"name\": \"First\"}, {\"latitude\": 43.252, \"longitude\": -126.453, \"name\": \"\"}], "
    "\"shape\": [[38.5, -120.2], [40.7, -120.95], [43.252, -126.453]], \"steps\": []}";

std::string Target(const std::string& request) {
  const size_t start = request.find(' ') + 1;
  return request.substr(start, request.find(' ', start) - start);
}

class WayCommand : public ServiceHome {
 protected:
  WayCommand() {
    folder.Put("trip.itn", kStops);
    folder.Put("pair.itn", kTwoStops);
  }
  std::string Path(const std::string& name) const { return folder.PathTo(name); }
  ProgramResult Way(const std::string& name, std::vector<std::string> options,
                    const std::string& environment = "LC_ALL=C") const {
    options.insert(options.begin(), {"--way", Path(name)});
    return Run(options, environment);
  }
};

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

// The positions in an .itn file, in hundred-thousandths.
std::vector<std::string> PositionsIn(const std::string& itinerary) {
  std::vector<std::string> positions;
  for (size_t line = 0; line < itinerary.size(); line = itinerary.find('\n', line) + 1) {
    const size_t end = itinerary.find('|', itinerary.find('|', line) + 1);
    positions.push_back(itinerary.substr(line, end - line));
  }
  return positions;
}

TEST_F(WayCommand, CalculatesLegsBeforeWriting) {
  const LoopbackServer server([](const std::string&) { return HttpReply(kOsrmWay); });
  Set({"service.osrm.url=" + server.Url()});
  ASSERT_EQ(
      Run({Path("trip.itn"), "gpx:376", "--quiet", "-o", Path("plain.gpx")}, "SOURCE_DATE_EPOCH=1")
          .status,
      0);
  const ProgramResult result =
      Run({Path("trip.itn"), "gpx:376", "--directions=osrm", "-o", Path("asked.gpx")},
          "LC_ALL=C SOURCE_DATE_EPOCH=1");
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.errors, StartsWith(Path("trip.itn") + ": 2 legs of 2, 2.5km, 00:02\n"));
  EXPECT_THAT(result.errors, HasSubstr("\nRequests to osrm: 2\n"));
  EXPECT_EQ(folder.Get("asked.gpx"), folder.Get("plain.gpx"));
  ASSERT_EQ(server.Requests().size(), 2u);
  EXPECT_THAT(Target(server.Requests()[0]), HasSubstr("7.000000,48.000000;7.000000,48.010000?"));
  EXPECT_THAT(Target(server.Requests()[1]), HasSubstr("7.000000,48.010000;7.000000,48.020000?"));
}

TEST_F(WayCommand, WritesTheFileWhenALegFails) {
  const LoopbackServer server([](const std::string& request) {
    const bool fails = request.find("48.020000?") != std::string::npos;
    return HttpReply(fails ? R"({"code": "NoRoute"})" : kOsrmWay);
  });
  Set({"service.osrm.url=" + server.Url()});
  const ProgramResult result =
      Run({Path("trip.itn"), "itn", "--directions", "--provider", "osrm", "-o", Path("b.itn")});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(
      result.errors,
      StartsWith(Path("trip.itn") +
                 ": No way from Stop 2 to End (status 6): The service reported an error.\n" +
                 Path("trip.itn") + ": 1 leg of 2, 1.2km, 00:01\n"));
  EXPECT_EQ(PositionsIn(folder.Get("b.itn")).size(), 3u);
  EXPECT_EQ(server.Requests().size(), 2u);  // none is asked twice
}

TEST_F(WayCommand, WritesTheWayItselfAsATrack) {
  const LoopbackServer server([](const std::string&) { return HttpReply(kOsrmWay); });
  Set({"service.osrm.url=" + server.Url()});
  const auto convert = [&](std::vector<std::string> options) {
    options.insert(options.begin(), {Path("pair.itn"), "itn", "--directions=osrm", "--as-track",
                                     "-o", Path("way.itn")});
    const ProgramResult result = Run(options);
    EXPECT_EQ(result.status, 0) << result.errors;
    return PositionsIn(folder.Get("way.itn"));
  };
  // The format adds a half and cuts.
  const std::vector<std::string> kAll = {"-12019999|3850000", "-12094999|4070000",
                                         "-12645299|4325200"};
  EXPECT_EQ(convert({}), kAll);
  // The second point lies 127 km beside the line of the others; the stops are left as they are.
  EXPECT_EQ(convert({"--simplify", "50000"}), kAll);
  EXPECT_EQ(convert({"--simplify", "200000"}), (std::vector<std::string>{kAll[0], kAll[2]}));
  EXPECT_EQ(server.Requests().size(), 3u);
}

TEST_F(WayCommand, WritesNoTrackWithoutAWay) {
  const LoopbackServer server([](const std::string&) { return HttpReply("{}"); });
  Set({"service.osrm.url=" + server.Url()});
  const ProgramResult result =
      Run({Path("trip.itn"), "gpx:107", "--directions=osrm", "--as-track"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.errors, HasSubstr(": no way was found that could be written.\n"));
  EXPECT_FALSE(folder.Has("trip.gpx"));
  // The stops would be gone.
  const ProgramResult same = Run({Path("trip.itn"), "itn", "--directions=straight", "--as-track"});
  EXPECT_EQ(same.status, 1);
  EXPECT_THAT(same.errors, HasSubstr("the target is the same file as the source"));
  EXPECT_EQ(folder.Get("trip.itn"), kStops);
}

TEST_F(WayCommand, WritesStopsWithTheWayBetweenThem) {
  const LoopbackServer server([](const std::string&) { return HttpReply(kOsrmWay); });
  Set({"service.osrm.url=" + server.Url()});
  for (const char* const key : {"gpx:200", "gpx:376"}) {
    const ProgramResult result =
        Run({Path("pair.itn"), key, "--directions=osrm", "--with-way", "-o", Path("way.gpx")});
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_THAT(folder.Get("way.gpx"),
                HasSubstr("</gpxx:Subclass><gpxx:rpt lat=\"38.500000\" lon=\"-120.200000\"/>"
                          "<gpxx:rpt lat=\"40.700000\" lon=\"-120.950000\"/>"
                          "<gpxx:rpt lat=\"43.252000\" lon=\"-126.453000\"/>"
                          "</gpxx:RoutePointExtension>"));
  }
}

TEST_F(WayCommand, RefusesOptionsThatDoNotGoTogether) {
  const std::string source = Path("pair.itn");
  EXPECT_EQ(Run({source, "gpx:107", "--as-track"}).errors,
            "--as-track goes with --directions only.\n");
  EXPECT_EQ(Run({source, "gpx:376", "--with-way"}).status, 2);
  EXPECT_EQ(Run({source, "gpx:376", "--directions=straight", "--with-way", "--as-track"}).status,
            2);
  EXPECT_EQ(Run({source, "gpx:107", "--directions=straight", "--with-way"}).errors,
            "--with-way goes with gpx:200 and gpx:376 only.\n");
  EXPECT_EQ(Run({source, "gpx:107", "--directions=nobody"}).status, 2);
  EXPECT_EQ(Run({source, "gpx:107", "--directions=valhalla"}).status, 1);
  EXPECT_FALSE(folder.Has("pair.gpx"));
}

TEST_F(WayCommand, CalculatesForEveryFileOfAFolder) {
  const LoopbackServer server([](const std::string&) { return HttpReply(kOsrmWay); });
  Set({"service.osrm.url=" + server.Url()});
  const ProgramResult result =
      Run({folder.Path().string(), "ov2", "--directions=osrm", "--as-track", "-o", Path("out")});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_TRUE(folder.Has("out/trip.ov2"));
  EXPECT_TRUE(folder.Has("out/pair.ov2"));
  EXPECT_EQ(server.Requests().size(), 3u);
}

// Four stops on one meridian, and the same where B lies behind D.
constexpr const char* kFourInLine =
    "700000|4800000|A|4|\r\n700000|4801000|B|0|\r\n700000|4802000|C|0|\r\n"
    "700000|4803000|D|2|\r\n";
constexpr const char* kFourWithADetour =
    "700000|4800000|A|4|\r\n700000|4803000|B|0|\r\n700000|4801000|C|0|\r\n"
    "700000|4802000|D|2|\r\n";

// The stops of a file in their order.
std::string OrderIn(std::string text) {
  std::erase_if(text, [](char c) { return c < 'A' || c > 'D'; });
  return text;
}

// Stops at 0, 1, 2 and 3 hundredths of a degree. By road, the second is near the last only.
TEST_F(WayCommand, OrdersTheStopsByRoad) {
  folder.Put("four.itn", kFourInLine);
  const LoopbackServer server([](const std::string& request) {
    const bool isFar = request.find("48.000000") != std::string::npos &&
                       request.find("48.010000") != std::string::npos;
    return HttpReply(std::string(R"({"code": "Ok", "routes": [{"duration": 9, "distance": )") +
                     (isFar ? "9000" : "1000") + R"(, "geometry": ""}], "waypoints": []})");
  });
  Set({"service.osrm.url=" + server.Url()});
  const auto names = [&](const std::vector<std::string>& options) {
    std::vector<std::string> arguments = {Path("four.itn"), "csv", "-o", Path("b.csv")};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const ProgramResult result = Run(arguments);
    EXPECT_EQ(result.status, 0) << result.errors;
    return OrderIn(folder.Get("b.csv"));
  };
  EXPECT_EQ(names({"--optimize"}), "ABCD");
  EXPECT_EQ(names({"--optimize", "--directions=osrm"}), "ACBD");
}

TEST_F(WayCommand, KeepsTheOrderWhenTheProviderFails) {
  folder.Put("four.itn", kFourWithADetour);
  const LoopbackServer server([](const std::string&) { return HttpReply("{}", "503 Down"); });
  Set({"service.osrm.url=" + server.Url()});
  const ProgramResult result =
      Run({Path("four.itn"), "csv", "--optimize", "--directions=osrm", "-o", Path("b.csv")});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.errors, HasSubstr("osrm could not be asked on (status 4); the best order so "
                                       "far is kept.\n"));
  EXPECT_EQ(OrderIn(folder.Get("b.csv")), "ABCD");
  // Three questions of the order, then one for each leg.
  EXPECT_EQ(server.Requests().size(), 6u);
}

TEST_F(WayCommand, KeepsTheBestOrderWhenItIsInterrupted) {
  folder.Put("four.itn", kFourWithADetour);
  std::atomic<int> asked = 0;
  const LoopbackServer server(LoopbackServer::Talk([&](LoopbackConnection& connection) {
    if (connection.ReadRequest().empty()) return;
    if (++asked != 2) {
      connection.Send(HttpReply(kOsrmWay));
      return;
    }
    folder.Put("asked", "");
    connection.WaitForEnd();
  }));
  Set({"service.osrm.url=" + server.Url()});
  // While the second answer is waited for, the user has enough.
  const std::string interrupted =
      "interrupted() { \"$@\" & program=$!; until test -e " + Quoted(Path("asked")) +
      "; do sleep 0.05; done; kill -TERM $program; wait $program; }; interrupted env LC_ALL=C";
  const ProgramResult result =
      Run({Path("four.itn"), "csv", "--optimize", "--directions=osrm", "-o", Path("b.csv")},
          interrupted);
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_THAT(result.errors, HasSubstr("interrupted; the best order so far is kept.\n"));
  // Two questions, and the legs of the order as it was.
  EXPECT_EQ(asked, 5);
  EXPECT_TRUE(folder.Has("b.csv"));
}

TEST_F(WayCommand, AsksBeforeItAsksTooOften) {
  std::string stops;
  for (int i = 0; i < 33; ++i)
    stops += "700000|48" + std::to_string(10000 + i * 100) + "|Stop|0|\r\n";
  folder.Put("long.itn", stops);
  const LoopbackServer server([](const std::string&) { return HttpReply(kOsrmWay); });
  Set({"service.osrm.url=" + server.Url()});
  const ProgramResult result =
      Run({Path("long.itn"), "ov2", "--optimize", "--directions=osrm", "-o", Path("b.ov2")});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.errors, StartsWith(Path("long.itn") +
                                        ": the best order by road may take 528 requests to osrm. "
                                        "Give --force to send them.\n"));
  EXPECT_FALSE(folder.Has("b.ov2"));
  EXPECT_THAT(server.Requests(), IsEmpty());
  EXPECT_EQ(
      Run({Path("long.itn"), "ov2", "--optimize", "--directions=straight", "-o", Path("b.ov2")})
          .status,
      0);
}

// Each way is 1000 m long, but A to C has no answer and B to D takes 1500 m: A, C, B, D costs
// 0 + 1000 + 1500 instead of 3000 m.
TEST_F(WayCommand, TellsOfPairsThatItCouldNotAskFor) {
  folder.Put("four.itn", kFourInLine);
  const LoopbackServer server([](const std::string& request) {
    const auto isBetween = [&request](const char* from, const char* to) {
      return request.find(from) != std::string::npos && request.find(to) != std::string::npos;
    };
    if (isBetween("48.000000", "48.020000")) return HttpReply(R"({"code": "NoRoute"})");
    return HttpReply(std::string(R"({"code": "Ok", "routes": [{"duration": 9, "distance": )") +
                     (isBetween("48.010000", "48.030000") ? "1500" : "1000") +
                     R"(, "geometry": ""}], "waypoints": []})");
  });
  Set({"service.osrm.url=" + server.Url()});
  const ProgramResult result =
      Run({Path("four.itn"), "csv", "--optimize", "--directions=osrm", "-o", Path("b.csv")});
  // The leg from A to C fails too.
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.errors, StartsWith(Path("four.itn") + ": No way from A to C (status 6): "));
  EXPECT_EQ(OrderIn(folder.Get("b.csv")), "ACBD");
  // Five pairs, three legs.
  EXPECT_EQ(server.Requests().size(), 8u);
}

// A to C is the only pair without an answer, and too dear to be part of the way even so.
TEST_F(WayCommand, FailsWhenAPairOfTheOrderHasNoAnswer) {
  folder.Put("four.itn", kFourInLine);
  const LoopbackServer server([](const std::string& request) {
    const auto isBetween = [&request](const char* from, const char* to) {
      return request.find(from) != std::string::npos && request.find(to) != std::string::npos;
    };
    if (isBetween("48.000000", "48.020000")) return HttpReply("{}");
    return HttpReply(std::string(R"({"code": "Ok", "routes": [{"duration": 9, "distance": )") +
                     (isBetween("48.010000", "48.030000") ? "9000" : "1000") +
                     R"(, "geometry": ""}], "waypoints": []})");
  });
  Set({"service.osrm.url=" + server.Url()});
  const ProgramResult result = Run(
      {Path("four.itn"), "csv", "--optimize", "--directions=osrm", "--quiet", "-o", Path("b.csv")});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.errors, StartsWith(Path("four.itn") + ": No way from A to C (status 4): "));
  EXPECT_EQ(OrderIn(folder.Get("b.csv")), "ABCD");
}

}  // namespace
