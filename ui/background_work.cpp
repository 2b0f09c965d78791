#include "ui/background_work.h"

#include <QApplication>
#include <QEventLoop>
#include <QThread>
#include <QTimer>
#include <exception>
#include <thread>

#include "ui/progress_dialog.h"
#include "ui/text.h"

namespace {

constexpr int kMoment = 400;  // milliseconds
constexpr int kLook = 100;
constexpr int32_t kNoProvider = -1;

}  // namespace

void RunInBackground(QWidget* parent, uint32_t textId, const WorkProgress& progress,
                     std::stop_source& stop, const std::function<void()>& work) {
  QEventLoop loop;
  std::exception_ptr failure;
  std::thread thread([&] {
    try {
      work();
    } catch (...) {
      failure = std::current_exception();
    }
    QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
  });

  ProgressDialog window(parent);
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, &loop, [&] {
    if (!window.IsOpen()) {
      window.Open(ToUtf8(PlainText(textId)), kNoProvider, 0);
      timer.setInterval(kLook);
    }
    window.SetProgress(progress.done, progress.inAll);
    if (window.IsCancelled()) stop.request_stop();
  });
  timer.start(kMoment);
  loop.exec();
  thread.join();
  if (failure) std::rethrow_exception(failure);
}

void RunOnWindowThread(const std::function<void()>& function) {
  if (QThread::currentThread() == qApp->thread()) {
    function();
    return;
  }
  QMetaObject::invokeMethod(qApp, function, Qt::BlockingQueuedConnection);
}
