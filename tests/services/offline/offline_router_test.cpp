// Ways through a small town of our own, from its extract to its instructions.

#include "services/offline/offline_router.h"

#include <csignal>
#include <cstdlib>

#include <gtest/gtest.h>

#include "base/localized_text.h"
#include "platform/path_text.h"
#include "services/directions/route_options.h"
#include "services/service_table.h"
#include "tests/services/directions/points_of.h"
#include "tests/services/offline/small_town.h"
#include "tests/temporary_folder.h"

namespace {

/// A home for road databases that is gone after the test.
class OfflineRoads : public testing::Test {
 protected:
  OfflineRoads() { setenv("XDG_DATA_HOME", m_home.Path().c_str(), 1); }
  ~OfflineRoads() override {
    for (const RoadDatabase& database : ListRoadDatabases())
      RoadEngine()->CloseDatabase(PathBytes(database.folder));
    unsetenv("XDG_DATA_HOME");
    SetLanguage(Language::kEnglish);
  }

  RoadsChange Add(const std::string& name, const std::string& file, const std::string& content) {
    m_home.Put(file, content);
    return AddRoadDatabase(name, WidePath(m_home.PathTo(file)), {}, m_failure);
  }
  void AddTown() { ASSERT_EQ(Add("town", "town.osm", kSmallTown), RoadsChange::kDone); }

  CRouteProvider& Ask(std::initializer_list<std::pair<double, double>> stops, uint32_t mode,
                      const CRouteOptions& options) {
    m_router.Calculate(std::make_unique<CGpsPointList>(PointsOf(stops)), mode, options);
    m_router.Wait(-1);
    return m_router;
  }
  // The metres of the way between two stops; 0 without one.
  uint32_t MetresOf(std::initializer_list<std::pair<double, double>> stops, uint32_t mode,
                    const CRouteOptions& options) {
    CRouteProvider& router = Ask(stops, mode, options);
    return router.Status() == 0 ? router.GetLegs().at(0).measure.distance : 0;
  }

