#include "services/links/link_writing.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "conversion/conversion_context.h"
#include "conversion/read_trip.h"
#include "conversion/write_trip.h"
#include "services/directions/route_options.h"
#include "services/links/link_rows.h"
#include "services/links/link_text.h"
#include "services/service_access.h"
#include "tests/list_builder.h"
#include "tests/settings_home.h"

namespace {

// A list of points 48.01, 7.01; 48.02, 7.02; ...
void AddPoints(size_t count, CGpsRoute& route) {
  for (size_t i = 1; i <= count; ++i) {
    const double step = static_cast<double>(i) / 100;
    route.points.push_back(MakePoint(48 + step, 7 + step, "P" + std::to_string(i)));
  }
}

class LinkWriting : public testing::Test {
 protected:
  LinkWriting() { AddLinkFunctions(m_table); }
  ~LinkWriting() override { SetServiceValues({}); }

  std::vector<std::string> Write(const CItineraryFormat& row, const CGpsPointArray& list,
                                 uint32_t split = 0) {
    std::vector<std::string> links;
    m_context.takeLink = [&links](const std::string& link) {
      links.push_back(link);
      return 0u;
    };
    WriteOptions options;
    options.option = split;
    m_status = WriteTrip(m_table, row, u"trip", list, {}, options, m_context).status;
    return links;
  }
  // The positions that our own readers find in a link.
  std::vector<std::string> PositionsIn(const std::string& link) {
    const TripRead trip =
        ReadTrip(m_table, WideString(link.begin(), link.end()), m_context, {.silent = true});
    std::vector<std::string> positions;
    for (const auto& list : trip.lists) {
      for (const CGpsPoint& point : list->points) positions.push_back(LinkPosition(point));
    }
    return positions;
  }

  const CItineraryFormat& Google() const { return m_table[0]; }
  const CItineraryFormat& Here() const { return m_table[1]; }
  const CItineraryFormat& ViaMichelin() const { return m_table[2]; }
  const CItineraryFormat& MyDrive() const { return m_table[3]; }

