#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QProcess>
#include <QToolButton>

#include "conversion/format_search.h"
#include "tests/ui/window_fixture.h"
#include "ui/itinerary_pane.h"
#include "ui/notice_bar.h"
#include "ui/point_table.h"
#include "ui/workspace.h"

namespace {

// Opening and exporting by the ways that a user has.
class FilesWindowTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    Open();
  }

  void Do(Command command) {
    QTest::qWait(5);
    m_window->Commands()[command].trigger();
  }
  size_t Count() const { return m_window->Work().driver.current.Count(); }

  void ChooseFormat(const WideString& key) {
    const CItineraryFormat* const row = FindWriter(m_window->Work().driver.table, key);
    ASSERT_NE(row, nullptr);
    QComboBox& list = m_window->ExportList();
    for (int i = 0; i < list.count(); ++i) {
      if (list.itemData(i).value<const void*>() == row) list.setCurrentIndex(i);
    }
    ASSERT_EQ(list.currentData().value<const void*>(), row);
  }
  QString TwoStops(const char* name, const char* comment) {
    return WriteFile(std::string(name) + ".gpx",
                     std::string("<?xml version=\"1.0\"?><gpx version=\"1.1\"><rte><name>") + name +
                         "</name><rtept lat=\"48.1\" lon=\"7.2\"><name>A</name>" + comment +
                         "</rtept><rtept lat=\"48.2\" lon=\"7.3\"><name>B</name></rtept>"
                         "</rte></gpx>");
  }
};

TEST_F(FilesWindowTest, TheOpenButtonOpensAndAppends) {
  const QString file = TwoStops("Tour", "");
  QString title;
  WhenDialogOpens([&](QWidget& dialog) {
    title = dialog.windowTitle();
    EXPECT_EQ(dialog.findChild<QCheckBox*>(), nullptr);
    ChooseFile(dialog, file);
  });
  Do(Command::kOpen);
  EXPECT_EQ(title, "Open");
  EXPECT_EQ(Count(), 2u);
  WhenDialogOpens([&](QWidget& dialog) {
    QCheckBox* const append = dialog.findChild<QCheckBox*>();
    ASSERT_NE(append, nullptr);
    EXPECT_EQ(append->text(), "Append to current itinerary");
    EXPECT_FALSE(append->isChecked());
    append->setChecked(true);
    ChooseFile(dialog, file);
  });
  Do(Command::kOpen);
  EXPECT_EQ(Count(), 4u);
}

