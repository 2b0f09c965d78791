#include <QAction>
#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <cmath>
#include <cstdio>

#include "services/service_access.h"
#include "services/service_table.h"
#include "tests/loopback_server.h"
#include "tests/ui/window_fixture.h"
#include "ui/itinerary_pane.h"
#include "ui/point_table.h"
#include "ui/point_table_model.h"
#include "ui/status_line.h"
#include "ui/workspace.h"

namespace {

constexpr char kWay[] = R"({"code": "Ok", "routes": [{"duration": 600, "distance": 1500,)"
                        R"( "geometry": "_p~iF~ps|U_ulLnnqC_mqNvxq`@"}], "waypoints": []})";
constexpr char kNoWay[] = R"({"code": "NoRoute"})";

// A way between two stops that is as long as their order A, C, B, D makes it: the road from A to B
// leads over C.
std::string WayByLongitudes(const std::string& request) {
  double from = 0;
  double to = 0;
  const size_t place = request.find("/driving/");
  if (place == std::string::npos ||
      std::sscanf(request.c_str() + place, "/driving/%lf,%*f;%lf,%*f", &from, &to) != 2)
    return kNoWay;
  const auto alongTheRoad = [](double longitude) {
    return longitude == 8 ? 9 : longitude == 9 ? 8 : longitude;
  };
  const int metres = static_cast<int>(std::fabs(alongTheRoad(from) - alongTheRoad(to)) * 1000);
  return R"({"code": "Ok", "routes": [{"duration": 600, "distance": )" + std::to_string(metres) +
         R"(, "geometry": "_p~iF~ps|U_ulLnnqC_mqNvxq`@"}], "waypoints": []})";
}

// The window with a directions service of the test's own.
class CalculationWindowTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    ServiceValues values;
    values.url = m_server.Url();
    SetServiceValues({{"osrm", values}});
    m_settings->routeProvider = provider::kOsrm;
    m_settings->calculateAsked = true;
    Open();
    ASSERT_TRUE(WaitUntil([this] { return Stops().planner != nullptr; }));
  }
  void TearDown() override {
    WindowTest::TearDown();
    SetServiceValues({});
  }

  void Do(Command command) {
    QTest::qWait(5);
    m_window->Commands()[command].trigger();
  }
  QString Cell(int row, RouteColumn column) {
    const QAbstractItemModel& model = *m_window->Pane().Stops().model();
    return model.index(row, PointTableModel::ColumnOf(column)).data().toString();
  }
  QString Totals() const {
    return dynamic_cast<QLabel&>(*FindControl(*m_window, "Distance")).text();
  }

  QString FourStops() {
    return WriteFile("four.gpx",
                     "<?xml version=\"1.0\"?><gpx version=\"1.1\"><rte><name>Four</name>"
                     "<rtept lat=\"48\" lon=\"7\"><name>A</name></rtept>"
                     "<rtept lat=\"48\" lon=\"8\"><name>B</name></rtept>"
                     "<rtept lat=\"48\" lon=\"9\"><name>C</name></rtept>"
                     "<rtept lat=\"48\" lon=\"10\"><name>D</name></rtept></rte></gpx>");
  }
  // Does something in the midst of a calculation: as soon as the service has been asked.
  void WhenAsked(const std::function<void()>& action) {
    auto* const timer = new QTimer(m_window.get());
    QObject::connect(timer, &QTimer::timeout, timer, [this, timer, action] {
      if (m_server.Connections() == 0) return;
      timer->deleteLater();
      timer->stop();
      action();
    });
    timer->start(10);
  }
  std::string Order() const {
    std::string order;
    for (const CGpsPoint& point : m_window->Work().driver.current.points) order += point.name;
    return order;
  }

  std::atomic<bool> m_isSlow = false;
  std::atomic<bool> m_measures = false;
  std::atomic<int> m_fails = 0;
  LoopbackServer m_server{LoopbackServer::Talk([this](LoopbackConnection& connection) {
    const std::string request = connection.ReadRequest();
    if (request.empty()) return;
    if (m_isSlow && !connection.Sleep(std::chrono::seconds(30))) return;
    const std::string way = m_measures ? WayByLongitudes(request) : kWay;
    connection.Send(HttpReply(m_fails-- > 0 ? kNoWay : way));
  })};
};

