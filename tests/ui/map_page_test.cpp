#include <QPushButton>
#include <QWebEngineView>
#include <csignal>
#include <memory>
#include <optional>

#include "planner/point_list_view.h"
#include "tests/ui/window_fixture.h"
#include "ui/itinerary_pane.h"
#include "ui/map_view.h"
#include "ui/planner_page.h"
#include "ui/point_table.h"
#include "ui/workspace.h"

namespace {

class MapPageTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    Open();
    ASSERT_TRUE(WaitUntil([this] { return Stops().planner != nullptr; }));
  }

  std::string NamesOfStops() {
    std::string names;
    for (const CGpsPoint& point : m_window->Work().driver.current.points)
      names += (names.empty() ? "" : ",") + point.name;
    return names;
  }

  /// The value of an expression on the page, as text.
  QString Ask(const QString& expression) {
    // Outlives this call: an answer may come late.
    const auto answer = std::make_shared<std::optional<QString>>();
    m_window->Map().Page().runJavaScript(
        QStringLiteral("(() => { try { return String(%1); } catch (e) { return 'error ' + "
                       "e.number; } })()")
            .arg(expression),
        [answer](const QVariant& value) { *answer = value.toString(); });
    EXPECT_TRUE(WaitUntil([&] { return answer->has_value(); }));
    return answer->value_or(QString());
  }
};

TEST_F(MapPageTest, ThePageSeesTheItinerary) {
  OpenStops(3);
  EXPECT_EQ(Ask("external.GetCount(0)"), "3");
  EXPECT_EQ(Ask("external.GetPoint(0, 1).address"), "Stop 2");
  EXPECT_EQ(Ask("external.GetPoint(0, 2).lat"), "48.12");
  EXPECT_EQ(Ask("JSON.parse(external.GetPins(0, 0, 2)).length"), "2");
}

TEST_F(MapPageTest, UnknownNamesAndBadIndicesFailWithTheirNumbers) {
  EXPECT_EQ(Ask("external.NoSuchName"), "error " + QString::number(static_cast<int>(0x80020006)));
  EXPECT_EQ(Ask("external.GetPoint(0, 9)"),
            "error " + QString::number(static_cast<int>(0x8002000B)));
  EXPECT_EQ(Ask("external.GetPoint(0)"), "error " + QString::number(static_cast<int>(0x8002000E)));
  EXPECT_EQ(Ask("typeof external.then"), "undefined");
}

TEST_F(MapPageTest, EditsOfThePageReachTheList) {
  OpenStops(2);
  Ask("external.AddPoint(0, {lat: 48.5, lng: 7.5, address: 'New'})");
  EXPECT_EQ(m_window->Work().driver.current.Count(), 3u);
  EXPECT_EQ(m_window->Pane().Stops().RowCount(), 3u);
  EXPECT_EQ(m_window->Work().driver.current.At(2).name, "New");
  Ask("external.DeletePoint(0, 0)");
  EXPECT_EQ(m_window->Work().driver.current.At(0).name, "Stop 2");
}

TEST_F(MapPageTest, SettingsAreLive) {
  m_settings->distMiles = true;
  EXPECT_EQ(Ask("external.Settings.DistMiles"), "true");
  EXPECT_EQ(Ask("external.Settings().DistMiles"), "true");
  Ask("external.Settings.DistMiles = false");
  EXPECT_FALSE(m_settings->distMiles);
}

TEST_F(MapPageTest, APromptOfThePageIsRefused) {
  EXPECT_EQ(Ask("prompt('secret', '{}')"), "null");
  EXPECT_EQ(Ask("confirm('?')"), "false");
}

TEST_F(MapPageTest, FramesGetNothing) {
  EXPECT_EQ(Ask("(() => { const frame = document.createElement('iframe');"
                "document.body.append(frame);"
                "return String(typeof frame.contentWindow.external.GetCount); })()"),
            "undefined");
}

TEST_F(MapPageTest, CallsReachThePageInTheirOrder) {
  Ask("(window.seen = [], window.ViewPushPin = (list, index) => seen.push(index), 0)");
  OpenStops(3);
  for (int32_t i = 0; i < 3; ++i) Stops().planner->ViewPushPin(0, i);
  EXPECT_TRUE(WaitUntil([this] { return Ask("seen.length") == "3"; }));
  EXPECT_EQ(Ask("seen"), "0,1,2");
}

