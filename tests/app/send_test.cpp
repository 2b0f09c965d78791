// Handing itineraries to the companion programs of devices, from the command line.

#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include "tests/planner/desktop_home.h"
#include "tests/planner/port_lock.h"
#include "tests/run_program.h"

namespace {

using testing::HasSubstr;

class Send : public testing::Test {
 protected:
  Send() {
    m_desktop.Folder().Put("trip.itn",
                           "725000|4850000|Start|4|\r\n800000|4900000|Halt|2|\r\n"
                           "810000|4910000|End|2|\r\n");
  }

  void InstallAll() const {
    m_desktop.Install("home", "home %u", "x-scheme-handler/tomtomhome;");
    m_desktop.Install("avic", "avic %u", "x-scheme-handler/avicfeeds;");
    m_desktop.Install("mio", "mio %u", "x-scheme-handler/miomoredesktop;");
    m_desktop.Install("fresh", "fresh %f",
                      "application/x-navigon-freshroute+xml;application/x-navigon-freshcontact;");
  }
  std::string Trip() const { return m_desktop.Folder().PathTo("trip.itn"); }
  static ProgramResult Run(std::vector<std::string> arguments) { return RunConverter(arguments); }

  const PortLock m_port;
  const DesktopHome m_desktop;
};

TEST_F(Send, WithoutTheProgramItIsAnErrorThatSaysWhatToDo) {
  for (const char* const target :
       {"tomtom-home", "navigon-fresh", "navgate", "mio-more", "garmin"}) {
    const ProgramResult result = Run({"--send", target, Trip()});
    EXPECT_EQ(result.status, 1) << target;
    EXPECT_EQ(result.errors, std::string(target) +
                                 " is not installed: no program on this computer takes it. Install "
                                 "it, or save the itinerary as a file.\n");
  }
  EXPECT_FALSE(m_desktop.HasOpened());
}

TEST_F(Send, WrongUsageIsTold) {
  InstallAll();
  const ProgramResult unknown = Run({"--send", "zune", Trip()});
  EXPECT_EQ(unknown.status, 2);
  EXPECT_THAT(unknown.errors, HasSubstr("\"zune\""));
  EXPECT_THAT(unknown.errors, HasSubstr("tomtom-home, navigon-fresh, navgate, mio-more, garmin"));
  EXPECT_EQ(Run({"--send", "navgate"}).status, 2);
  EXPECT_EQ(Run({"--send", "navgate", Trip() + ".not"}).status, 2);
  EXPECT_EQ(Run({"--send", "navgate", "--point", "0", Trip()}).status, 2);
  const ProgramResult beyond = Run({"--send", "navgate", "--point", "4", Trip()});
  EXPECT_EQ(beyond.status, 1);
  EXPECT_EQ(beyond.errors, "There is no stop 4: the itinerary has 3 stops.\n");
  EXPECT_FALSE(m_desktop.HasOpened());
}

TEST_F(Send, OneStopGoesAsALink) {
  InstallAll();
  const ProgramResult result = Run({"--send", "navgate", "--point", "2", Trip()});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(result.errors, "Stops handed over: 1\n");
  EXPECT_EQ(m_desktop.Opened(), "avicfeeds:lat=49.000000&long=8.000000&name=Halt&notes=");
}

TEST_F(Send, OneStopGoesToTomTomHomeWithoutTheServer) {
  InstallAll();
  EXPECT_EQ(Run({"--quiet", "--send", "tomtom-home", "--point", "1", Trip()}).status, 0);
  EXPECT_EQ(m_desktop.Opened(), "tomtomhome:geo:lat=48.500000&long=7.250000&name=Start");
}

TEST_F(Send, AnItineraryGoesStopByStopWhereTheProgramTakesNone) {
  InstallAll();
  const std::string opened = m_desktop.Folder().PathTo("opened");
  m_desktop.Folder().Put("bin/xdg-open", "#!/bin/bash\necho \"$1\" >> '" + opened + "'\n");
  const ProgramResult result = Run({"--send", "mio-more", "--reverse", Trip()});
  EXPECT_EQ(result.status, 0) << result.errors;
  const auto lines = [&] {
    const std::string text =
        m_desktop.Folder().Has("opened") ? m_desktop.Folder().Get("opened") : "";
    return std::count(text.begin(), text.end(), '\n');
  };
  for (int i = 0; i < 1000 && lines() < 3; ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  const std::string text = m_desktop.Folder().Get("opened");
  for (const char* const stop : {"name=End&", "name=Halt&", "name=Start&"})
    EXPECT_THAT(text, HasSubstr("miomoredesktop:poi?" + std::string(stop)));
}

TEST_F(Send, AnItineraryForNavigonIsAFile) {
  InstallAll();
  const ProgramResult result = Run({"--send", "navigon-fresh", Trip()});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(m_desktop.Opened(), m_desktop.Folder().PathTo("tmp/corvane.freshroute"));
  EXPECT_THAT(m_desktop.Folder().Get("tmp/corvane.freshroute"),
              HasSubstr("<Latitude>48.500000</Latitude><Longitude>7.250000</Longitude>"));
}

/// TomTom HOME as far as it matters: it fetches the description, and what that names.
constexpr char kHome[] = R"(#!/bin/bash
fetch() {
  exec 3<>/dev/tcp/127.0.0.1/8099
  printf 'GET %s HTTP/1.1\r\nHost: 127.0.0.1:8099\r\n\r\n' "$1" >&3
  /bin/cat <&3
}
address=${1#tomtomhome:contentitem:http://127.0.0.1:8099}
fetch "$address" > "$TMPDIR/description"
fetch "${address%.xml}.zip" > "$TMPDIR/archive"
)";

TEST_F(Send, AnItineraryForTomTomHomeWaitsUntilItIsFetched) {
  InstallAll();
  m_desktop.Folder().Put("bin/xdg-open", kHome);
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{"--send", "tomtom-home", Trip()}, {Trip(), "tth"}}) {
    const ProgramResult result = Run(arguments);
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(result.errors,
              "Waiting for TomTom HOME to fetch the itinerary...\nStops handed over: 3\n");
    EXPECT_THAT(m_desktop.Folder().Get("tmp/description"),
                HasSubstr("<title mimetype=\"text/plain\">trip</title>"));
    EXPECT_THAT(m_desktop.Folder().Get("tmp/archive"), HasSubstr("ITN/trip.itn"));
    std::filesystem::remove(m_desktop.Folder().PathTo("tmp/archive"));
  }
  EXPECT_FALSE(m_desktop.Folder().Has("trip.tth"));
}

