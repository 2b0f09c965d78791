// Links on the command line, in and out.

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/loopback_server.h"
#include "tests/run_program.h"
#include "tests/temporary_folder.h"

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class LinksOnTheConsole : public testing::Test {
 protected:
  LinksOnTheConsole() {
    m_folder.Put("trip.itn", "720000|4810000|Colmar|4|\r\n620000|4910000|Metz|2|\r\n");
  }
  // Runs in a folder of its own, without a desktop and with settings of its own.
  ProgramResult Run(const std::vector<std::string>& arguments,
                    const std::string& environment = "") const {
    return RunConverter(arguments, "cd " + Quoted(m_folder.Path().string()) +
                                       "; unset DISPLAY WAYLAND_DISPLAY; " + environment +
                                       " LC_ALL=C XDG_CONFIG_HOME=" + m_folder.PathTo("home"));
  }
  TemporaryFolder m_folder;
};

constexpr const char* kGoogleLink =
    "https://www.google.com/maps/dir/48.100000,7.200000/49.100000,6.200000/"
    "data=!4m4!4m3!1m0!1m0!3e0";

TEST_F(LinksOnTheConsole, ALinkIsConverted) {
  const ProgramResult result = Run({kGoogleLink, "itn", "-o", "out.itn"});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(m_folder.Get("out.itn"), "720000|4810000||4|\r\n620000|4910000||2|\r\n");
}

TEST_F(LinksOnTheConsole, WithoutATargetItIsNamedItinerary) {
  EXPECT_EQ(
      Run({"https://www.here.com/directions/drive/Colmar:48.1,7.2/Metz:49.1,6.2", "itn"}).status,
      0);
  EXPECT_EQ(m_folder.Get("Itinerary.itn"),
            "720000|4810000|Colmar|4|\r\n620000|4910000|Metz|2|\r\n");
}

TEST_F(LinksOnTheConsole, AStoredLinkIsConverted) {
  m_folder.Put("trip.url", "[InternetShortcut]\r\nURL=" + std::string(kGoogleLink) + "\r\n");
  EXPECT_EQ(Run({"trip.url", "csv:116", "--quiet"}).status, 0);
  EXPECT_THAT(m_folder.Get("trip.csv"), AllOf(HasSubstr("48.1"), HasSubstr("6.2")));
}

TEST_F(LinksOnTheConsole, ALinkIsInspected) {
  const ProgramResult result = Run({"--inspect", "--json", kGoogleLink});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.output,
              StartsWith("{\"file\": \"" + std::string(kGoogleLink) +
                         "\", \"status\": 0,\n \"format\": {\"row\": 68, \"extension\": \"url\", "
                         "\"textId\": 159, \"label\": \"Google Maps Link (*.url)\"},\n"));
  EXPECT_THAT(result.output, HasSubstr("\"latitude\": 49.1, \"longitude\": 6.2"));
}

TEST_F(LinksOnTheConsole, TownsOfALinkAreFoundOnThisMachine) {
  const ProgramResult result =
      Run({"https://www.google.com/maps/dir/Colmar/Obernai,+France", "itn", "--offline"});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_THAT(result.errors, HasSubstr("2 stops without a position looked up, 0 of them not "
                                       "found and dropped\n"));
  EXPECT_THAT(result.errors, Not(HasSubstr("Requests to")));
  EXPECT_THAT(m_folder.Get("Itinerary.itn"), HasSubstr("|Colmar|"));
  EXPECT_THAT(Run({"--inspect", "https://www.google.com/maps/dir/Colmar/Metz"}).output,
              AllOf(HasSubstr("Colmar"), HasSubstr("Metz")));
}