TEST_F(MapPageTest, ManyStopsAreShownAtOnce) {
  for (int i = 0; i < 10'000; ++i) {
    CGpsPoint point;
    point.latitude = 40 + i * 0.001;
    point.longitude = 5 + i * 0.001;
    m_window->Work().driver.current.InsertAt(static_cast<size_t>(i), point);
  }
  Stops().Rebuild();
  EXPECT_EQ(m_window->Pane().Stops().RowCount(), 10'000u);
  EXPECT_EQ(Ask("external.GetCount(0)"), "10000");
}

TEST_F(MapPageTest, ThePageCanBeLoadedAnew) {
  OpenStops(2);
  m_window->Map().Reload();
  EXPECT_TRUE(WaitUntil([this] { return Stops().planner != nullptr; }));
  EXPECT_EQ(Ask("external.GetCount(0)"), "2");
}

TEST_F(MapPageTest, TheItineraryOutlivesAPageThatCrashes) {
  OpenStops(2);
  kill(static_cast<pid_t>(m_window->Map().Page().renderProcessPid()), SIGKILL);
  EXPECT_TRUE(WaitUntil([this] { return m_window->Map().IsDark(); }));
  EXPECT_EQ(Stops().planner, nullptr);
  EXPECT_EQ(m_window->Work().driver.current.Count(), 2u);
  Stops().ReverseAll();
  m_window->Map().findChild<QPushButton*>()->click();
  EXPECT_TRUE(WaitUntil([this] { return Stops().planner != nullptr; }));
  EXPECT_FALSE(m_window->Map().IsDark());
  EXPECT_EQ(Ask("external.GetPoint(0, 0).address"), "Stop 2");
}

TEST_F(MapPageTest, ThePageMayCrashAgainAndAgain) {
  OpenStops(2);
  for (int i = 0; i < 10; ++i) {
    kill(static_cast<pid_t>(m_window->Map().Page().renderProcessPid()), SIGKILL);
    ASSERT_TRUE(WaitUntil([this] { return m_window->Map().IsDark(); })) << i;
    EXPECT_EQ(m_window->Work().driver.current.Count(), 2u);
    auto* const reload = m_window->Map().findChild<QPushButton*>();
    ASSERT_TRUE(reload->isVisible() && reload->isEnabled());
    reload->click();
    ASSERT_TRUE(WaitUntil([this] { return Stops().planner != nullptr; })) << i;
    EXPECT_FALSE(m_window->Map().IsDark());
  }
  EXPECT_EQ(Ask("external.GetPoint(0, 1).address"), "Stop 2");
}

// Each call gives a value or throws an error with a number, which is below 0.
TEST_F(MapPageTest, OddArgumentsDoNothing) {
  OpenStops(2);
  const QString odd = Ask(R"((() => {
    const circle = {};
    circle.self = circle;
    const values = [undefined, true, -1, 1e308, NaN, '\ud800', [], {lat: 1}, {lat: NaN, lng: 1},
                    {lat: '1', lng: {}}, () => 0, external, external.Settings, Array(9).fill([]),
                    circle, Symbol('s'), 10n];
    const names = ['GetPoint', 'DeletePoint', 'RenamePoint', 'MovePoint', 'InsertPoint', 'AddPoint',
                   'GetPins', 'GetRoutePreview', 'GetLocation', 'HttpRequest', 'AddFavorite'];
    let failures = 0;
    for (const name of names) {
      for (const first of values) {
        if (typeof first === 'string') continue;
        for (const second of [0, '', {}, first]) {
          try { external[name](first, second, first, second, second); }
          catch (e) { failures += e.number < 0 ? 1 : 1000000; }
        }
      }
    }
    return failures;
  })())");
  EXPECT_GT(odd.toInt(), 500);
  EXPECT_LT(odd.toInt(), 1000000);
  EXPECT_EQ(NamesOfStops(), "Stop 1,Stop 2");
}

TEST_F(MapPageTest, HugeValuesAreNoTrouble) {
  OpenStops(2);
  Ask("external.RenamePoint(0, 0, 'x'.repeat(2000000))");
  EXPECT_EQ(m_window->Work().driver.current.At(0).name.size(), 2'000'000u);
  EXPECT_EQ(Ask("external.GetPoint(0, 0).address.length"), "2000000");
  Ask("external.GetCount(Array(1000000).fill(7))");
  Ask("external.GetPins(0, 0, 2147483647)");
  Stops().RenamePoint(0, "Stop 1");
  EXPECT_EQ(Ask("external.GetPoint(0, 0).address"), "Stop 1");
}

TEST_F(MapPageTest, FloodsOfPromptsAndSignalsReachNobody) {
  OpenStops(2);
  EXPECT_EQ(Ask("(() => { let given = 0; for (let i = 0; i < 1000; ++i) {"
                "if (prompt('x', '{}') !== null || confirm('?')) ++given; alert('!'); }"
                "return given; })()"),
            "0");
  EXPECT_EQ(Ask("(() => { for (let i = 0; i < 50; ++i) { open('file:///etc/passwd');"
                "location.href = 'signal:ready:%7B%7D'; } return 1; })()"),
            "1");
  EXPECT_TRUE(WaitUntil([this] { return Stops().planner != nullptr; }));
  EXPECT_EQ(Ask("external.GetCount(0)"), "2");
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(MapPageTest, APageThatEditsWhereverItIsCalledKeepsListAndRowsInStep) {
  OpenStops(2);
  Ask("(window.InsertPushPin = window.ViewPushPin = window.RefreshPushPins = () => {"
      "if (external.GetCount(0) === 60) return;"
      "external.RenamePoint(0, 0, 'a'); external.MovePoint(0, 1, {lat: 3, lng: 4});"
      "external.AddPoint(0, {lat: 1, lng: 2}); external.DeletePoint(0, 0);"
      "external.InsertPoint(0, 0, {lat: 1, lng: 2}, 'b', ''); }, 0)");
  Stops().SelectRow(0);
  EXPECT_TRUE(WaitUntil([this] { return m_window->Work().driver.current.Count() == 60; }));
  EXPECT_EQ(m_window->Pane().Stops().RowCount(), 60u);
  m_window->Map().Reload();
  EXPECT_TRUE(WaitUntil([this] { return Stops().planner != nullptr; }));
  EXPECT_EQ(Ask("external.GetCount(0)"), "60");
}

}  // namespace
