#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QFocusEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QProcess>
#include <QScreen>
#include <algorithm>

#include "tests/planner/desktop_home.h"
#include "tests/ui/window_fixture.h"
#include "ui/itinerary_pane.h"
#include "ui/point_table.h"
#include "ui/window_store.h"
#include "ui/workspace.h"

namespace {

// What stands before the user has done anything, and what a start is given.
class StartWindowTest : public WindowTest {
 protected:
  MainWindow& OpenWith(const QString& file) {
    m_window = std::make_unique<MainWindow>(*m_settings);
    m_window->Start(file);
    QTest::qWait(50);
    return *m_window;
  }
  size_t Count() const { return m_window->Work().driver.current.Count(); }
  QString OneStop() {
    return WriteFile("one.gpx",
                     "<?xml version=\"1.0\"?><gpx version=\"1.1\"><rte><name>One</name>"
                     "<rtept lat=\"48.1\" lon=\"7.2\"/></rte></gpx>");
  }
  static int RunWindowProgram(const QStringList& arguments) {
    return QProcess::execute(QStringLiteral(CORVANE_BINARY_FOLDER "/bin/corvanemap-window"),
                             arguments);
  }
  static void Leave(QLineEdit& field) {
    QFocusEvent leaving(QEvent::FocusOut, Qt::TabFocusReason);
    QApplication::sendEvent(&field, &leaving);
  }
};

TEST_F(StartWindowTest, WithoutAStoredPlaceTheWindowStandsInTheMiddle) {
  Open();
  // Beside the frame around it.
  const QPoint middle = m_window->screen()->availableGeometry().center();
  EXPECT_LE((m_window->frameGeometry().center() - middle).manhattanLength(), 8);
}

TEST_F(StartWindowTest, TheExportListHasARowForEachFormatThatCanBeWritten) {
  const DesktopHome desktop;
  {
    const MainWindow window(*m_settings);
    EXPECT_EQ(window.ExportList().count(), 61);
    EXPECT_EQ(window.ExportList().itemText(0), "Corvane route (*.rte)");
    EXPECT_EQ(window.ExportList().itemText(15), "Daimler NTG 5.5 GPX (*.gpx)");
    EXPECT_EQ(window.ExportList().itemText(60), "Tomtom MyDrive");
    EXPECT_EQ(window.ExportList().findText("TomTom Home"), -1);
  }
  desktop.AddProgram("tomtomhome");
  desktop.Install("tomtomhome", "tomtomhome %u", "x-scheme-handler/tomtomhome;");
  const MainWindow window(*m_settings);
  EXPECT_EQ(window.ExportList().count(), 62);
  EXPECT_EQ(window.ExportList().itemText(16), "Daimler NTG MBUX GPX (*.gpx)");
  EXPECT_EQ(window.ExportList().itemText(17), "TomTom Home");
}

TEST_F(StartWindowTest, TheCountAndTheAboutBoxHaveTheirPlaces) {
  Open();
  const auto shows = [this](const char* text) {
    const auto labels = m_window->findChildren<QLabel*>();
    return std::any_of(labels.begin(), labels.end(), [text](const QLabel* label) {
      return label->text() == QLatin1String(text);
    });
  };
  EXPECT_TRUE(shows("Waypoints: 0"));
  OpenStops(3);
  EXPECT_TRUE(WaitUntil([&] { return shows("Waypoints: 3"); }, 5000));
  const QAction& about = *m_window->menuBar()->actions().constLast()->menu()->actions().constLast();
  EXPECT_EQ(about.text(), "About Corvane Map...");
}

TEST_F(StartWindowTest, WhileAFileIsReadTheWindowWaits) {
  Open();
  ASSERT_EQ(QApplication::overrideCursor(), nullptr);
  m_window->Work().front.SetBusy(true);
  EXPECT_FALSE(m_window->centralWidget()->isEnabled());
  EXPECT_FALSE(m_window->menuBar()->isEnabled());
  EXPECT_FALSE(m_window->ExportList().isEnabled());
  ASSERT_NE(QApplication::overrideCursor(), nullptr);
  EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
  m_window->Work().front.SetBusy(false);
  EXPECT_TRUE(m_window->centralWidget()->isEnabled());
  EXPECT_TRUE(m_window->menuBar()->isEnabled());
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(StartWindowTest, AFileIsOpened) {
  OpenWith(OneStop());
  EXPECT_TRUE(WaitUntil([this] { return Count() == 1; }, 10'000));
  EXPECT_EQ(m_window->Pane().NameField().text(), "One");
}

TEST_F(StartWindowTest, AFileThatIsNotThereIsNotTold) {
  WhenBoxOpens([](QMessageBox& box) {
    ADD_FAILURE() << box.text().toStdString();
    box.reject();
  });
  OpenWith(QString::fromStdString(m_folder.PathTo("nowhere.gpx")));
  QTest::qWait(200);
  EXPECT_EQ(Count(), 0u);
}

TEST_F(StartWindowTest, ACsvFileIsReadWithTheStoredLayoutUnasked) {
  const QString file = WriteFile("a.csv", "7.2,48.1,Colmar\n");
  WhenDialogOpens([](QWidget& dialog) {
    ADD_FAILURE() << dialog.windowTitle().toStdString();
    dynamic_cast<QDialog&>(dialog).reject();
  });
  OpenWith(file);
  ASSERT_TRUE(WaitUntil([this] { return Count() == 1; }, 10'000));
  EXPECT_EQ(m_window->Work().driver.current.At(0).name, "Colmar");
}

TEST_F(StartWindowTest, WhatACrashLeftIsNotLostToAFile) {
  QDir().mkpath(QString::fromStdString(m_folder.PathTo("state/CorvaneMap")));
  m_folder.Put("state/CorvaneMap/99999999.gpx",
               "<?xml version=\"1.0\"?><gpx version=\"1.1\"><rte><name>Lost</name>"
               "<rtept lat=\"48.1\" lon=\"7.2\"/><rtept lat=\"48.2\" lon=\"7.3\"/></rte></gpx>");
  QString question;
  WhenBoxOpens([&](QMessageBox& box) {
    WhenBoxOpens([&](QMessageBox& second) {
      question = second.text();
      second.button(QMessageBox::No)->click();
    });
    box.button(QMessageBox::Yes)->click();
  });
  OpenWith(OneStop());
  EXPECT_TRUE(WaitUntil([&] { return !question.isEmpty(); }, 10'000));
  EXPECT_EQ(question, "Changes will be lost. Continue anyway?");
  EXPECT_EQ(m_window->Work().driver.current.name, "Lost");
  EXPECT_EQ(Count(), 2u);
}

TEST_F(StartWindowTest, TwoWordsConvertUnseen) {
  const QString file = OneStop();
  EXPECT_EQ(RunWindowProgram({file, "ITN", "LANG_GERMAN"}), 0);
  EXPECT_EQ(m_folder.Get("one.itn"), "720000|4810000||2|\r\n");
  EXPECT_EQ(RunWindowProgram({file, "xyz"}), 0);
  EXPECT_FALSE(m_folder.Has("one.xyz"));
}

TEST_F(StartWindowTest, ALinkThatWasNotTypedIsInterpretedToo) {
  Open();
  // Speech and other help set the whole text. Such a link has the room that it needs.
  QString link = QStringLiteral("https://www.google.com/maps/dir/");
  for (int i = 0; i < 90; ++i) link += QStringLiteral("48.%1,7.2000/").arg(1000 + i);
  ASSERT_GT(link.size(), 1000);
  QLineEdit& name = m_window->Pane().NameField();
  name.setText(link);
  WhenBoxOpens([](QMessageBox& box) { box.button(QMessageBox::Yes)->click(); });
  Leave(name);
  EXPECT_EQ(Count(), 90u);
  EXPECT_EQ(m_window->Work().driver.sourcePath, u"");
  EXPECT_EQ(WindowStore().RecentFiles(), QStringList());
}

TEST_F(StartWindowTest, ALinkThatIsDeclinedIsNotAskedAboutAgain) {
  Open();
  QLineEdit& name = m_window->Pane().NameField();
  name.setText(QStringLiteral("https://www.google.com/maps/dir/48.1,7.2/48.3,7.4/"));
  int questions = 0;
  const auto decline = [&questions](QMessageBox& box) {
    ++questions;
    box.button(QMessageBox::No)->click();
  };
  WhenBoxOpens(decline);
  Leave(name);
  WhenBoxOpens(decline);
  Leave(name);
  QTest::qWait(100);
  EXPECT_EQ(questions, 1);
  EXPECT_EQ(Count(), 0u);
}

TEST_F(StartWindowTest, AListThatTheUserDoesNotWantToSeeIsShownByAnEdit) {
  Open();
  OpenStops(3);
  Stops().ReverseAll();
  ASSERT_TRUE(Stops().CanUndo());
  WhenBoxOpens([](QMessageBox& box) { box.button(QMessageBox::No)->click(); });
  OpenStops(301);
  EXPECT_EQ(m_window->Pane().Stops().RowCount(), 0u);
  EXPECT_FALSE(Stops().CanUndo());
  Stops().ReverseAll();
  EXPECT_EQ(m_window->Pane().Stops().RowCount(), 301u);
  EXPECT_EQ(m_window->Work().driver.current.At(0).name, "Stop 301");
}

}  // namespace