TEST_F(LinksOnTheConsole, TheFinderInUseIsAsked) {
  const LoopbackServer server([](const std::string&) {
    return HttpReply(R"({"results":[{"formatted_address":"C","geometry":{"location":)"
                     R"({"lat":48.08,"lng":7.36}}}],"status":"OK"})");
  });
  ASSERT_EQ(Run({"--set", "service.google.url=" + server.Url(), "--set",
                 "service.google.key=SECRET", "--set", "FindProvider=2"})
                .status,
            0);
  const std::string link = "https://www.google.com/maps/dir/rue+des+Clefs/rue+des+Clefs/48.2,7.3";
  const ProgramResult result = Run({link, "itn", "-o", "out.itn"});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(m_folder.Get("out.itn"),
            "736000|4808000|rue des Clefs|4|\r\n736000|4808000|rue des Clefs|0|\r\n"
            "730000|4820000||2|\r\n");
  EXPECT_EQ(server.Requests().size(), 1u);
  EXPECT_THAT(result.errors, HasSubstr("Requests to google: 1\n"));
  EXPECT_THAT(result.errors, Not(HasSubstr("SECRET")));
  // Not when a file is only looked at, nor offline; what is left out is told with the reason.
  EXPECT_EQ(Run({"--inspect", link}).status, 0);
  const ProgramResult offline = Run({link, "itn", "-o", "out.itn", "--offline"});
  EXPECT_THAT(offline.errors,
              AllOf(HasSubstr("2 addresses of the link were not looked up and are left out.\n"),
                    HasSubstr("The service google was not asked because of --offline.\n")));
  EXPECT_EQ(server.Requests().size(), 1u);
  const ProgramResult here = Run({link, "itn", "-o", "out.itn", "--provider", "offline-places"});
  // Two stops of three are lost.
  EXPECT_EQ(offline.status, 3);
  EXPECT_EQ(here.status, 3);
  EXPECT_THAT(here.errors, HasSubstr(": passed over: 2 points without a position\n"));
  EXPECT_EQ(server.Requests().size(), 1u);
}

TEST_F(LinksOnTheConsole, ASavedMapIsFetched) {
  const LoopbackServer server([](const std::string&) {
    return HttpReply(
        "loadVPage({ms_map:{kmlOverlays:{markers:[{latlng:{lat:48.1,lng:7.2},"
        "name:\"Colmar\"}]}}})");
  });
  ASSERT_EQ(Run({"--set", "service.google-site.url=" + server.Url()}).status, 0);
  const std::string link = "http://maps.google.com/maps/ms?msid=1";
  const ProgramResult result = Run({link, "itn", "-o", "out.itn"});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(m_folder.Get("out.itn"), "720000|4810000|Colmar|2|\r\n");
  EXPECT_THAT(result.errors, HasSubstr("Requests to google-site: 1\n"));
  const ProgramResult offline = Run({link, "itn", "-o", "off.itn", "--offline"});
  EXPECT_EQ(offline.status, 1);
  EXPECT_THAT(offline.errors, HasSubstr("the saved map behind the link could not be fetched"));
  EXPECT_EQ(Run({"--inspect", link}).status, 1);
  EXPECT_EQ(server.Requests().size(), 1u);
}

TEST_F(LinksOnTheConsole, LinksThatCannotBeReadAreErrors) {
  const ProgramResult other = Run({"https://example.org/x", "itn"});
  EXPECT_EQ(other.status, 1);
  EXPECT_EQ(other.errors, "https://example.org/x: The file cannot be read.\n");
  const ProgramResult shortLink = Run({"https://maps.app.goo.gl/AbC", "itn"});
  EXPECT_EQ(shortLink.status, 1);
  EXPECT_THAT(shortLink.errors, HasSubstr("Open it in a browser"));
  EXPECT_THAT(Run({"--inspect", "https://maps.app.goo.gl/AbC"}).errors,
              HasSubstr("Open it in a browser"));
  m_folder.Put("trip.url", "[DEFAULT]\r\n");
  EXPECT_EQ(Run({"trip.url", "itn"}).errors, "trip.url: The file cannot be read.\n");
}