  TemporaryFolder m_home;
  std::string m_failure;
  OfflineRouter m_router;
};

AvoidanceOptions OptionsOf(uint32_t type) {
  AvoidanceOptions options;
  options.mode = type;
  return options;
}

// South Street 744 m at 35 km/h, the Toll Bridge 1113 m at 75 km/h: 76.5 s and 53.4 s.
TEST_F(OfflineRoads, LeadTheQuickestWay) {
  AddTown();
  CRouteProvider& router = Ask({{48.0, 7.0}, {48.01, 7.01}}, kCar, OptionsOf(kFastest));
  ASSERT_EQ(router.Status(), 0u);
  ASSERT_EQ(router.GetLegs().size(), 1u);
  const CRouteData& leg = router.GetLegs()[0];
  EXPECT_NEAR(leg.measure.distance, 1857, 1);
  EXPECT_NEAR(leg.measure.duration, 130, 1);
  EXPECT_EQ(leg.measure.flag, 1);
  EXPECT_EQ(leg.travelMode, 1u);
  const auto shape = PositionsOf(leg.shape.points);
  ASSERT_EQ(shape.size(), 3u);
  EXPECT_NEAR(shape[1].first, 48.0, 1e-5);
  EXPECT_NEAR(shape[1].second, 7.01, 1e-5);
  EXPECT_EQ(leg.path.points.size(), 2u);
  ASSERT_EQ(leg.steps.size(), 3u);
  EXPECT_NEAR(leg.steps[0].measure.distance, 744, 1);
  EXPECT_NEAR(leg.steps[1].measure.distance, 1113, 1);
  EXPECT_EQ(leg.steps[2].measure.distance, 0u);
  EXPECT_NE(leg.steps[0].instruction.find("South Street"), std::string::npos);
  EXPECT_NE(leg.steps[1].instruction.find("Left"), std::string::npos);
  EXPECT_NE(leg.steps[1].instruction.find("Toll Bridge"), std::string::npos);
}

TEST_F(OfflineRoads, NameTheStops) {
  AddTown();
  SetLanguage(Language::kGerman);
  auto stops = std::make_unique<CGpsPointList>(PointsOf({{48.0, 7.0}, {48.01, 7.01}}));
  stops->points.front()->name = "Hafen #2";
  stops->points.back()->name = "Am Markt";
  m_router.Calculate(std::move(stops), kCar, OptionsOf(kFastest));
  ASSERT_EQ(m_router.Wait(-1), 0u);
  const CRouteData& leg = m_router.GetLegs()[0];
  EXPECT_EQ(NamesOf(leg.path), (std::vector<std::string>{"Hafen #2", "Am Markt"}));
  EXPECT_NE(leg.steps.front().instruction.find("bei Hafen #2 halten"), std::string::npos);
  EXPECT_NE(leg.steps.back().instruction.find("bei Am Markt angekommen"), std::string::npos);
}

TEST_F(OfflineRoads, SpeakTheLanguageOfTheProgram) {
  AddTown();
  SetLanguage(Language::kFrench);
  CRouteProvider& router = Ask({{48.0, 7.0}, {48.01, 7.01}}, kCar, OptionsOf(kFastest));
  ASSERT_EQ(router.Status(), 0u);
  EXPECT_NE(router.GetLegs()[0].steps[1].instruction.find("gauche"), std::string::npos);
}

// West Lane 1113 m and North Street 744 m, both at 35 km/h.
TEST_F(OfflineRoads, AvoidTolls) {
  AddTown();
  AvoidanceOptions options = OptionsOf(kFastest);
  options.tolls = false;
  CRouteProvider& router = Ask({{48.0, 7.0}, {48.01, 7.01}}, kCar, options);
  ASSERT_EQ(router.Status(), 0u);
  EXPECT_NEAR(router.GetLegs()[0].measure.distance, 1857, 1);
  EXPECT_NEAR(router.GetLegs()[0].measure.duration, 191, 1);
  EXPECT_NE(router.GetLegs()[0].steps[0].instruction.find("West Lane"), std::string::npos);
}

TEST_F(OfflineRoads, AvoidFerriesTunnelsAndDirtRoads) {
  ASSERT_EQ(Add("places", "places.osm",
                PlacesWithDetour({R"(<tag k="route" v="ferry"/><tag k="motorcar" v="yes"/>)",
                                  R"(<tag k="highway" v="secondary"/><tag k="tunnel" v="yes"/>)",
                                  R"(<tag k="highway" v="track"/><tag k="motorcar" v="yes"/>)"})),
            RoadsChange::kDone)
      << m_failure;
  bool AvoidanceOptions::*const kKinds[] = {
      &AvoidanceOptions::boatFerries, &AvoidanceOptions::tunnels, &AvoidanceOptions::dirtRoads};
  double latitude = 48.0;
  for (const auto kind : kKinds) {
    AvoidanceOptions options = OptionsOf(kShortest);
    EXPECT_NEAR(MetresOf({{latitude, 7.0}, {latitude, 7.02}}, kCar, options), 1484, 6) << latitude;
    options.*kind = false;
    EXPECT_NEAR(MetresOf({{latitude, 7.0}, {latitude, 7.02}}, kCar, options), 3710, 6) << latitude;
    latitude += 0.1;
  }
}

TEST_F(OfflineRoads, LeadTrucksWhereTheyFit) {
  ASSERT_EQ(
      Add("places", "places.osm",
          PlacesWithDetour({R"(<tag k="highway" v="secondary"/><tag k="maxheight" v="3.5"/>)",
                            R"(<tag k="highway" v="secondary"/><tag k="maxweight" v="7.5"/>)",
                            R"(<tag k="highway" v="secondary"/><tag k="maxwidth" v="2.2"/>)",
                            R"(<tag k="highway" v="secondary"/><tag k="maxlength" v="9"/>)"})),
      RoadsChange::kDone)
      << m_failure;
  constexpr struct {
    uint32_t TruckOptions::*size;
    uint32_t fits;
    uint32_t isTooMuch;
  } kSizes[] = {{&TruckOptions::height, 34, 36},
                {&TruckOptions::limitedWeight, 70, 80},
                {&TruckOptions::width, 21, 24},
                {&TruckOptions::length, 89, 95}};
  double latitude = 48.0;
  for (const auto& row : kSizes) {
    TruckOptions truck;
    truck.mode = kShortest;
    truck.*row.size = row.fits;
    EXPECT_NEAR(MetresOf({{latitude, 7.0}, {latitude, 7.02}}, kTruckMode, truck), 1484, 6)
        << latitude;
    truck.*row.size = row.isTooMuch;
    EXPECT_NEAR(MetresOf({{latitude, 7.0}, {latitude, 7.02}}, kTruckMode, truck), 3710, 6)
        << latitude;
    latitude += 0.1;
  }
}

// The motorway is 3715 m at 110 km/h, North Street 1488 m at 35 km/h.
TEST_F(OfflineRoads, PreferMotorwaysUnlessTheyAreAvoided) {
  AddTown();
  AvoidanceOptions options = OptionsOf(kFastest);
  EXPECT_NEAR(MetresOf({{48.01, 7.0}, {48.01, 7.02}}, kCar, options), 3715, 2);
  EXPECT_NEAR(MetresOf({{48.01, 7.0}, {48.01, 7.02}}, kMotorcycle, options), 3715, 2);
  options.motorways = false;
  EXPECT_NEAR(MetresOf({{48.01, 7.0}, {48.01, 7.02}}, kCar, options), 1488, 2);
  EXPECT_NEAR(MetresOf({{48.01, 7.0}, {48.01, 7.02}}, kCar, OptionsOf(kShortest)), 1488, 2);
  EXPECT_NEAR(MetresOf({{48.01, 7.0}, {48.01, 7.02}}, kBicycle, OptionsOf(kFastest)), 1488, 2);
  EXPECT_NEAR(MetresOf({{48.01, 7.0}, {48.01, 7.02}}, kTruckMode, OptionsOf(kShortest)), 1488, 2);
}

// Against the one-way street: over the Toll Bridge, South Street and West Lane.
TEST_F(OfflineRoads, ObeyOneWayStreetsOnWheels) {
  AddTown();
  EXPECT_NEAR(MetresOf({{48.01, 7.01}, {48.01, 7.0}}, kCar, OptionsOf(kShortest)), 2970, 2);
  EXPECT_NEAR(MetresOf({{48.01, 7.01}, {48.01, 7.0}}, kPedestrian, OptionsOf(kShortest)), 744, 1);
}

TEST_F(OfflineRoads, GiveALegForEachPairOfStops) {
  AddTown();
  CRouteProvider& router =
      Ask({{48.0, 7.0}, {48.0, 7.01}, {48.0, 7.02}}, kCar, OptionsOf(kShortest));
  ASSERT_EQ(router.GetLegs().size(), 2u);
  EXPECT_NEAR(router.GetLegs()[0].measure.distance, 744, 1);
  EXPECT_NEAR(router.GetLegs()[1].measure.distance, 744, 1);
}

TEST_F(OfflineRoads, FindNoWayToAnIsland) {
  AddTown();
  EXPECT_EQ(Ask({{48.0, 7.0}, {48.01, 7.105}}, kCar, OptionsOf(kFastest)).Status(), 1u);
}

TEST_F(OfflineRoads, TellWhenAStopLiesOffAllRoads) {
  AddTown();
  CRouteProvider& router = Ask({{48.0, 7.0}, {48.04, 7.05}}, kCar, OptionsOf(kFastest));
  EXPECT_EQ(router.Status(), 5u);
  EXPECT_EQ(router.FailureText(), "No road lies within a kilometre of 48.040000, 7.050000.");
}

TEST_F(OfflineRoads, TellWhichExtractWouldHelp) {
  CRouteProvider& router = Ask({{48.0, 7.0}, {48.01, 7.01}}, kCar, OptionsOf(kFastest));
  EXPECT_EQ(router.Status(), 1u);
  EXPECT_TRUE(
      router.FailureText().starts_with("No road database holds 48.000000, 7.000000, near "));
  AddTown();
  // The middle of Colmar.
  Ask({{48.0, 7.0}, {48.08, 7.36}}, kCar, OptionsOf(kFastest));
  EXPECT_EQ(router.Status(), 1u);
  EXPECT_EQ(router.FailureText(),
            "No road database holds 48.080000, 7.360000, near Colmar, Grand Est, France. Add an "
            "OpenStreetMap extract of that region or country: corvanemap --roads add NAME FILE");
  // The nearest town in the middle of the Atlantic would help nobody.
  Ask({{48.0, 7.0}, {30.0, -40.0}}, kCar, OptionsOf(kFastest));
  EXPECT_EQ(router.Status(), 1u);
  EXPECT_EQ(router.FailureText(),
            "No road database holds 30.000000, -40.000000. Add an OpenStreetMap extract of the "
            "region around it: corvanemap --roads add NAME FILE");
}

TEST_F(OfflineRoads, RefuseOneStopAndCalculateAgain) {
  AddTown();
  int told = 0;
  m_router.SetCompletion([&told](uint32_t, const CRouteProvider::Legs&) { ++told; });
  EXPECT_EQ(Ask({{48.0, 7.0}}, kCar, OptionsOf(kFastest)).Status(), 8u);
  EXPECT_EQ(Ask({{48.0, 7.0}, {48.0, 7.01}}, kCar, OptionsOf(kFastest)).Status(), 0u);
  EXPECT_EQ(told, 2);
  EXPECT_EQ(m_router.GetId(), provider::kOfflineRoads);
}

TEST_F(OfflineRoads, AreListedAndRemoved) {
  EXPECT_TRUE(ListRoadDatabases().empty());
  AddTown();
  ASSERT_EQ(ListRoadDatabases().size(), 1u);
  EXPECT_EQ(ListRoadDatabases()[0].name, "town");
  ASSERT_TRUE(ListRoadDatabases()[0].bounds.has_value());
  EXPECT_TRUE(ListRoadDatabases()[0].bounds->Holds({48.02, 7.02}));
  EXPECT_FALSE(ListRoadDatabases()[0].bounds->Holds({48.5, 7.02}));
  EXPECT_EQ(RemoveRoadDatabase("town"), RoadsChange::kDone);
  EXPECT_TRUE(ListRoadDatabases().empty());
  EXPECT_EQ(RemoveRoadDatabase("town"), RoadsChange::kNotThere);
}

TEST_F(OfflineRoads, RefuseWhatIsNoExtract) {
  EXPECT_EQ(Add("x", "x.osm", "junk"), RoadsChange::kNoExtract);
  EXPECT_EQ(Add("x", "x.osm", ""), RoadsChange::kNoExtract);
  EXPECT_EQ(Add("x", "x.pbf", kSmallTown), RoadsChange::kNoExtract);
  EXPECT_EQ(Add("x", "x.txt", kSmallTown), RoadsChange::kNoExtract);
  EXPECT_EQ(Add("x", "x.osm", "<osm version=\"0.6\"></osm>"), RoadsChange::kNoRoads);
  EXPECT_EQ(Add("x", "x.osm", "<osm version=\"0.6\"><node"), RoadsChange::kFailed);
  EXPECT_FALSE(m_failure.empty());
  EXPECT_EQ(AddRoadDatabase("x", u"/nonexistent/x.osm", {}, m_failure), RoadsChange::kNotThere);
  for (const char* const name : {"", ".", "..", "a/b", "a b", "\xC3\xA9"})
    EXPECT_EQ(Add(name, "town.osm", kSmallTown), RoadsChange::kWrongName);
  EXPECT_TRUE(ListRoadDatabases().empty());
}

TEST_F(OfflineRoads, StayWhenTheirReplacementFails) {
  AddTown();
  EXPECT_EQ(Add("town", "town.osm", "<osm version=\"0.6\"><node"), RoadsChange::kFailed);
  EXPECT_NEAR(MetresOf({{48.0, 7.0}, {48.0, 7.01}}, kCar, OptionsOf(kFastest)), 744, 1);
  EXPECT_EQ(Add("town", "town.osm", kSmallTown), RoadsChange::kDone);
  EXPECT_EQ(ListRoadDatabases().size(), 1u);
}

TEST_F(OfflineRoads, AreNotMadeByHalvesWhenInterrupted) {
  m_home.Put("town.osm", kSmallTown);
  const auto interrupt = [](std::string_view) { std::raise(SIGINT); };
  EXPECT_EQ(AddRoadDatabase("town", WidePath(m_home.PathTo("town.osm")), interrupt, m_failure),
            RoadsChange::kInterrupted);
  EXPECT_TRUE(ListRoadDatabases().empty());
  EXPECT_FALSE(m_home.Has("CorvaneMap/roads/.new-town"));
}

}  // namespace
