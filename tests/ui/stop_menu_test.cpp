#include <QAction>
#include <QContextMenuEvent>
#include <QLabel>
#include <QMenu>

#include "tests/planner/desktop_home.h"
#include "tests/ui/window_fixture.h"
#include "ui/itinerary_pane.h"
#include "ui/point_table.h"

namespace {

class StopMenuTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    Open();
    OpenStops(2);
    Stops().SelectRow(1);
  }
  void TearDown() override {
    if (QWidget* const menu = QApplication::activePopupWidget()) menu->close();
    WindowTest::TearDown();
  }

  // As the menu key opens it.
  static QMenu* OpenMenu(PointTable& table) {
    QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, {});
    QApplication::sendEvent(table.viewport(), &event);
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
  }
  static QMenu* MapsOf(const QMenu& menu) {
    for (QAction* const action : menu.actions()) {
      if (action->text() == "Open in a web map") return action->menu();
    }
    return nullptr;
  }
  static QAction* Entry(const QMenu& menu, const char* text) {
    for (QAction* const action : menu.actions()) {
      if (action->text().remove('&') == text) return action;
    }
    return nullptr;
  }

  DesktopHome m_desktop;
};

TEST_F(StopMenuTest, AWebMapOpensOnlyWhenItIsChosen) {
  const QMenu* const menu = OpenMenu(m_window->Pane().Stops());
  ASSERT_NE(menu, nullptr);
  const QMenu* const maps = MapsOf(*menu);
  ASSERT_NE(maps, nullptr);
  for (const char* const map : {"Show in Bing Maps", "Show in TomTom Routes", "Show in HERE"})
    EXPECT_NE(Entry(*maps, map), nullptr) << map;
  EXPECT_FALSE(m_desktop.HasOpened());
  Entry(*maps, "Show in HERE")->trigger();
  EXPECT_EQ(m_desktop.Opened(), "https://www.here.com/map=48.110000,7.210000,16/title=Stop%202");
}

TEST_F(StopMenuTest, HasTheCommandsForTheStop) {
  const QMenu* const menu = OpenMenu(m_window->Pane().Stops());
  ASSERT_NE(menu, nullptr);
  EXPECT_TRUE(menu->actions().contains(&m_window->Commands()[Command::kEdit]));
  EXPECT_TRUE(menu->actions().contains(&m_window->Commands()[Command::kFavorite]));
  QTest::qWait(5);
  m_window->Commands()[Command::kRemove].trigger();
  EXPECT_EQ(m_window->Pane().Stops().RowCount(), 1u);
}

TEST_F(StopMenuTest, WithoutABrowserItSaysSo) {
  m_desktop.RemoveProgram("xdg-open");
  const QMenu* const menu = OpenMenu(m_window->Pane().Stops());
  ASSERT_NE(menu, nullptr);
  Entry(*MapsOf(*menu), "Show in Bing Maps")->trigger();
  EXPECT_EQ(m_window->findChild<QLabel*>(QStringLiteral("message"))->text(),
            "No web browser could be opened.");
}

}  // namespace
