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

}  // namespace
