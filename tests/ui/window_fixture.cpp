#include "tests/ui/window_fixture.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>
#include <QTimer>

#include "base/localized_text.h"
#include "planner/point_list_view.h"
#include "ui/workspace.h"

namespace {

const QString kWaiter = QStringLiteral("waits for a dialog");

bool IsProgress(QWidget& dialog) { return dialog.objectName() == QLatin1String("progress"); }

// Looks again and again until `act` has found what it waits for.
void WaitFor(const std::function<bool(QWidget& dialog)>& isWanted,
             const std::function<void(QWidget& dialog)>& act) {
  auto* const timer = new QTimer(qApp);
  timer->setObjectName(kWaiter);
  QObject::connect(timer, &QTimer::timeout, timer, [timer, isWanted, act] {
    QWidget* const dialog = QApplication::activeModalWidget();
    if (!dialog || !isWanted(*dialog)) return;
    timer->deleteLater();
    timer->stop();
    act(*dialog);
  });
  timer->start(20);
}

}  // namespace

void WhenDialogOpens(const std::function<void(QWidget& dialog)>& action) {
  WaitFor([](QWidget& dialog) { return !IsProgress(dialog); }, action);
}

void WhenProgressOpens(const std::function<void(QWidget& dialog)>& action) {
  WaitFor(IsProgress, action);
}

void WhenBoxOpens(const std::function<void(QMessageBox& box)>& action) {
  WaitFor([](QWidget& dialog) { return qobject_cast<QMessageBox*>(&dialog) != nullptr; },
          [action](QWidget& dialog) { action(dynamic_cast<QMessageBox&>(dialog)); });
}

void ChooseFile(QWidget& dialog, const QString& path) {
  auto& files = dynamic_cast<QFileDialog&>(dialog);
  // Leaves nothing selected; what is selected would go before what is typed.
  files.setDirectory(QFileInfo(path).path());
  // Selecting the file would not do: a line that has the focus keeps its name.
  files.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(path);
  static_cast<QDialog&>(files).accept();
}

QWidget* FindControl(const QWidget& root, const QString& accessibleName) {
  QWidget* hidden = nullptr;
  for (QWidget* const widget : root.findChildren<QWidget*>()) {
    if (widget->accessibleName() != accessibleName) continue;
    if (widget->isVisible()) return widget;
    hidden = widget;
  }
  return hidden;
}

void WindowTest::SetUp() {
  qputenv("XDG_STATE_HOME", QByteArray::fromStdString(m_folder.PathTo("state")));
  SetLanguage(Language::kEnglish);
  m_settings = std::make_unique<CSettings>();
  m_settings->Load();
}

void WindowTest::TearDown() {
  // A dialog that did not come must not be waited for in the next test.
  qDeleteAll(qApp->findChildren<QTimer*>(kWaiter));
  m_window.reset();
  m_settings.reset();
}

MainWindow& WindowTest::Open() {
  m_window = std::make_unique<MainWindow>(*m_settings);
  m_window->Start();
  return *m_window;
}

QString WindowTest::WriteFile(const std::string& name, const std::string& content) {
  m_folder.Put(name, content);
  return QString::fromStdString(m_folder.PathTo(name));
}

void WindowTest::OpenStops(int count) {
  std::string content = "<?xml version=\"1.0\"?>\n<gpx version=\"1.1\"><rte><name>Line</name>";
  for (int i = 0; i < count; ++i)
    content += "<rtept lat=\"48." + std::to_string(10 + i) + "\" lon=\"7." +
               std::to_string(20 + i) + "\"><name>Stop " + std::to_string(i + 1) +
               "</name></rtept>";
  content += "</rte></gpx>\n";
  m_window->OpenPath(WriteFile("line.gpx", content));
}

CPointListView& WindowTest::Stops() { return m_window->Work().itineraryView; }
