// The texts that companion programs get, at their edges, and what happens where the desktop does
// not take them.

#include <gtest/gtest.h>

#include "base/localized_text.h"
#include "planner/hand_off.h"
#include "services/service_access.h"
#include "services/service_registry.h"
#include "tests/list_builder.h"
#include "tests/planner/desktop_home.h"

namespace {

class CompanionTexts : public testing::Test {
 protected:
  const DesktopHome m_desktop;
};

TEST_F(CompanionTexts, AnEmptyCommentLeavesItsKeyInTheMiddleToo) {
  EXPECT_EQ(PointLink(3, MakePoint(1, 2, "A")),
            "miomoredesktop:poi?name=A&province=&city=&street=&streetnum=&postalcode=&country=&"
            "phone=&notes=&lat=1.000000&lon=2.000000");
}

TEST_F(CompanionTexts, PointsWithoutAName) {
  EXPECT_EQ(PointLink(0, MakePoint(-0.5, 180)),
            "tomtomhome:geo:lat=-0.500000&long=180.000000&name=");
  EXPECT_EQ(PointLink(4, MakePoint(1, 2)),
            "https://my.garmin.com/locate/savePOI.htm?lat=1.000000&long=2.000000&name=");
}

TEST_F(CompanionTexts, EveryLetterButLettersAndDigitsIsEscaped) {
  // A line feed is one digit: that is how these programs have always got it.
  const CGpsPoint point = MakePoint(1.23456789, 2, "a&b=c+d-e_f.g~h", "1\n2");
  EXPECT_EQ(PointLink(2, point),
            "avicfeeds:lat=1.234568&long=2.000000&name=a%26b%3Dc%2Bd%2De%5Ff%2Eg%7Eh&notes=1%A2");
}

TEST_F(CompanionTexts, GarminGetsTheLanguageThatThePageHasSet) {
  CServiceRegistry& registry = CServiceRegistry::Instance();
  registry.Clear();
  FillServiceRegistry(registry);
  UpdateServiceRegistry(registry, R"([{"id": 2, "key": "KEY", "lang": "de"}])");
  EXPECT_EQ(PointLink(4, MakePoint(1, 2, "A")),
            "https://my.garmin.com/locate/savePOI.htm?lat=1.000000&long=2.000000&name=A&hl=de");
  registry.Clear();
  FillServiceRegistry(registry);
}

TEST_F(CompanionTexts, AContactIsNameCommentLongitudeLatitude) {
  const std::string bytes = FreshContact(MakePoint(-48.1234567, 7, "N", ""));
  std::string letters;
  for (size_t i = 0; i < bytes.size(); i += 2) letters += bytes[i];
  EXPECT_EQ(letters, "Corvane Map 1.21|N||-|-|-|-|7.000000|-48.123457");
}

TEST_F(CompanionTexts, MioMoreIsStartedWhereTheDesktopRefuses) {
  m_desktop.Install("mio", "mio %i --poi=%u 100%% %", "x-scheme-handler/miomoredesktop;");
  m_desktop.AddProgram("mio");
  m_desktop.RemoveProgram("xdg-open");
  EXPECT_EQ(SendPointToTarget(3, MakePoint(1, 2, "A %u", "B")), 0u);
  EXPECT_EQ(m_desktop.Opened("mio"),
            "--poi=miomoredesktop:poi?name=A%20%25u&province=&city=&street=&streetnum=&postalcode=&"
            "country=&phone=&notes=B&lat=1.000000&lon=2.000000\n100%\n%");
}

TEST_F(CompanionTexts, TheFirstProgramThereIsOfThoseChosenTakesIt) {
  m_desktop.Install("mio", "mio %u", "");
  m_desktop.Folder().Put(
      "data/applications/mimeapps.list",
      "[Default Applications]\nx-scheme-handler/miomoredesktop=gone.desktop;;mio.desktop\n");
  EXPECT_TRUE(IsTargetInstalled(3));
}

TEST_F(CompanionTexts, GarminsLinkIsOpened) {
  EXPECT_EQ(SendPointToTarget(4, MakePoint(1, 2, "A")), 0u);
  EXPECT_EQ(m_desktop.Opened(),
            "https://my.garmin.com/locate/savePOI.htm?lat=1.000000&long=2.000000&name=A");
}

TEST_F(CompanionTexts, ASecondContactReplacesTheFirst) {
  EXPECT_EQ(SendPointToTarget(1, MakePoint(1, 2, "A long name of the first")), 0u);
  m_desktop.Opened();
  const CGpsPoint second = MakePoint(3, 4, "B");
  EXPECT_EQ(SendPointToTarget(1, second), 0u);
  m_desktop.Opened();
  EXPECT_EQ(m_desktop.Folder().Get("tmp/corvane.freshcontact"), FreshContact(second));
}

TEST_F(CompanionTexts, TargetsHaveTheirKeysAndButtons) {
  const struct {
    const char* key;
    uint32_t label;
    const char* text;
  } targets[] = {{"tthome", 222, "Add to TomTom"},
                 {"nvgfresh", 239, "Add to Navigon"},
                 {"navgate", 246, "Add to Pioneer Navgate"},
                 {"miomore", 248, "Add to Mio/Navman"},
                 {"garmin", 253, "Add to Garmin"}};
  for (int32_t number = 0; number < 5; ++number) {
    const DeviceTarget* const target = FindDeviceTarget(number);
    ASSERT_TRUE(target) << number;
    EXPECT_EQ(target->startKey, targets[number].key);
    EXPECT_EQ(target->labelTextId, targets[number].label);
    EXPECT_EQ(LoadTextUtf8(target->labelTextId), targets[number].text);
  }
  EXPECT_FALSE(FindDeviceTarget(5));
  EXPECT_FALSE(FindDeviceTarget(-1));
}

}  // namespace