TEST_F(FilesWindowTest, ADroppedFileIsOpened) {
  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(TwoStops("Dropped", "")), QUrl::fromLocalFile("/nowhere")});
  QDragEnterEvent enter({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(m_window.get(), &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent drop({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(m_window.get(), &drop);
  EXPECT_TRUE(WaitUntil([this] { return Count() == 2; }, 10'000));
  EXPECT_EQ(m_window->Pane().NameField().text(), "Dropped");
}

TEST_F(FilesWindowTest, AnExportThatHoldsEverythingIsQuiet) {
  m_window->OpenPath(TwoStops("Tour", ""));
  ChooseFormat(u"gpx:107");
  const QString target = QString::fromStdString(m_folder.PathTo("out.gpx"));
  WhenDialogOpens([&](QWidget& dialog) { ChooseFile(dialog, target); });
  Do(Command::kExport);
  EXPECT_NE(m_folder.Get("out.gpx").find("<name>B</name>"), std::string::npos);
  EXPECT_EQ(m_window->Notice().NoticeText(), "");
}

TEST_F(FilesWindowTest, WhatATargetCannotHoldIsTold) {
  m_window->OpenPath(TwoStops("Tour", "<cmt>Old town</cmt><ele>194</ele>"));
  ChooseFormat(u"itn");
  const QString target = QString::fromStdString(m_folder.PathTo("out.itn"));
  WhenDialogOpens([&](QWidget& dialog) { ChooseFile(dialog, target); });
  Do(Command::kExport);
  EXPECT_EQ(m_window->Notice().NoticeText(), "out.itn does not hold everything of this itinerary.");
  QString details;
  WhenBoxOpens([&](QMessageBox& box) {
    details = box.text();
    box.button(QMessageBox::Ok)->click();
  });
  m_window->Notice().findChild<QPushButton*>()->click();
  EXPECT_TRUE(details.contains("out.itn")) << details.toStdString();
}

TEST_F(FilesWindowTest, TheExportListMarksWhatWillLose) {
  m_window->OpenPath(TwoStops("Tour", "<cmt>Old town</cmt><ele>194</ele>"));
  const auto marked = [this](const WideString& key) {
    const CItineraryFormat* const row = FindWriter(m_window->Work().driver.table, key);
    const QComboBox& list = m_window->ExportList();
    for (int i = 0; i < list.count(); ++i) {
      if (list.itemData(i).value<const void*>() == row)
        return list.itemData(i, Qt::ToolTipRole).isValid();
    }
    return false;
  };
  EXPECT_TRUE(WaitUntil([&] { return marked(u"itn"); }));
  EXPECT_FALSE(marked(u"gpx:107"));
}

// Only the last stop has what the target lacks.
TEST_F(FilesWindowTest, LongItinerariesAreMarkedToo) {
  std::string content = "<?xml version=\"1.0\"?><gpx version=\"1.1\"><rte><name>Long</name>";
  for (int i = 0; i < 12'000; ++i)
    content += "<rtept lat=\"48.1\" lon=\"" + std::to_string(i % 160) + ".5\"><name>" +
               std::to_string(i) + "</name></rtept>";
  content +=
      "<rtept lat=\"48.2\" lon=\"7.3\"><name>End</name><cmt>Old town</cmt></rtept></rte></gpx>";
  WhenBoxOpens([](QMessageBox& box) { box.button(QMessageBox::Yes)->click(); });
  ChooseFormat(u"itn");
  m_window->OpenPath(WriteFile("long.gpx", content));
  ASSERT_EQ(Count(), 12'001u);
  // The selected format is looked at by itself, the others when somebody comes to the list.
  QComboBox& list = m_window->ExportList();
  const auto isMarked = [&] {
    return list.itemData(list.currentIndex(), Qt::ToolTipRole).isValid();
  };
  EXPECT_TRUE(WaitUntil(isMarked));
  const auto marks = [&] {
    int count = 0;
    for (int i = 0; i < list.count(); ++i) count += list.itemData(i, Qt::ToolTipRole).isValid();
    return count;
  };
  EXPECT_FALSE(WaitUntil([&] { return marks() > 1; }, 1000));
  QTest::keyClick(&list, Qt::Key_Shift);
  EXPECT_TRUE(WaitUntil([&] { return marks() > 5; }));
}

TEST_F(FilesWindowTest, ExportingGivesAnEmptyNameAndCutsALongOne) {
  m_window->OpenPath(TwoStops("Tour", ""));
  ChooseFormat(u"gpx:107");
  const QString target = QString::fromStdString(m_folder.PathTo("out.gpx"));
  m_window->Pane().NameField().clear();
  WhenDialogOpens([&](QWidget& dialog) { ChooseFile(dialog, target); });
  Do(Command::kExport);
  EXPECT_EQ(m_window->Work().driver.current.name, "Itinerary");
  m_window->Pane().NameField().setText(QString(300, 'x'));
  WhenBoxOpens([](QMessageBox& box) { box.button(QMessageBox::Yes)->click(); });
  WhenDialogOpens([&](QWidget& dialog) { ChooseFile(dialog, target); });
  Do(Command::kExport);
  EXPECT_EQ(m_window->Work().driver.current.name, std::string(250, 'x'));
}

// The window saves by the same way as the console program does.
TEST_F(FilesWindowTest, AKilledSaveLeavesWhatWasSavedBefore) {
  std::string content = "<?xml version=\"1.0\"?><gpx version=\"1.1\"><trk><trkseg>";
  for (int i = 0; i < 100'000; ++i) content += "<trkpt lat=\"48.1\" lon=\"7.2\"/>";
  const QString source = WriteFile("big.gpx", content + "</trkseg></trk></gpx>");
  const QString target = QString::fromStdString(m_folder.PathTo("saved.gpx"));
  const QString program = QStringLiteral(CORVANE_BINARY_FOLDER "/bin/corvanemap");
  const QStringList arguments{source, "gpx:107", "--output", target, "--quiet"};
  ASSERT_EQ(QProcess::execute(program, arguments), 0);
  const std::string whole = m_folder.Get("saved.gpx");
  const std::string former = "saved before";
  for (int wait = 1; wait < 2000; wait *= 2) {
    m_folder.Put("saved.gpx", former);
    QProcess save;
    save.start(program, arguments);
    ASSERT_TRUE(save.waitForStarted());
    QTest::qWait(wait);
    save.kill();
    save.waitForFinished();
    const std::string found = m_folder.Get("saved.gpx");
    // Two whole files differ by the time that stands in them.
    const bool isWhole = found.size() == whole.size() && found.ends_with(whole.substr(1000));
    EXPECT_TRUE(found == former || isWhole) << wait << " ms, " << found.size() << " bytes";
  }
}

}  // namespace