TEST_F(LinksOnTheConsole, LinksArePrinted) {
  const ProgramResult google = Run({"trip.itn", "ggm"});
  EXPECT_EQ(google.status, 0) << google.errors;
  EXPECT_EQ(google.output, std::string(kGoogleLink) + "\n");
  EXPECT_EQ(google.errors, "");
  EXPECT_EQ(Run({"trip.itn", "HERE"}).output,
            "https://www.here.com/directions/drive/Colmar:48.100000,7.200000/"
            "Metz:49.100000,6.200000\n");
  EXPECT_THAT(Run({"trip.itn", "vmm"}).output,
              StartsWith("https://www.viamichelin.com/web/Routes?departure=48.100000,7.200000"));
  EXPECT_THAT(Run({"trip.itn", "ttd"}).output,
              StartsWith("https://mydrive.tomtom.com/en_gb/#mode=routes+viewport="));
  EXPECT_FALSE(m_folder.Has("trip.ggm"));
}

TEST_F(LinksOnTheConsole, SettingsChooseTheTravelMode) {
  ASSERT_EQ(Run({"--set", "VehicleType=3", "--set", "AVOID_TOLLS=1"}).status, 0);
  EXPECT_THAT(Run({"trip.itn", "ggm"}).output, HasSubstr("!2m1!2b1!3e2\n"));
  EXPECT_THAT(Run({"trip.itn", "here"}).output, HasSubstr("/directions/walk/"));
}

TEST_F(LinksOnTheConsole, OptionsChooseTheTravelMode) {
  EXPECT_THAT(Run({"trip.itn", "ggm", "--mode", "bicycle", "--avoid", "motorways"}).output,
              HasSubstr("!2m1!1b1!3e1\n"));
  EXPECT_THAT(Run({"trip.itn", "ttd", "--mode", "truck", "--type", "thrilling", "--hilliness",
                   "high", "--windingness", "low"})
                  .output,
              HasSubstr(",%22travelMode%22:%22TRUCK%22,%22routeType%22:%22THRILLING%22,"
                        "%22hilliness%22:%22HIGH%22,%22windingness%22:%22LOW%22%7D\n"));
}

TEST_F(LinksOnTheConsole, AWayIsAskedForALink) {
  const LoopbackServer server([](const std::string&) {
    return HttpReply(R"({"code":"Ok","routes":[{"distance":1234,"duration":60,)"
                     R"("geometry":"_p~iF~ps|U_ulLnnqC"}],"waypoints":[]})");
  });
  ASSERT_EQ(Run({"--set", "service.osrm.url=" + server.Url()}).status, 0);
  // The provider is asked for directions, and the town is found on this machine.
  const ProgramResult result = Run({"--way", "https://www.google.com/maps/dir/Colmar/48.46,7.48",
                                    "--provider", "osrm", "--json"});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_THAT(result.output, HasSubstr("\"distance\": 1234"));
  EXPECT_EQ(server.Requests().size(), 1u);
}

TEST_F(LinksOnTheConsole, SplitAsksForMoreLinks) {
  m_folder.Put("three.itn",
               "720000|4810000|A|4|\r\n730000|4820000|B|0|\r\n740000|4830000|C|2|\r\n");
  EXPECT_EQ(Run({"three.itn", "here", "--split", "2"}).output,
            "https://www.here.com/directions/drive/A:48.100000,7.200000/B:48.200000,7.300000\n"
            "https://www.here.com/directions/drive/B:48.200000,7.300000/C:48.300000,7.400000\n");
  EXPECT_EQ(Run({"three.itn", "here", "--split", "1"}).status, 1);
}

constexpr const char* kHereLink =
    "https://www.here.com/directions/drive/Colmar:48.100000,7.200000/Metz:49.100000,6.200000";

