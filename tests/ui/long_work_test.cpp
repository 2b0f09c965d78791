#include <QDialog>
#include <QPushButton>

#include <fmt/format.h>

#include "tests/ui/window_fixture.h"
#include "ui/itinerary_pane.h"
#include "ui/point_table.h"
#include "ui/workspace.h"

namespace {

constexpr size_t kManyPoints = 1'000'000;

std::string ManyPoints() {
  std::string content =
      "<?xml version=\"1.0\"?>\n<gpx version=\"1.1\"><trk><name>Far</name><trkseg>";
  for (size_t i = 0; i < kManyPoints; ++i)
    fmt::format_to(std::back_inserter(content), "<trkpt lat=\"{:.6f}\" lon=\"{:.6f}\"/>\n",
                   40 + static_cast<double>(i) * 1e-5, 5 + static_cast<double>(i) * 1e-5);
  return content + "</trkseg></trk></gpx>\n";
}

// Counts the turns of the event loop: a window that waits has none.
class LongWorkTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    Open();
    QObject::connect(&m_clock, &QTimer::timeout, &m_clock, [this] {
      m_longestWait = std::max(m_longestWait, m_since.restart());
      ++m_turns;
    });
    m_since.start();
    m_clock.start(20);
  }

  QTimer m_clock;
  QElapsedTimer m_since;
  qint64 m_longestWait = 0;
  int m_turns = 0;
};

TEST_F(LongWorkTest, TheWindowLivesWhileAMillionPointsAreRead) {
  const QString file = WriteFile("far.gpx", ManyPoints());
  m_turns = 0;
  // The question about so many points.
  WhenBoxOpens([](QMessageBox& box) { box.button(QMessageBox::No)->click(); });
  m_window->OpenPath(file);
  EXPECT_EQ(m_window->Work().driver.current.Count(), kManyPoints);
  EXPECT_GT(m_turns, 3);
}

}  // namespace
