// Directions on the command line: ways that are calculated before a file is written.

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/app/way_home.h"
#include "tests/loopback_server.h"

namespace {

using testing::HasSubstr;
using testing::StartsWith;

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

}  // namespace
