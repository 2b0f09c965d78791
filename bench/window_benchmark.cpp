// Opens a file in the real window and says, in milliseconds, how long it takes from the end of the
// reading until the map has drawn it; then it stays until its input ends, so that its memory can be
// looked at. The script "window" beside this file runs it.
//
//   window_benchmark FILE

#include <QApplication>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QPushButton>
#include <QSocketNotifier>
#include <QTimer>
#include <QWebEngineView>
#include <cstdio>
#include <functional>
#include <memory_resource>

#include <unistd.h>

#include "platform/large_pages.h"
#include "services/offline/offline_finders.h"
#include "services/service_registry.h"
#include "settings/settings.h"
#include "ui/itinerary_pane.h"
#include "ui/look.h"
#include "ui/main_window.h"
#include "ui/map_view.h"
#include "ui/planner_page.h"
#include "ui/point_table.h"
#include "ui/window_program.h"
#include "ui/workspace.h"

namespace {

// Each of the map's canvases is drawn in a frame of its own.
constexpr char kAfterTheFrames[] =
    "(() => { let left = 8; const frame = () => { if (--left > 0) requestAnimationFrame(frame);"
    " else window.isDrawn = true; }; requestAnimationFrame(frame); })()";

void WaitUntil(const std::function<bool()>& isDone) {
  while (!isDone()) QApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
}

// The clock begins with the answer to the question about many points, which comes behind the read;
// a file of few points has none.
void AnswerTheQuestion(QElapsedTimer& clock) {
  auto* const timer = new QTimer(qApp);
  QObject::connect(timer, &QTimer::timeout, timer, [timer, &clock] {
    auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (!box) return;
    timer->deleteLater();
    timer->stop();
    clock.start();
    box->button(QMessageBox::Yes)->click();
  });
  timer->start(2);
}

bool IsDrawn(MainWindow& window) {
  bool isDrawn = false;
  bool isAnswered = false;
  window.Map().Page().runJavaScript(QStringLiteral("window.isDrawn === true"),
                                    [&](const QVariant& value) {
                                      isDrawn = value.toBool();
                                      isAnswered = true;
                                    });
  WaitUntil([&] { return isAnswered; });
  return isDrawn;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  std::pmr::set_default_resource(&LargePages());
  PrepareApplication(Look::kLight);
  QApplication application(argc, argv);
  ApplyLook(application, Look::kLight);
  FillServiceRegistry(CServiceRegistry::Instance());
  RegisterOfflinePlaces(CServiceRegistry::Instance());
  CSettings settings;
  settings.Load();
  MainWindow window(settings);
  window.Start();
  WaitUntil([&] { return window.Work().itineraryView.planner != nullptr; });

  QElapsedTimer clock;
  clock.start();
  AnswerTheQuestion(clock);
  window.OpenPath(QString::fromLocal8Bit(argv[1]));
  window.Map().Page().runJavaScript(QLatin1String(kAfterTheFrames));
  WaitUntil([&] { return IsDrawn(window); });
  std::printf("%lld ms %zu rows\n", static_cast<long long>(clock.elapsed()),
              window.Pane().Stops().RowCount());
  std::fflush(stdout);

  QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
  QObject::connect(&input, &QSocketNotifier::activated, &application, &QApplication::quit);
  return QApplication::exec();
}
