#include <QDir>
#include <QPushButton>

#include "planner/point_list_view.h"
#include "tests/ui/window_fixture.h"
#include "ui/workspace.h"

namespace {

// No process has this number: it is above the system's highest.
constexpr char kDeadProcess[] = "99999999";

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
  const std::string kept =
      "state/CorvaneMap/" + std::to_string(QCoreApplication::applicationPid()) + ".gpx";
  QTest::qWait(2500);
  EXPECT_FALSE(m_folder.Has(kept));
  Stops().ReverseAll();
  EXPECT_TRUE(WaitUntil([&] { return m_folder.Has(kept); }, 20'000));
  EXPECT_NE(m_folder.Get(kept).find("Stop 2"), std::string::npos);
  Stops().Undo();
  EXPECT_TRUE(WaitUntil([&] { return !m_folder.Has(kept); }, 20'000));
}

}  // namespace
