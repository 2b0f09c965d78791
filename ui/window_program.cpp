#include "ui/window_program.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEvent>
#include <QFile>
#include <QTranslator>
#include <cstdlib>

#include "base/localized_text.h"
#include "base/text_ids.h"
#include "platform/console.h"
#include "platform/debug_log.h"
#include "services/service_registry.h"
#include "settings/settings.h"
#include "ui/accessible_lists.h"
#include "ui/icons.h"
#include "ui/look.h"
#include "ui/main_window.h"
#include "ui/page_files.h"
#include "ui/spoken_language.h"
#include "ui/text.h"

namespace {

/// Tells who debugs the program when it was to be seen first.
class FirstPaint : public QObject {
 public:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint) {
      DebugLog("window: painted after " + std::to_string(m_timer.elapsed()) + " ms");
      watched->removeEventFilter(this);
    }
    return false;
  }
  void Start() { m_timer.start(); }

 private:
  QElapsedTimer m_timer;
};

// Qt itself would end the program with a core dump when it finds no screen to draw on.
void EndWithoutDisplay(QtMsgType type, const QMessageLogContext&, const QString& message) {
  DebugLog("window: " + ToUtf8(message));
  if (type != QtFatalMsg) return;
  WriteError(ToUtf8(Text(kTextNoDisplay)) + '\n');
  std::_Exit(EXIT_FAILURE);
}

}  // namespace

void PrepareApplication(Look look) {
  Q_INIT_RESOURCE(window);
  PrepareLook(look);
  RegisterPageSchemes();
  QApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
}

int RunWindowProgram(int& argumentCount, char** arguments, const std::string& file,
                     std::vector<std::string> settingsMessages) {
  FirstPaint firstPaint;
  firstPaint.Start();
  const Look look = DesktopLook();
  PrepareApplication(look);
  const QtMessageHandler usual = qInstallMessageHandler(EndWithoutDisplay);
  QApplication application(argumentCount, arguments);
  qInstallMessageHandler(usual);
  QApplication::setApplicationName(QStringLiteral("corvanemap-window"));
  QApplication::setApplicationDisplayName(ProductTitle());
  QApplication::setDesktopFileName(QStringLiteral("corvanemap-window"));
  ApplyLook(application, look);
  NameListsForAssistiveTechnology();
  QTranslator translator;
  SpeakProgramLanguage(translator);

  CSettings& settings = CSettings::Instance();
  MainWindow window(settings);
  window.installEventFilter(&firstPaint);
  window.Start(QFile::decodeName(file.c_str()), std::move(settingsMessages));
  const int status = QApplication::exec();
  settings.SaveChanges();
  return status;
}