TEST_F(Send, ATakenPortIsTold) {
  InstallAll();
  const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const int yes = 1;
  setsockopt(listener, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(8099);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  ASSERT_EQ(bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  ASSERT_EQ(listen(listener, 1), 0);
  const ProgramResult result = Run({"--send", "tomtom-home", Trip()});
  close(listener);
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors,
            "The local server cannot start because another program uses port 8099. Close that "
            "program and try again.\n");
  EXPECT_FALSE(m_desktop.HasOpened());
}

TEST_F(Send, TheRowOfTomTomHomeIsListedWhereTheProgramIs) {
  EXPECT_THAT(Run({"--formats"}).output, testing::Not(HasSubstr("TomTom Home")));
  InstallAll();
  EXPECT_THAT(Run({"--formats"}).output, HasSubstr("TomTom Home"));
}

// The option of Navigon Fresh's row hands over instead of writing a file.
TEST_F(Send, TheOptionOfNavigonsRowHandsOver) {
  const ProgramResult missing = Run({"--split", "1", Trip(), "freshroute"});
  EXPECT_EQ(missing.status, 1);
  EXPECT_THAT(missing.errors, HasSubstr("navigon-fresh is not installed"));
  InstallAll();
  for (const char* const key : {"freshroute", "FreshRoute:245"}) {
    const ProgramResult result = Run({"--split", "1", Trip(), key});
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(result.errors, "Stops handed over: 3\n");
    EXPECT_EQ(m_desktop.Opened(), m_desktop.Folder().PathTo("tmp/corvane.freshroute"));
    EXPECT_THAT(m_desktop.Folder().Get("tmp/corvane.freshroute"), HasSubstr("<Name>Halt</Name>"));
  }
  EXPECT_FALSE(m_desktop.Folder().Has("trip.freshroute"));
  EXPECT_EQ(Run({"--quiet", Trip(), "freshroute"}).status, 0);
  EXPECT_TRUE(m_desktop.Folder().Has("trip.freshroute"));
  EXPECT_FALSE(m_desktop.HasOpened());
}

TEST_F(Send, OneStopForNavigonIsAContact) {
  InstallAll();
  EXPECT_EQ(Run({"--quiet", "--send", "navigon-fresh", "--point", "2", Trip()}).status, 0);
  EXPECT_EQ(m_desktop.Opened(), m_desktop.Folder().PathTo("tmp/corvane.freshcontact"));
  const std::string bytes = m_desktop.Folder().Get("tmp/corvane.freshcontact");
  EXPECT_EQ(bytes.substr(0, 8), std::string("C\0o\0r\0v\0", 8));
  EXPECT_EQ(bytes.size(),
            2 * std::string("Corvane Map 1.21|Halt||-|-|-|-|8.000000|49.000000").size());
}

TEST_F(Send, ACheckHandsNothingOver) {
  InstallAll();
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{"--check", "--send", "navgate", Trip()},
        {"--check", Trip(), "tth"},
        {"--check", "--split", "1", Trip(), "freshroute"}}) {
    const ProgramResult result = Run(arguments);
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_THAT(result.errors, HasSubstr("cannot be checked"));
  }
  EXPECT_FALSE(m_desktop.HasOpened());
  EXPECT_FALSE(m_desktop.Folder().Has("tmp/corvane.freshroute"));
}

}  // namespace