  FormatTable m_table = {{u"ggm", 203, nullptr, nullptr, 0, {.isFile = false}},
                         {u"here", 332, nullptr, nullptr, 0, {.isFile = false}},
                         {u"vmm", 367, nullptr, nullptr, 0, {.isFile = false}},
                         {u"ttd", 368, nullptr, nullptr, 0, {.isFile = false}},
                         {u"url", 159, nullptr, nullptr, 0}};
  ConversionContext m_context;
  uint32_t m_status = kStatusSuccess;
};

TEST_F(LinkWriting, EachRowHasItsPage) {
  const CGpsRoute trip = MakeList("", MakePoint(48.1, 7.2, "Colmar"), MakePoint(49.1, 6.2, "Metz"));
  EXPECT_EQ(Write(Google(), trip),
            std::vector<std::string>{"https://www.google.com/maps/dir/48.100000,7.200000/"
                                     "49.100000,6.200000/data=!4m4!4m3!1m0!1m0!3e0"});
  EXPECT_EQ(Write(Here(), trip),
            std::vector<std::string>{"https://www.here.com/directions/drive/"
                                     "Colmar:48.100000,7.200000/Metz:49.100000,6.200000"});
  EXPECT_EQ(Write(ViaMichelin(), trip),
            std::vector<std::string>{"https://www.viamichelin.com/web/Routes?departure="
                                     "48.100000,7.200000&arrival=49.100000,6.200000&vehicle=0"
                                     "&motorway=true&distance=km&printRoadSheet=true"});
  EXPECT_EQ(Write(MyDrive(), trip),
            std::vector<std::string>{
                "https://mydrive.tomtom.com/en_gb/#mode=routes+viewport=49.100000,6.200000,10"
                "+routes=%7B%22points%22:%5B%22hw~48.100000,7.200000%22,%22hw~49.100000,6.200000"
                "%22%5D,%22travelMode%22:%22CAR%22,%22routeType%22:%22FASTEST%22,"
                "%22hilliness%22:%22NORMAL%22,%22windingness%22:%22NORMAL%22%7D"});
}

TEST_F(LinkWriting, LongListsAreSplitAtSharedPoints) {
  CGpsRoute trip;
  AddPoints(26, trip);
  const std::vector<std::string> google = Write(Google(), trip);
  ASSERT_EQ(google.size(), 2u);
  EXPECT_EQ(PositionsIn(google[0]).size(), 25u);
  EXPECT_EQ(PositionsIn(google[1]),
            (std::vector<std::string>{"48.250000,7.250000", "48.260000,7.260000"}));
  // 10, then 9 more each: 1-10, 10-19, 19-26.
  const std::vector<std::string> here = Write(Here(), trip);
  ASSERT_EQ(here.size(), 3u);
  EXPECT_EQ(PositionsIn(here[1]).front(), "48.100000,7.100000");
  EXPECT_EQ(PositionsIn(here[2]).front(), "48.190000,7.190000");
  EXPECT_EQ(PositionsIn(here[2]).size(), 8u);
  EXPECT_EQ(Write(ViaMichelin(), trip).size(), 1u);
  EXPECT_EQ(Write(MyDrive(), trip).size(), 1u);
}

TEST_F(LinkWriting, ListsThatJustFitAreOneLink) {
  CGpsRoute trip;
  AddPoints(25, trip);
  EXPECT_EQ(Write(Google(), trip).size(), 1u);
  AddPoints(25, trip);
  EXPECT_EQ(Write(MyDrive(), trip).size(), 1u);
  AddPoints(1, trip);
  EXPECT_EQ(Write(MyDrive(), trip).size(), 2u);
}

TEST_F(LinkWriting, TheUsersLimitSplitsEarlier) {
  CGpsRoute trip;
  AddPoints(5, trip);
  const std::vector<std::string> links = Write(Google(), trip, 3);
  ASSERT_EQ(links.size(), 2u);
  EXPECT_EQ(PositionsIn(links[1]).front(), "48.030000,7.030000");
  EXPECT_EQ(Write(ViaMichelin(), trip, 2).size(), 4u);
  // The page takes no more than it takes.
  AddPoints(21, trip);
  EXPECT_EQ(Write(Google(), trip, 100).size(), 2u);
  EXPECT_TRUE(Write(Google(), trip, 1).empty());
  EXPECT_EQ(m_status, kStatusInvalidParameter);
}

TEST_F(LinkWriting, OnePointIsOneLinkAndNoneIsRefused) {
  const CGpsRoute one = MakeList("", MakePoint(48.1, 7.2));
  for (size_t row = 0; row < 4; ++row) {
    ASSERT_EQ(Write(m_table[row], one).size(), 1u);
    EXPECT_EQ(PositionsIn(Write(m_table[row], one)[0]),
              std::vector<std::string>{"48.100000,7.200000"});
    EXPECT_TRUE(Write(m_table[row], CGpsRoute()).empty());
    EXPECT_EQ(m_status, kStatusInvalidParameter);
  }
}

TEST_F(LinkWriting, IsReadBackInEveryTravelMode) {
  const CGpsRoute trip = MakeList("", MakePoint(48.0807801, 7.3558444, "Colmar & Co: 1/2"),
                                  MakePoint(-0.000001, 179.9999996, "Île"), MakePoint(-89.9, -180));
  const std::vector<std::string> expected = {"48.080780,7.355844", "-0.000001,180.000000",
                                             "-89.900000,-180.000000"};
  for (uint32_t mode = kAnyMode; mode <= kBus; ++mode) {
    m_context.linkOptions.travelMode = mode;
    m_context.linkOptions.avoidsMotorways = mode % 2 == 0;
    for (size_t row = 0; row < 4; ++row) {
      const std::vector<std::string> links = Write(m_table[row], trip);
      ASSERT_EQ(links.size(), 1u);
      EXPECT_EQ(PositionsIn(links[0]), expected) << links[0];
    }
  }
}

TEST_F(LinkWriting, AnotherSiteAndLanguageCanBeSet) {
  ServiceValues site;
  site.url = "http://localhost:8080/g";
  ServiceValues account;
  account.language = "fr";
  SetServiceValues({{"google-site", site}, {"google", account}});
  const CGpsRoute trip = MakeList("", MakePoint(1, 2));
  EXPECT_EQ(Write(Google(), trip)[0],
            "http://localhost:8080/g/maps/dir/1.000000,2.000000/data=!4m3!4m2!1m0!3e0?hl=fr");
}

TEST_F(LinkWriting, AFailureOfTheTakerEndsIt) {
  CGpsRoute trip;
  AddPoints(30, trip);
  size_t taken = 0;
  m_context.takeLink = [&taken](const std::string&) {
    ++taken;
    return uint32_t{kStatusAccessDenied};
  };
  EXPECT_EQ(WriteTrip(m_table, Google(), u"trip", trip, {}, {}, m_context).status,
            kStatusAccessDenied);
  EXPECT_EQ(taken, 1u);
  m_context.takeLink = {};
  EXPECT_EQ(WriteTrip(m_table, Google(), u"trip", trip, {}, {}, m_context).status,
            kStatusNotImplemented);
}

TEST(LinkOptions, ComeFromTheWishesOrTheSettings) {
  const SettingsHome home;
  CSettings settings;
  settings.vehicleType = 3;
  settings.itineraryType = 5;
  settings.avoidHighway = true;
  settings.avoidTolls = false;
  const LinkOptions options = LinkOptionsFor({}, settings);
  EXPECT_EQ(options.travelMode, kPedestrian);
  EXPECT_EQ(options.routeType, kThrilling);
  EXPECT_TRUE(options.avoidsMotorways);
  EXPECT_FALSE(options.avoidsTolls);
  EXPECT_EQ(options.hilliness, kNormal);
  RouteWishes wishes;
  wishes.mode = kTruckMode;
  wishes.type = kFastest;
  wishes.avoided.emplace().tolls = true;
  wishes.hilliness = kHigh;
  wishes.windingness = kLow;
  const LinkOptions wished = LinkOptionsFor(wishes, settings);
  EXPECT_EQ(wished.travelMode, kTruckMode);
  EXPECT_EQ(wished.routeType, kFastest);
  EXPECT_FALSE(wished.avoidsMotorways);
  EXPECT_TRUE(wished.avoidsTolls);
  EXPECT_EQ(wished.hilliness, kHigh);
  EXPECT_EQ(wished.windingness, kLow);
}

}  // namespace
