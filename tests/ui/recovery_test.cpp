#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <filesystem>

#include "planner/point_list_view.h"
#include "tests/ui/file_size_limit.h"
#include "tests/ui/window_fixture.h"
#include "ui/workspace.h"

namespace {

namespace fs = std::filesystem;

// No process has this number: it is above the system's highest.
constexpr char kDeadProcess[] = "99999999-1";

class RecoveryTest : public WindowTest {
 protected:
  void LeaveItinerary() {
    const QString folder = QString::fromStdString(m_folder.PathTo("state")) + "/CorvaneMap";
    QDir().mkpath(folder);
    m_folder.Put(std::string("state/CorvaneMap/") + kDeadProcess + ".gpx",
                 "<?xml version=\"1.0\"?><gpx version=\"1.1\"><rte><name>Lost</name>"
                 "<rtept lat=\"48.1\" lon=\"7.2\"><name>A</name></rtept>"
                 "<rtept lat=\"48.2\" lon=\"7.3\"><name>B</name></rtept></rte></gpx>");
  }
  /// What is kept of this window's itinerary; empty when nothing is.
  std::string Kept() const {
    const fs::path folder = m_folder.PathTo("state/CorvaneMap");
    if (!fs::exists(folder)) return {};
    for (const auto& entry : fs::directory_iterator(folder)) {
      const std::string name = entry.path().filename().string();
      if (name.ends_with(".gpx") && !name.starts_with('.'))
        return m_folder.Get("state/CorvaneMap/" + name);
    }
    return {};
  }
  bool IsLeft() const {
    return m_folder.Has(std::string("state/CorvaneMap/") + kDeadProcess + ".gpx");
  }
};

TEST_F(RecoveryTest, WhatACrashLeftIsOffered) {
  LeaveItinerary();
  Open();
  bool wasAsked = false;
  WhenBoxOpens([&](QMessageBox& dialog) {
    wasAsked = true;
    dialog.button(QMessageBox::Yes)->click();
  });
  EXPECT_TRUE(WaitUntil([&] { return wasAsked && !IsLeft(); }, 10'000));
  EXPECT_EQ(m_window->Work().driver.current.Count(), 2u);
  EXPECT_EQ(m_window->Work().driver.current.name, "Lost");
}

TEST_F(RecoveryTest, UnsavedChangesAreKeptAndSavedOnesAreNot) {
  Open();
  OpenStops(2);
  QTest::qWait(2500);
  EXPECT_EQ(Kept(), "");
  Stops().ReverseAll();
  EXPECT_TRUE(WaitUntil([&] { return !Kept().empty(); }, 20'000));
  EXPECT_NE(Kept().find("Stop 2"), std::string::npos);
  Stops().Undo();
  EXPECT_TRUE(WaitUntil([&] { return Kept().empty(); }, 20'000));
}

TEST_F(RecoveryTest, ANewNameIsAChange) {
  Open();
  OpenStops(2);
  QTest::qWait(100);
  Stops().RenamePoint(1, "Renamed");
  EXPECT_TRUE(WaitUntil([&] { return Kept().find("Renamed") != std::string::npos; }, 20'000));
}

TEST_F(RecoveryTest, WhoEditsOnAndOnIsNotWaitedForWithoutEnd) {
  Open();
  OpenStops(2);
  QElapsedTimer time;
  time.start();
  while (Kept().empty() && time.elapsed() < 60'000) {
    Stops().ReverseAll();
    Stops().RenamePoint(0, std::to_string(time.elapsed()));
    QTest::qWait(200);
  }
  EXPECT_NE(Kept(), "");
}

TEST_F(RecoveryTest, AnItineraryOfAProcessThatHadOurNumberIsOffered) {
  const std::string name =
      "state/CorvaneMap/" + std::to_string(QCoreApplication::applicationPid()) + "-1.gpx";
  LeaveItinerary();
  fs::rename(m_folder.PathTo(std::string("state/CorvaneMap/") + kDeadProcess + ".gpx"),
             m_folder.PathTo(name));
  Open();
  WhenBoxOpens([&](QMessageBox& dialog) { dialog.button(QMessageBox::No)->click(); });
  EXPECT_TRUE(WaitUntil([&] { return !m_folder.Has(name); }, 10'000));
  EXPECT_EQ(m_window->Work().driver.current.Count(), 0u);
}

TEST_F(RecoveryTest, WhatAnotherWindowHasTakenIsNotTakenTwice) {
  LeaveItinerary();
  Open();
  bool wasAsked = false;
  WhenBoxOpens([&](QMessageBox& dialog) {
    wasAsked = true;
    fs::remove(m_folder.PathTo(std::string("state/CorvaneMap/") + kDeadProcess + ".gpx"));
    dialog.button(QMessageBox::Yes)->click();
  });
  EXPECT_TRUE(WaitUntil([&] { return wasAsked; }, 10'000));
  QTest::qWait(100);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  EXPECT_EQ(m_window->Work().driver.current.Count(), 0u);
}

TEST_F(RecoveryTest, AFullDiskKeepsWhatWasKeptAndIsTold) {
  Open();
  OpenStops(2);
  Stops().ReverseAll();
  EXPECT_TRUE(WaitUntil([&] { return !Kept().empty(); }, 20'000));
  const std::string kept = Kept();
  const auto* const message = m_window->findChild<QLabel*>(QStringLiteral("message"));
  {
    const FileSizeLimit limit(100);
    Stops().RenamePoint(0, "New");
    EXPECT_TRUE(WaitUntil(
        [&] { return message->text().startsWith(QLatin1String("Your changes cannot be kept")); },
        20'000))
        << message->text().toStdString();
    EXPECT_NE(message->text().indexOf(QLatin1String("the disk is full")), -1);
    EXPECT_EQ(Kept(), kept);
  }
  Stops().RenamePoint(0, "Newer");
  EXPECT_TRUE(WaitUntil([&] { return Kept().find("Newer") != std::string::npos; }, 60'000));
}

}  // namespace