TEST_F(CalculationWindowTest, ShowsDistanceAndDuration) {
  OpenStops(3);
  Do(Command::kCalculate);
  EXPECT_EQ(Cell(1, RouteColumn::kDistance), "1.5km / 1.5km");
  EXPECT_EQ(Cell(2, RouteColumn::kDistance), "1.5km / 3.0km");
  EXPECT_EQ(Cell(2, RouteColumn::kDuration), "00:10 / 00:20");
  EXPECT_EQ(Totals(), "Distance: 3.0km (00:20)");
  Do(Command::kClearRoute);
  EXPECT_EQ(Cell(1, RouteColumn::kDistance), " / ---");
}

TEST_F(CalculationWindowTest, AFailedLegIsToldAndMarked) {
  OpenStops(3);
  m_fails = 1;
  QString question;
  WhenBoxOpens([&](QMessageBox& box) {
    question = box.text();
    ASSERT_NE(box.checkBox(), nullptr);
    EXPECT_EQ(box.checkBox()->text(), "Do the same for the rest");
    box.button(QMessageBox::Ok)->click();
  });
  Do(Command::kCalculate);
  EXPECT_EQ(question,
            "Unable to get directions from Stop 1 to Stop 2. Please check waypoints locations and "
            "try again.");
  EXPECT_EQ(Cell(1, RouteColumn::kDistance), " / ---");
  EXPECT_EQ(Cell(2, RouteColumn::kDistance), "1.5km / ---");
  const QAbstractItemModel& model = *m_window->Pane().Stops().model();
  const int column = PointTableModel::ColumnOf(RouteColumn::kDistance);
  EXPECT_EQ(model.index(1, column).data(Qt::ToolTipRole).toString(),
            "No way to this stop was found.");
  EXPECT_FALSE(model.index(2, column).data(Qt::ToolTipRole).isValid());
  EXPECT_EQ(Totals(), "");
}

TEST_F(CalculationWindowTest, TheRestCanBeAnsweredAtOnce) {
  OpenStops(4);
  m_fails = 3;
  int boxes = 0;
  WhenBoxOpens([&](QMessageBox& box) {
    ++boxes;
    box.checkBox()->setChecked(true);
    box.button(QMessageBox::Ok)->click();
  });
  Do(Command::kCalculate);
  EXPECT_EQ(boxes, 1);
  EXPECT_EQ(m_server.Connections(), 3);
}

