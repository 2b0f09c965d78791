#include <QAction>
#include <QComboBox>
#include <QWebEngineView>

#include "base/text.h"
#include "conversion/format_search.h"
#include "net/http_client.h"
#include "planner/hand_off.h"
#include "tests/planner/desktop_home.h"
#include "tests/planner/port_lock.h"
#include "tests/ui/window_fixture.h"
#include "ui/map_view.h"
#include "ui/planner_page.h"
#include "ui/workspace.h"

namespace {

// The window beside the companion program of a device.
class HandOverWindowTest : public WindowTest {
 protected:
  void SetUp() override {
    m_desktop.Install("home", "home %u", "x-scheme-handler/tomtomhome;");
    WindowTest::SetUp();
    Open();
  }

  const CItineraryFormat* Companion() const {
    return FindWriter(m_window->Work().driver.table, u"tth");
  }
  int EntryOf(const CItineraryFormat* row) const {
    const QComboBox& list = m_window->ExportList();
    for (int i = 0; i < list.count(); ++i) {
      if (list.itemData(i).value<const void*>() == row) return i;
    }
    return -1;
  }
  void Export() {
    QTest::qWait(5);
    m_window->Commands()[Command::kExport].trigger();
  }

  const PortLock m_port;
  DesktopHome m_desktop;
};

TEST_F(HandOverWindowTest, TheCompanionProgramFetchesTheItinerary) {
  OpenStops(2);
  ASSERT_GE(EntryOf(Companion()), 0);
  m_window->ExportList().setCurrentIndex(EntryOf(Companion()));
  Export();
  const std::string link = m_desktop.Opened();
  constexpr std::string_view kScheme = "tomtomhome:contentitem:";
  ASSERT_TRUE(link.starts_with(kScheme)) << link;
  const std::string description = HttpGet(Utf8ToWideLossy(link.substr(kScheme.size())));
  EXPECT_NE(description.find("<title mimetype=\"text/plain\">Line</title>"), std::string::npos)
      << description;
}

TEST_F(HandOverWindowTest, WithoutAProgramThatOpensItTheWindowSaysSo) {
  OpenStops(2);
  m_window->ExportList().setCurrentIndex(EntryOf(Companion()));
  m_desktop.RemoveProgram("xdg-open");
  QString told;
  WhenBoxOpens([&](QMessageBox& box) {
    told = box.text();
    box.button(QMessageBox::Ok)->click();
  });
  Export();
  EXPECT_FALSE(told.isEmpty());
}

TEST_F(HandOverWindowTest, AStopForADeviceThatIsNotThereIsTold) {
  ASSERT_TRUE(WaitUntil([this] { return Stops().planner != nullptr; }));
  OpenStops(2);
  QString told;
  WhenBoxOpens([&](QMessageBox& box) {
    told = box.text();
    box.button(QMessageBox::Ok)->click();
  });
  m_window->Map().Page().runJavaScript(
      QStringLiteral("setTimeout(() => external.SendToGps(%1, 0, 1))").arg(kTargetMioMore));
  EXPECT_TRUE(WaitUntil([&] { return !told.isEmpty(); }, 20'000));
  EXPECT_EQ(told,
            "mio-more is not installed: no program on this computer takes it. Install it, or save "
            "the itinerary as a file.");
  EXPECT_FALSE(m_desktop.HasOpened());
}

TEST_F(HandOverWindowTest, AStopGoesToADeviceThatIsThere) {
  ASSERT_TRUE(WaitUntil([this] { return Stops().planner != nullptr; }));
  OpenStops(2);
  m_window->Map().Page().runJavaScript(
      QStringLiteral("setTimeout(() => external.SendToGps(%1, 0, 1))").arg(kTargetTomTomHome));
  std::string link;
  EXPECT_TRUE(WaitUntil([&] { return m_desktop.HasOpened(); }, 20'000));
  EXPECT_EQ(m_desktop.Opened(), "tomtomhome:geo:lat=48.110000&long=7.210000&name=Stop%202");
}

}  // namespace
