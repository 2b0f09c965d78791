// How the page comes up, where it may go, and what happens when it cannot be loaded.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "planner/navigation_filter.h"
#include "planner/network_report.h"
#include "planner/page_maps.h"
#include "settings/map_sources.h"
#include "tests/planner/bridge_fixture.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class Bridge : public BridgeTest {
 protected:
  /// No companion program is found in an empty home.
  Bridge() {
    setenv("XDG_DATA_HOME", home.Folder().PathTo("data").c_str(), 1);
    setenv("XDG_DATA_DIRS", home.Folder().PathTo("shared").c_str(), 1);
    setenv("XDG_CONFIG_DIRS", home.Folder().PathTo("system").c_str(), 1);
  }
  ~Bridge() override {
    unsetenv("XDG_DATA_HOME");
    unsetenv("XDG_DATA_DIRS");
    unsetenv("XDG_CONFIG_DIRS");
  }
};

TEST_F(Bridge, ComesUpInItsSixSteps) {
  page.answers["GetProviders"] = "[{\"id\": 2}]";
  log.clear();
  bridge.OnReady(R"({"software": {"version": 1.21, "url": "https://site.example"}})");
  EXPECT_THAT(
      log,
      ElementsAre("NewPinList(0)", "NewPinList(1)", "NewPinList(2)", "NewPinList(3)", "GetMaps()",
                  "GetProviders()", "providers [{\"id\": 2}]", "country",
                  "InitMap({\"maps\": [], \"userId\": \"\", \"number\": true, \"lang\": {\"hl\": "
                  "\"en\"}})",
                  "normal title", "ClearPushPins(0)", "RefreshPushPins(0, 0)", "ClearPushPins(1)",
                  "RefreshPushPins(1, 0)", "ClearPushPins(3)", "RefreshPushPins(3, 0)",
                  "AutoViewMap()", "totals "));
}

TEST_F(Bridge, StartJsonHasEveryKey) {
  settings.Load();
  settings.userId = u"me \"and\" you";
  settings.displayNumber = false;
  settings.defaultMap = MapChoice{3, "Topo map"};
  SaveMaps(storage::OpenUserStorage(), {{"A", 0x11}, {"B", 0x8F}, {"C", 0x0F}, {"D", 0x7F}});
  services.country = UserCountry{"FR", 46.5, 2};
  log.clear();
  bridge.OnReady("{}");
  EXPECT_THAT(
      log,
      Contains("InitMap({\"country\": \"FR\", \"center\": {\"lat\": 46.5, \"lng\": 2}, \"map\": "
               "{\"flag\": \"Topo map\", \"type\": 3}, \"maps\": [{\"flag\": \"A\", \"map\": true, "
               "\"sat\": false, \"hybrid\": false, \"topo\": false}, {\"flag\": \"B\", \"map\": "
               "false, \"sat\": false, \"hybrid\": false, \"topo\": true}, {\"flag\": \"C\", "
               "\"map\": false, \"sat\": false, \"hybrid\": false, \"topo\": false}, {\"flag\": "
               "\"D\", \"map\": true, \"sat\": true, \"hybrid\": true, \"topo\": false}], "
               "\"userId\": \"me \\\"and\\\" you\", \"number\": false, \"lang\": {\"hl\": "
               "\"en\"}})"));
}

TEST_F(Bridge, StartJsonNamesTheInstalledCompanions) {
  const TemporaryFolder& folder = home.Folder();
  std::filesystem::create_directories(folder.PathTo("data/applications"));
  const auto install = [&](const std::string& name, const std::string& types) {
    folder.Put("data/applications/" + name + ".desktop",
               "[Desktop Entry]\nExec=" + name + " %u\nMimeType=" + types + "\n");
  };
  install("home", "x-scheme-handler/tomtomhome;");
  install("avic", "text/plain;x-scheme-handler/avicfeeds;");
  install("mio", "x-scheme-handler/miomoredesktop");
  install("route", "application/x-navigon-freshroute+xml;");
  log.clear();
  bridge.OnReady("{}");
  EXPECT_NE(log[8].find(R"("tthome": "Add to TomTom", "navgate": "Add to Pioneer Navgate", )"
                        R"("miomore": "Add to Mio/Navman"})"),
            std::string::npos)
      << log[8];
  install("contact", "application/x-navigon-freshcontact;");
  log.clear();
  bridge.OnReady("{}");
  EXPECT_NE(log[8].find(R"("nvgfresh": "Add to Navigon")"), std::string::npos) << log[8];
  EXPECT_EQ(log[8].find("garmin"), std::string::npos);
}

TEST_F(Bridge, ANewerVersionIsAnnounced) {
  log.clear();
  bridge.OnReady(R"({"software": {"version": 1.3, "url": "https://site.example"}})");
  EXPECT_THAT(log, Contains("notice A new version of Corvane Map (1.30) is available on "
                            "https://site.example. [https://site.example]"));
  EXPECT_THAT(log, Contains("ShowUpdateWindow()"));
  EXPECT_THAT(log, testing::Not(Contains("normal title")));
}

TEST_F(Bridge, ThePresentVersionIsNot) {
  for (const char* const text :
       {R"({"software": {"version": 1.21}})", R"({"software": {"version": 1.2}})",
        R"({"software": {"version": "9"}})", R"({"software": 7})", "{}"}) {
    log.clear();
    bridge.OnReady(text);
    EXPECT_THAT(log, Contains("normal title")) << text;
    EXPECT_THAT(log, testing::Not(Contains("ShowUpdateWindow()"))) << text;
  }
}

TEST_F(Bridge, AnErrorTextDisablesTheMap) {
  for (const char* const text : {"Internal error 7", "", "[1, 2]", "nonsense"}) {
    log.clear();
    bridge.OnReady(text);
    EXPECT_THAT(log, ElementsAre(std::string("map disabled: ") + text)) << text;
    itinerary.SelectRow(0);
    EXPECT_EQ(log.size(), 1u);
    EXPECT_EQ(Failure("GetPoint", {0, 0}), 0x8002000B);
  }
}

TEST_F(Bridge, APageWithoutSomeFunctionsComesUpAllTheSame) {
  page.answers.clear();
  page.throws = true;
  bridge.OnReady("{}");
  EXPECT_THAT(log, Contains("normal title"));
}

TEST_F(Bridge, PagesOwnMapsAreAddedToTheStoredOnes) {
  settings.Load();
  SaveMaps(storage::OpenUserStorage(), {{"Known", 0x01}});
  page.answers["GetMaps"] =
      R"([{"name": "Known", "icon": 3, "map": true, "sat": true}, {"name": "New", "topo": false},)"
      R"( {"name": "Plain"}])";
  bridge.OnReady("{}");
  // The stored switch of "Known" counts for its map, the page's for what it did not know.
  EXPECT_EQ(bridge.StoredMaps(), (MapSources{{"Known", 0x23}, {"New", 0x08}, {"Plain", 0}}));
  MapSources stored;
  LoadMaps(storage::OpenUserStorage(), stored);
  EXPECT_EQ(stored, bridge.StoredMaps());
  ASSERT_EQ(bridge.PageMaps().size(), 3u);
  EXPECT_EQ(bridge.PageMaps()[0].icon, 3);
  EXPECT_FALSE(bridge.PageMaps()[1].icon);
}

TEST_F(Bridge, UnreadableMapsAreNone) {
  for (const char* const text : {"", "{}", "[1]", "[{}]", "[{\"name\": 3}]", "[{\"name\"", "null"})
    EXPECT_THAT(ReadPageMaps(text), IsEmpty()) << text;
}

TEST_F(Bridge, LegsThatAreThereReachAPageThatComesAnew) {
  CRouteLeg leg;
  leg.route = MakeRoute(1000, 60);
  lists[0].points[2].SetRouteLeg(leg);
  log.clear();
  bridge.OnReady("{}");
  EXPECT_THAT(log, Contains("AddRoute(0, 2)"));
}

TEST_F(Bridge, SignalsWakeTheProgramBehindTheNavigation) {
  log.clear();
  EXPECT_FALSE(bridge.OnNavigate("signal:ready:%7B%22software%22%3A%7B%22version%22%3A2%7D%7D"));
  EXPECT_THAT(log, IsEmpty());
  posts.Pump();
  EXPECT_THAT(log, Contains("ShowUpdateWindow()"));
}

TEST_F(Bridge, OtherSignalsAreIgnored) {
  log.clear();
  EXPECT_FALSE(bridge.OnNavigate("signal:"));
  EXPECT_FALSE(bridge.OnNavigate("signal::{}"));
  EXPECT_FALSE(bridge.OnNavigate("signal:other:{}"));
  EXPECT_EQ(posts.Pump(), 0u);
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(Bridge, ASignalBehindTheEndOfTheWindowIsForgotten) {
  {
    PlannerBridge other(
        {window, settings, services, posts, {&itinerary, &results, &favorites, &pois}, {}, {}});
    other.OnNavigate("signal:ready:{}");
  }
  log.clear();
  posts.Pump();
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(Bridge, LinksOpenOutside) {
  log.clear();
  for (const char* const url : {"about:blank", "javascript:void(0)", "corvane://planner/page.html"})
    EXPECT_TRUE(bridge.OnNavigate(url)) << url;
  EXPECT_THAT(log, IsEmpty());
  for (const char* const url :
       {"https://a.example/x", "HTTP://a.example", "mailto:a@b.example", "geo:1,2", "tel:123"}) {
    log.clear();
    EXPECT_FALSE(bridge.OnNavigate(url)) << url;
    EXPECT_THAT(log, ElementsAre(std::string("outside ") + url));
  }
  log.clear();
  for (const char* const url : {"file:///etc/passwd", "tomtomhome:geo:lat=1",
                                "corvane://planner/other.html", "data:text/html,x", "about:config",
                                "Signal:ready:{}", "", "x", "//a.example", "vbscript:x"})
    EXPECT_FALSE(bridge.OnNavigate(url)) << url;
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(Bridge, ALoadFailureIsAskedAboutAndTriedAgain) {
  log.clear();
  window.answers = {kAnswerRetry};
  bridge.OnNavigationError(0x800C0005);
  bridge.OnTimer(7);
  bridge.OnTimer(1);
  EXPECT_THAT(log,
              ElementsAre("box 21 Corvane Map detected a network error. Please check your network "
                          "connection an try again.\n Error 0x800C0005 (The server or proxy was "
                          "not found.)",
                          "timer 1 100", "timer 1 stops", "reload"));
  log.clear();
  bridge.OnNavigationError(0x80004005);
  EXPECT_THAT(log,
              ElementsAre("box 21 Corvane Map detected a network error. Please check your network "
                          "connection an try again.\n Error 0x80004005 (Internal error.)"));
  log.clear();
  bridge.OnNavigationError(0);
  EXPECT_THAT(log, IsEmpty());
  EXPECT_EQ(ReportNavigationError(window, 0), 1);
}

TEST_F(Bridge, EveryLoadFailureHasItsText) {
  const char* const texts[] = {
      "The URL could not be parsed.",
      "No Internet session was established.",
      "The attempt to connect to the Internet has failed.",
      "The server or proxy was not found.",
      "The object was not found.",
      "An Internet connection was established, but the data cannot be retrieved.",
      "The download has failed (the connection was interrupted).",
      "Authentication is needed to access the object.",
      "The object is not in one of the acceptable MIME types.",
      "The Internet connection has timed out.",
      "The request was invalid.",
      "The protocol is not known and no pluggable protocols have been entered that match.",
      "A security problem was encountered.",
      "The object could not be loaded.",
      "CoCreateInstance failed.",
      "Use the default protocol handler.",
      "Use the default settings.",
      "The requested option is unknown.",
      "The request is being redirected.",
      "The request is being redirected to a directory.",
      "The requested resource could not be locked.",
  };
  for (uint32_t i = 0; i < std::size(texts); ++i) {
    log.clear();
    ReportNavigationError(window, 0x800C0002 + i);
    EXPECT_TRUE(log[0].ends_with(fmt::format("0x{:08X} ({})", 0x800C0002 + i, texts[i]))) << log[0];
  }
}

TEST_F(Bridge, NothingReachesAPageWhoseWindowHasGone) {
  BringUp();
  bridge.Close();
  itinerary.InsertPoint(0, MakePoint(1, 2, "X"));
  bridge.OnReady("{}");
  bridge.OnTimer(1);
  bridge.OnNavigationError(0x800C0005);
  bridge.SettingsChanged();
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(Bridge, SettingsChangedTellsThePageAndTheTotals) {
  BringUp();
  bridge.SettingsChanged();
  EXPECT_THAT(log, ElementsAre("totals ", "SettingsChanged()"));
}

TEST_F(Bridge, PlannerScriptWithoutAPageThrows) {
  CPlannerScript script(nullptr);
  try {
    script.AutoViewMap();
    FAIL();
  } catch (const ScriptError& failure) {
    EXPECT_EQ(failure.number, 0x80020001);
  }
  EXPECT_THROW(script.GetMaps(), ScriptError);
}

TEST_F(Bridge, EveryPageFunctionGetsItsArguments) {
  CPlannerScript script(&page);
  log.clear();
  script.InitMap("json");
  script.NewPinList(1);
  script.ClearPushPins(2);
  script.RefreshPushPins(3, 4);
  script.ViewPushPin(5, 6);
  script.DelPushPin(7, 8);
  script.InsertPushPin(9, 10);
  script.AddRoute(11, 12);
  script.ClearRoutes(13);
  script.AutoViewMap();
  script.MapClickEnabled(true);
  script.CloseInfoWindow();
  script.ShowUpdateWindow();
  EXPECT_THAT(log, ElementsAre("InitMap(json)", "NewPinList(1)", "ClearPushPins(2)",
                               "RefreshPushPins(3, 4)", "ViewPushPin(5, 6)", "DelPushPin(7, 8)",
                               "InsertPushPin(9, 10)", "AddRoute(11, 12)", "ClearRoutes(13)",
                               "AutoViewMap()", "MapClickEnabled(true)", "CloseInfoWindow()",
                               "ShowUpdateWindow()"));
}

}  // namespace
