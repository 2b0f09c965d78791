#include <QAction>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>

#include "conversion/format_search.h"
#include "tests/ui/window_fixture.h"
#include "ui/itinerary_pane.h"
#include "ui/point_table.h"
#include "ui/workspace.h"

namespace {

class MainWindowTest : public WindowTest {
 protected:
  std::vector<std::string> Names() {
    std::vector<std::string> names;
    for (const CGpsPoint& point : m_window->Work().driver.current.points)
      names.push_back(point.name);
    return names;
  }
  // Commands are switched on and off a moment behind each change.
  void Do(Command command) {
    QTest::qWait(5);
    m_window->Commands()[command].trigger();
  }
};

using NameList = std::vector<std::string>;

TEST_F(MainWindowTest, AFileFillsListAndNameField) {
  Open();
  OpenStops(3);
  EXPECT_EQ(Names(), (NameList{"Stop 1", "Stop 2", "Stop 3"}));
  EXPECT_EQ(m_window->Pane().Stops().RowCount(), 3u);
  EXPECT_EQ(m_window->Pane().NameField().text(), "Line");
}

TEST_F(MainWindowTest, TheExportListOpensOnEntry15) {
  Open();
  const auto rows = ExportList(m_window->Work().driver.table);
  EXPECT_EQ(m_window->ExportList().count(), static_cast<int>(rows.size()));
  EXPECT_EQ(m_window->ExportList().currentIndex(), 15);
}

TEST_F(MainWindowTest, AStoredExportEntryBeyondTheListIsEntry15) {
  m_settings->exportIndex = 200;
  Open();
  EXPECT_EQ(m_window->ExportList().currentIndex(), 15);
}

TEST_F(MainWindowTest, TheChosenExportEntryIsRemembered) {
  m_settings->exportIndex = 3;
  Open();
  EXPECT_EQ(m_window->ExportList().currentIndex(), 3);
  m_window->ExportList().setCurrentIndex(7);
  EXPECT_EQ(m_settings->exportIndex, 7);
}

TEST_F(MainWindowTest, MovesInvertsAndRemovesAndTakesItBack) {
  Open();
  OpenStops(3);
  Stops().SelectRow(0);
  Do(Command::kDown);
  EXPECT_EQ(Names(), (NameList{"Stop 2", "Stop 1", "Stop 3"}));
  Do(Command::kUp);
  EXPECT_EQ(Names(), (NameList{"Stop 1", "Stop 2", "Stop 3"}));
  Do(Command::kInvert);
  EXPECT_EQ(Names(), (NameList{"Stop 3", "Stop 2", "Stop 1"}));
  Stops().SelectRow(1);
  QTest::qWait(1);
  Do(Command::kRemove);
  EXPECT_EQ(Names(), (NameList{"Stop 3", "Stop 1"}));
  QTest::qWait(1);
  Do(Command::kUndo);
  EXPECT_EQ(Names(), (NameList{"Stop 3", "Stop 2", "Stop 1"}));
  QTest::qWait(1);
  Do(Command::kUndo);
  EXPECT_EQ(Names(), (NameList{"Stop 1", "Stop 2", "Stop 3"}));
  QTest::qWait(1);
  Do(Command::kRedo);
  EXPECT_EQ(Names(), (NameList{"Stop 3", "Stop 2", "Stop 1"}));
}

TEST_F(MainWindowTest, RemovingAllStopsAsks) {
  Open();
  OpenStops(2);
  QTest::qWait(1);
  QString question;
  WhenBoxOpens([&](QMessageBox& box) {
    question = box.text();
    box.button(QMessageBox::No)->click();
  });
  Do(Command::kRemoveAll);
  EXPECT_EQ(question, "Do you want to really remove all the waypoints ?");
  EXPECT_EQ(Names().size(), 2u);
  WhenBoxOpens([](QMessageBox& dialog) { dialog.button(QMessageBox::Yes)->click(); });
  Do(Command::kRemoveAll);
  EXPECT_TRUE(Names().empty());
}

TEST_F(MainWindowTest, ManyPointsAreAskedAbout) {
  Open();
  std::string question;
  WhenBoxOpens([&](QMessageBox& dialog) {
    question = dialog.text().toStdString();
    dialog.button(QMessageBox::No)->click();
  });
  OpenStops(301);
  EXPECT_TRUE(question.starts_with("The current itinerary contains a lot of points."));
  EXPECT_EQ(Names().size(), 301u);
  EXPECT_EQ(m_window->Pane().NameField().text(), "");
}

TEST_F(MainWindowTest, OfSeveralListsTheUserChooses) {
  Open();
  const QString file = WriteFile("two.gpx",
                                 "<?xml version=\"1.0\"?><gpx version=\"1.1\">"
                                 "<rte><name>A</name><rtept lat=\"1\" lon=\"2\"/></rte>"
                                 "<rte><name>B</name><rtept lat=\"3\" lon=\"4\"/>"
                                 "<rtept lat=\"5\" lon=\"6\"/></rte></gpx>");
  QString title;
  WhenDialogOpens([&](QWidget& dialog) {
    title = dialog.windowTitle();
    auto* const buttons = dialog.findChild<QDialogButtonBox*>();
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Down);
    buttons->button(QDialogButtonBox::Ok)->click();
  });
  m_window->OpenPath(file);
  EXPECT_EQ(title, "Choose an itinerary");
  EXPECT_EQ(m_window->Pane().NameField().text(), "B");
  EXPECT_EQ(Names().size(), 2u);
}

TEST_F(MainWindowTest, ClosingWithUnsavedChangesAsks) {
  Open();
  OpenStops(2);
  Stops().ReverseAll();
  WhenBoxOpens([](QMessageBox& dialog) { dialog.button(QMessageBox::No)->click(); });
  EXPECT_FALSE(m_window->close());
  WhenBoxOpens([](QMessageBox& dialog) { dialog.button(QMessageBox::Yes)->click(); });
  EXPECT_TRUE(m_window->close());
}

TEST_F(MainWindowTest, TheWindowComesBackWhereItStood) {
  Open();
  m_window->setGeometry(60, 70, 700, 500);
  m_window->close();
  ASSERT_TRUE(m_settings->editorPosition);
  m_window.reset();
  Open();
  EXPECT_EQ(m_window->geometry(), QRect(60, 70, 700, 500));
}

TEST_F(MainWindowTest, AnUnreadableFileIsTold) {
  Open();
  QString text;
  WhenBoxOpens([&](QMessageBox& box) {
    text = box.text();
    box.button(QMessageBox::Ok)->click();
  });
  m_window->OpenPath(WriteFile("odd.xyz", "nothing"));
  EXPECT_EQ(text, "Unknown file format.");
}

}  // namespace