TEST_F(CalculationWindowTest, CancelEndsAWaitAndTheWindowLivesMeanwhile) {
  OpenStops(3);
  m_isSlow = true;
  int turns = 0;
  QTimer clock;
  QObject::connect(&clock, &QTimer::timeout, &clock, [&turns] { ++turns; });
  clock.start(10);
  WhenProgressOpens([&](QWidget& dialog) {
    QTimer::singleShot(300, &dialog, [&dialog] { dialog.findChild<QPushButton*>()->click(); });
  });
  QElapsedTimer timer;
  timer.start();
  Do(Command::kCalculate);
  EXPECT_LT(timer.elapsed(), 20'000);
  EXPECT_GT(turns, 5);
  EXPECT_EQ(Cell(1, RouteColumn::kDistance), " / ---");
}

TEST_F(CalculationWindowTest, OptimisingShortensTheWayAndCanBeTakenBack) {
  const QString file =
      WriteFile("crossed.gpx",
                "<?xml version=\"1.0\"?><gpx version=\"1.1\"><rte><name>Crossed</name>"
                "<rtept lat=\"48\" lon=\"7\"><name>A</name></rtept>"
                "<rtept lat=\"48\" lon=\"9\"><name>C</name></rtept>"
                "<rtept lat=\"48\" lon=\"8\"><name>B</name></rtept>"
                "<rtept lat=\"48\" lon=\"10\"><name>D</name></rtept></rte></gpx>");
  m_window->OpenPath(file);
  Do(Command::kOptimise);
  EXPECT_EQ(m_window->Work().driver.current.At(1).name, "B");
  EXPECT_EQ(m_window->Work().driver.current.At(2).name, "C");
  EXPECT_EQ(m_server.Connections(), 0);
  Do(Command::kUndo);
  EXPECT_EQ(m_window->Work().driver.current.At(1).name, "C");
}

TEST_F(CalculationWindowTest, OptimisingByRoadAsksForTheWaysBetweenTheStops) {
  m_settings->optimizeUseDirection = true;
  m_measures = true;
  m_window->OpenPath(FourStops());
  Do(Command::kOptimise);
  EXPECT_EQ(Order(), "ACBD");
  EXPECT_GT(m_server.Connections(), 3);
  Do(Command::kUndo);
  EXPECT_EQ(Order(), "ABCD");
}

TEST_F(CalculationWindowTest, OptimisingByRoadShowsProgressAndCanBeCancelled) {
  m_settings->optimizeUseDirection = true;
  m_isSlow = true;
  m_window->OpenPath(FourStops());
  QString told;
  int turns = 0;
  QTimer clock;
  QObject::connect(&clock, &QTimer::timeout, &clock, [&turns] { ++turns; });
  clock.start(10);
  WhenProgressOpens([&](QWidget& dialog) {
    told = dialog.findChild<QLabel*>()->text();
    EXPECT_NE(dialog.findChild<QProgressBar*>(), nullptr);
    QTimer::singleShot(200, &dialog, [&dialog] { dialog.findChild<QPushButton*>()->click(); });
  });
  Do(Command::kOptimise);
  EXPECT_FALSE(told.isEmpty());
  EXPECT_GT(turns, 5);
  EXPECT_EQ(Order(), "ABCD");
  EXPECT_EQ(m_server.Connections(), 1);
}

TEST_F(CalculationWindowTest, AnEditDoesNotWaitForItsWays) {
  OpenStops(3);
  m_settings->autoCalc = true;
  m_isSlow = true;
  bool hasComeBack = false;
  bool livesMeanwhile = false;
  // The next edit, which overtakes it.
  WhenAsked([&] {
    livesMeanwhile = hasComeBack;
    m_isSlow = false;
    m_window->Commands()[Command::kInvert].trigger();
  });
  Do(Command::kInvert);
  hasComeBack = true;
  EXPECT_EQ(Totals(), "");
  EXPECT_TRUE(WaitUntil([this] { return Totals() == "Distance: 3.0km (00:20)"; }, 20'000));
  EXPECT_TRUE(livesMeanwhile);
  EXPECT_EQ(m_window->Work().driver.current.At(0).name, "Stop 1");
}

TEST_F(CalculationWindowTest, CalculateShowsTheProgressOfWhatAnEditHasBegun) {
  OpenStops(3);
  m_settings->autoCalc = true;
  m_isSlow = true;
  bool hasProgress = false;
  WhenAsked([this] { m_window->Commands()[Command::kCalculate].trigger(); });
  WhenProgressOpens([&](QWidget& dialog) {
    hasProgress = true;
    m_isSlow = false;
    dialog.findChild<QPushButton*>()->click();
  });
  Do(Command::kInvert);
  EXPECT_TRUE(WaitUntil([&] { return hasProgress; }, 20'000));
}

TEST_F(CalculationWindowTest, TheWindowClosesInTheMidstOfACalculation) {
  OpenStops(3);
  m_settings->autoCalc = true;
  m_isSlow = true;
  bool isClosed = false;
  WhenAsked([&] {
    WhenBoxOpens([](QMessageBox& box) { box.button(QMessageBox::Yes)->click(); });
    isClosed = m_window->close();
  });
  Do(Command::kInvert);
  EXPECT_TRUE(WaitUntil([&] { return isClosed; }, 20'000));
}

TEST_F(CalculationWindowTest, TheFirstCalculationAsksForAService) {
  m_settings->calculateAsked = false;
  OpenStops(2);
  QString title;
  WhenDialogOpens([&](QWidget& dialog) {
    title = dialog.windowTitle();
    dynamic_cast<QDialog&>(dialog).reject();
  });
  Do(Command::kCalculate);
  EXPECT_EQ(title, "Calculate");
  EXPECT_EQ(m_server.Connections(), 0);
  EXPECT_FALSE(m_settings->calculateAsked);
}

}  // namespace
