// Handing points and itineraries to the companion programs of devices.

#include "planner/hand_off.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "base/status.h"
#include "services/service_access.h"
#include "tests/list_builder.h"
#include "tests/planner/desktop_home.h"

namespace {

class HandOff : public testing::Test {
 protected:
  const CGpsPoint m_point = MakePoint(48.5, -7.25, "Caf\u00E9 & more", "a/b");
  const DesktopHome m_desktop;
};

TEST_F(HandOff, LinksAreThoseOfThePrograms) {
  EXPECT_EQ(PointLink(0, m_point),
            "tomtomhome:geo:lat=48.500000&long=-7.250000&name=Caf%C3%A9%20%26%20more");
  EXPECT_EQ(PointLink(2, m_point),
            "avicfeeds:lat=48.500000&long=-7.250000&name=Caf%C3%A9%20%26%20more&notes=a%2Fb");
  EXPECT_EQ(PointLink(3, m_point),
            "miomoredesktop:poi?name=Caf%C3%A9%20%26%20more&province=&city=&street=&streetnum=&"
            "postalcode=&country=&phone=&notes=a%2Fb&lat=48.500000&lon=-7.250000");
  EXPECT_EQ(PointLink(1, m_point), "");
  EXPECT_EQ(PointLink(5, m_point), "");
}

TEST_F(HandOff, AnEmptyCommentLeavesItsKey) {
  const CGpsPoint point = MakePoint(1, 2, "A");
  EXPECT_EQ(PointLink(2, point), "avicfeeds:lat=1.000000&long=2.000000&name=A&notes=");
}

TEST_F(HandOff, GarminsLinkGoesToItsSite) {
  ServiceValuesByName values;
  values["garmin-site"].url = "https://garmin.example";
  values["google"].language = "fr";
  SetServiceValues(values);
  EXPECT_EQ(PointLink(4, m_point),
            "https://garmin.example/locate/savePOI.htm?lat=48.500000&long=-7.250000&name="
            "Caf%C3%A9%20%26%20more&hl=fr");
  values.erase("google");
  SetServiceValues(values);
  EXPECT_EQ(PointLink(4, MakePoint(1, 2, "A")),
            "https://garmin.example/locate/savePOI.htm?lat=1.000000&long=2.000000&name=A");
  SetServiceValues({});
}

TEST_F(HandOff, FreshContactIsOneLineOfUtf16) {
  std::string expected;
  for (const char letter : std::string("Corvane Map 1.21|A|note|-|-|-|-|-7.250000|48.500000")) {
    expected += letter;
    expected += '\0';
  }
  EXPECT_EQ(FreshContact(MakePoint(48.5, -7.25, "A", "note")), expected);
  EXPECT_EQ(FreshContact(MakePoint(0, 0, "\u00E9")).substr(34, 2), std::string("\xE9\0", 2));
}

TEST_F(HandOff, NothingIsInstalledOnABareDesktop) {
  for (int32_t target = -2; target < 8; ++target) EXPECT_FALSE(IsTargetInstalled(target)) << target;
}

TEST_F(HandOff, ProgramsAreFoundByWhatTheyDeclare) {
  m_desktop.Install("home", "home %u", "x-scheme-handler/tomtomhome;text/plain;");
  EXPECT_TRUE(IsTargetInstalled(0));
  EXPECT_FALSE(IsTargetInstalled(2));
  m_desktop.Install("avic", "", "x-scheme-handler/avicfeeds;");
  EXPECT_FALSE(IsTargetInstalled(2));  // without a command
  m_desktop.Install("avic", "avic %u", "x-scheme-handler/avicfeedsx;");
  EXPECT_FALSE(IsTargetInstalled(2));
  m_desktop.Install("avic", "avic %u", "x-scheme-handler/avicfeeds");
  EXPECT_TRUE(IsTargetInstalled(2));
  m_desktop.Install("route", "fresh %f", "application/x-navigon-freshroute+xml;");
  EXPECT_FALSE(IsTargetInstalled(1));
  m_desktop.Install("contact", "fresh %f", "application/x-navigon-freshcontact;");
  EXPECT_TRUE(IsTargetInstalled(1));
  m_desktop.Install("garmin", "garmin %u", "x-scheme-handler/garmin;");
  EXPECT_FALSE(IsTargetInstalled(4));
}

TEST_F(HandOff, ProgramsAreFoundByTheUsersChoice) {
  m_desktop.Install("mio", "mio-more %u", "");
  EXPECT_FALSE(IsTargetInstalled(3));
  m_desktop.Folder().Put("data/applications/mimeapps.list",
                         "[Added Associations]\nx-scheme-handler/miomoredesktop=mio.desktop;\n");
  EXPECT_TRUE(IsTargetInstalled(3));
  m_desktop.Folder().Put("data/applications/mimeapps.list",
                         "[Removed Associations]\nx-scheme-handler/miomoredesktop=mio.desktop;\n");
  EXPECT_FALSE(IsTargetInstalled(3));
}

TEST_F(HandOff, DamagedDesktopFilesAreHarmless) {
  m_desktop.Folder().Put("data/applications/a.desktop", "[");
  m_desktop.Folder().Put("data/applications/b.desktop", std::string(3'000'000, '['));
  m_desktop.Folder().Put("data/applications/c.desktop", "=\n[Desktop Entry\nExec=\"\\\nMimeType");
  m_desktop.Folder().Put("data/applications/mimeapps.list",
                         "[Default Applications]\nx-scheme-handler/tomtomhome=../../x;;\n");
  EXPECT_FALSE(IsTargetInstalled(0));
}

TEST_F(HandOff, ALinkIsOpenedAsOneArgument) {
  const CGpsPoint point = MakePoint(1, 2, "$(touch x) `y` 'z' \"q\"");
  EXPECT_EQ(SendPointToTarget(0, point), 0u);
  EXPECT_EQ(m_desktop.Opened(),
            "tomtomhome:geo:lat=1.000000&long=2.000000&name=%24%28touch%20x%29%20%60y%60%20%27z%27"
            "%20%22q%22");
}

TEST_F(HandOff, WhereTheDesktopRefusesTheProgramItselfIsStarted) {
  m_desktop.Install("avic", "avic --open %u", "x-scheme-handler/avicfeeds;");
  m_desktop.AddProgram("avic");
  m_desktop.RemoveProgram("xdg-open");
  EXPECT_EQ(SendPointToTarget(2, MakePoint(1, 2, "A")), 0u);
  EXPECT_EQ(m_desktop.Opened("avic"), "--open\navicfeeds:lat=1.000000&long=2.000000&name=A&notes=");
  EXPECT_EQ(SendPointToTarget(3, MakePoint(1, 2, "A")), 2u);  // nobody there
  EXPECT_EQ(SendPointToTarget(0, MakePoint(1, 2, "A")), 2u);
}

TEST_F(HandOff, APointForNavigonGoesThroughAFile) {
  const TemporaryFolder& folder = m_desktop.Folder();
  const WideString elsewhere = folder.Put("tmp/elsewhere", "untouched");
  std::filesystem::create_symlink(folder.PathTo("tmp/elsewhere"),
                                  folder.PathTo("tmp/corvane.freshcontact"));
  EXPECT_EQ(SendPointToTarget(1, m_point), 0u);
  const std::string path = folder.PathTo("tmp/corvane.freshcontact");
  EXPECT_EQ(m_desktop.Opened(), path);
  EXPECT_EQ(folder.Get("tmp/corvane.freshcontact"), FreshContact(m_point));
  EXPECT_EQ(folder.Get("tmp/elsewhere"), "untouched");
  struct stat details {};
  ASSERT_EQ(lstat(path.c_str(), &details), 0);
  EXPECT_EQ(details.st_mode, S_IFREG | S_IRUSR | S_IWUSR);
}

TEST_F(HandOff, AnItineraryForNavigonGoesThroughAFile) {
  const auto list = MakeList("Trip", MakePoint(1, 2, "A"));
  EXPECT_EQ(SendItineraryToNavigon(list), 0u);
  EXPECT_EQ(m_desktop.Opened(), m_desktop.Folder().PathTo("tmp/corvane.freshroute"));
  EXPECT_EQ(m_desktop.Folder().Get("tmp/corvane.freshroute"),
            "<?xml version=\"1.0\" encoding=\"UTF-8\" "
            "standalone=\"no\"?><Route><Name>Trip</Name><Point><Name>A</Name>"
            "<Latitude>1.000000</Latitude><Longitude>2.000000</Longitude></Point></Route>");
}

TEST_F(HandOff, AFolderThatCannotBeWrittenIsTold) {
  setenv("TMPDIR", m_desktop.Folder().PathTo("missing").c_str(), 1);
  EXPECT_EQ(SendPointToTarget(1, m_point), 2u);
  EXPECT_FALSE(m_desktop.HasOpened());
}

TEST_F(HandOff, OtherNumbersSendNothing) {
  for (const int32_t target : {-1, 5, 6, 2147483647}) {
    EXPECT_FALSE(IsTargetInstalled(target));
    EXPECT_EQ(SendPointToTarget(target, m_point), static_cast<uint32_t>(kStatusInvalidParameter));
  }
  EXPECT_FALSE(m_desktop.HasOpened());
}

TEST_F(HandOff, NamesOfTheCommandLine) {
  const char* const names[] = {"tomtom-home", "navigon-fresh", "navgate", "mio-more", "garmin"};
  ASSERT_EQ(DeviceTargets().size(), std::size(names));
  for (int32_t i = 0; i < 5; ++i) EXPECT_EQ(FindDeviceTarget(names[i])->number, i);
  EXPECT_FALSE(FindDeviceTarget("tomtom"));
}

}  // namespace
