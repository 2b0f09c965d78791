#pragma once

#include <QApplication>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QTest>
#include <functional>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "planner/point_list_view.h"
#include "settings/settings.h"
#include "tests/settings_home.h"
#include "tests/temporary_folder.h"
#include "ui/main_window.h"

/// Lets events happen until `isDone`, or for so many milliseconds; gives whether it is.
inline bool WaitUntil(const std::function<bool()>& isDone, int milliseconds = 60'000) {
  QElapsedTimer timer;
  timer.start();
  while (!isDone() && timer.elapsed() < milliseconds) QTest::qWait(5);
  return isDone();
}

/// Does `action` as soon as a dialog is open that waits for the user; it gets the dialog.
void WhenDialogOpens(const std::function<void(QWidget& dialog)>& action);

/// Does `action` as soon as a progress window is open.
void WhenProgressOpens(const std::function<void(QWidget& dialog)>& action);

/// Does `action` as soon as a message box is open.
void WhenBoxOpens(const std::function<void(QMessageBox& box)>& action);

/// Types a file's path into an open or save dialog and accepts it.
void ChooseFile(QWidget& dialog, const QString& path);

/// The control of this accessible name below a widget, a visible one if there is any; null without
/// one.
QWidget* FindControl(const QWidget& root, const QString& accessibleName);

/// A real window with settings of its own, shown off the screen.
class WindowTest : public testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  MainWindow& Open();
  /// A file with these bytes in a folder of the test's own.
  QString WriteFile(const std::string& name, const std::string& content);
  /// Opens an itinerary of so many stops, one behind the other.
  void OpenStops(int count);
  CPointListView& Stops();

  SettingsHome m_home;
  TemporaryFolder m_folder;
  std::unique_ptr<CSettings> m_settings;
  std::unique_ptr<MainWindow> m_window;
};