TEST_F(LinksOnTheConsole, OtherProgramsGetAnObject) {
  const std::string object = "{\"source\": \"trip.itn\", \"target\": \"";
  const std::string rest = "\", \"status\": 0, \"links\": [\"" + std::string(kHereLink) + "\"]}\n";
  EXPECT_EQ(Run({"trip.itn", "here", "--json"}).output, object + rest);
  EXPECT_EQ(Run({"trip.itn", "here", "--json", "-o", "l.txt"}).output, object + "l.txt" + rest);
  EXPECT_EQ(m_folder.Get("l.txt"), kHereLink + std::string("\n"));
  EXPECT_EQ(Run({"trip.itn", "here", "-o", "-"}).output, kHereLink + std::string("\n"));
}

TEST_F(LinksOnTheConsole, LinksReplaceNoSource) {
  const std::string before = m_folder.Get("trip.itn");
  const ProgramResult result = Run({"trip.itn", "here", "-o", "trip.itn"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors,
            "trip.itn: the target is the source itself, and something of it would be lost; nothing "
            "was written. Give another target with --output, or --force.\n");
  EXPECT_EQ(m_folder.Get("trip.itn"), before);
  EXPECT_EQ(Run({"trip.itn", "here", "-o", "trip.itn", "--force"}).status, 0);
  EXPECT_EQ(m_folder.Get("trip.itn"), kHereLink + std::string("\n"));
}

TEST_F(LinksOnTheConsole, LinksGoIntoAFile) {
  const ProgramResult result = Run({"trip.itn", "ggm", "-o", "link.txt"});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(m_folder.Get("link.txt"), std::string(kGoogleLink) + "\n");
  EXPECT_EQ(Run({"trip.itn", "ggm", "-o", "missing/link.txt"}).status, 1);
}

TEST_F(LinksOnTheConsole, AFolderPrintsTheLinksOfAllFiles) {
  m_folder.Put("home.txt", "no itinerary");
  std::filesystem::create_directory(m_folder.Path() / "trips");
  m_folder.Put("trips/a.itn", "720000|4810000|A|4|\r\n");
  m_folder.Put("trips/b.itn", "620000|4910000|B|4|\r\n");
  const ProgramResult result = Run({"trips", "here"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output,
            "https://www.here.com/directions/drive/A:48.100000,7.200000\n"
            "https://www.here.com/directions/drive/B:49.100000,6.200000\n");
}

TEST_F(LinksOnTheConsole, LinksAreOpenedOnADesktop) {
  std::filesystem::create_directory(m_folder.Path() / "bin");
  m_folder.Put("bin/xdg-open", "#!/bin/sh\nprintf '%s\\n' \"$@\" >>opened\n");
  std::filesystem::permissions(m_folder.PathTo("bin/xdg-open"), std::filesystem::perms::owner_all);
  const std::string desktop = "DISPLAY=:99 PATH=" + m_folder.PathTo("bin") + ":$PATH";
  const ProgramResult result = Run({"trip.itn", "ggm"}, desktop);
  EXPECT_EQ(result.output, std::string(kGoogleLink) + "\n");
  // The browser is not waited for.
  for (int i = 0; i < 500 && m_folder.Get("opened").empty(); ++i) usleep(10'000);
  EXPECT_EQ(m_folder.Get("opened"), std::string(kGoogleLink) + "\n");
  // Not when a file is asked for, and not to see whether it could be done.
  EXPECT_EQ(Run({"trip.itn", "here", "-o", "link.txt"}, desktop).status, 0);
  EXPECT_EQ(Run({"trip.itn", "here", "--check"}, desktop).output, "");
  usleep(200'000);
  EXPECT_EQ(m_folder.Get("opened"), std::string(kGoogleLink) + "\n");
}

TEST_F(LinksOnTheConsole, ADesktopWithoutAnOpenerIsTold) {
  const ProgramResult result = Run({"trip.itn", "ggm"}, "DISPLAY=:99 PATH=/nonexistent");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, std::string(kGoogleLink) + "\n");
  EXPECT_THAT(result.errors, HasSubstr("The links could not be opened"));
}

}  // namespace
