// What a page of the map can do to the window by its script, and what the user does about it.

#include <QPushButton>
#include <QTimer>

#include "tests/ui/window_fixture.h"
#include "ui/map_view.h"
#include "ui/notice_bar.h"
#include "ui/planner_page.h"
#include "ui/workspace.h"

namespace {

class PageTroubleTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    Open();
    ASSERT_TRUE(WaitUntil([this] { return Stops().planner != nullptr; }));
    OpenStops(2);
    QObject::connect(&m_boxCloser, &QTimer::timeout, &m_boxCloser, [this] {
      auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (!box) return;
      ++m_boxes;
      box->close();
    });
    m_boxCloser.start(20);
  }

  void Run(const QString& script) { m_window->Map().Page().runJavaScript(script); }
  /// Runs a script; gives its value as text when it has one.
  QString Ask(const QString& expression) {
    const auto answer = std::make_shared<std::optional<QString>>();
    m_window->Map().Page().runJavaScript(
        expression, [answer](const QVariant& value) { *answer = value.toString(); });
    EXPECT_TRUE(WaitUntil([&] { return answer->has_value(); }));
    return answer->value_or(QString());
  }
  void EditAndLoadAgain(QPushButton& button) {
    EXPECT_EQ(m_window->Work().driver.current.Count(), 2u);
    Stops().ReverseAll();
    button.click();
    EXPECT_TRUE(WaitUntil([this] { return Stops().planner != nullptr; }));
    EXPECT_FALSE(m_window->Map().IsDark());
    EXPECT_EQ(Ask("external.GetPoint(0, 0).address"), "Stop 2");
  }

  QTimer m_boxCloser;
  int m_boxes = 0;
};

const QString kBoxesEnd =
    QStringLiteral("The map shows one message after another. They are not shown any more.");

TEST_F(PageTroubleTest, BehindAFewBoxesTheRestIsDeclinedUnseen) {
  EXPECT_EQ(Ask("[0, 1, 4, 5].map((style) => external.MessageBox('?', style)).join()"), "1,2,7,2");
  EXPECT_EQ(m_boxes, 4);
  EXPECT_EQ(m_window->Notice().NoticeText(), "");
  EXPECT_EQ(Ask("[4, 0, 1, 4, 5].map((style) => external.MessageBox('?', style)).join()"),
            "7,1,2,7,2");
  EXPECT_EQ(m_boxes, 5);
  EXPECT_EQ(m_window->Notice().NoticeText(), kBoxesEnd);
}

TEST_F(PageTroubleTest, AFloodOfBoxesEndsAndThePageCanBeLoadedAgain) {
  Run("setInterval(() => { for (let i = 0; i < 10; ++i) external.MessageBox('flood'); }, 50)");
  EXPECT_TRUE(WaitUntil([this] { return m_window->Notice().NoticeText() == kBoxesEnd; }, 20'000));
  EXPECT_EQ(m_boxes, 5);
  QTest::qWait(3000);
  EXPECT_EQ(m_boxes, 5);
  auto* const reload = m_window->Notice().findChild<QPushButton*>();
  ASSERT_NE(reload, nullptr);
  EXPECT_EQ(reload->text(), "Load the map again");
  EditAndLoadAgain(*reload);
  EXPECT_EQ(m_window->Notice().NoticeText(), "");
}

TEST_F(PageTroubleTest, AUserWhoTakesTimeGetsEveryBox) {
  for (int i = 1; i <= 7; ++i) {
    Ask("external.MessageBox('now and then')");
    EXPECT_EQ(m_boxes, i);
    if (i % 4 == 0) QTest::qWait(2200);
  }
  EXPECT_EQ(m_window->Notice().NoticeText(), "");
}

TEST_F(PageTroubleTest, QuestionsAboutDownloadsAreBoxesToo) {
  const QString target = QString::fromStdString(m_folder.PathTo("far.bin"));
  Run("for (let i = 0; i < 50; ++i) { try { external.HttpDownload('http://127.0.0.1:9/', '', '" +
      target + "'); } catch (e) {} }");
  EXPECT_TRUE(WaitUntil([this] { return m_window->Notice().NoticeText() == kBoxesEnd; }, 20'000));
  EXPECT_EQ(m_boxes, 5);
  EXPECT_FALSE(m_folder.Has("far.bin"));
}

TEST_F(PageTroubleTest, AScriptWithoutAnEndMakesTheMapDark) {
  int turns = 0;
  QTimer clock;
  QObject::connect(&clock, &QTimer::timeout, &clock, [&turns] { ++turns; });
  clock.start(100);
  Run("for (;;) {}");
  QTest::qWait(2000);
  // The window works on meanwhile.
  Stops().RenamePoint(0, "Renamed");
  Stops().Undo();
  EXPECT_GT(turns, 5);
  EXPECT_TRUE(WaitUntil([this] { return m_window->Map().IsDark(); }, 60'000));
  EXPECT_EQ(m_window->Map().DarkText(),
            "The map did not answer any more and has been stopped. Your itinerary is safe.");
  EXPECT_EQ(Stops().planner, nullptr);
  EditAndLoadAgain(*m_window->Map().findChild<QPushButton*>());
}

TEST_F(PageTroubleTest, AnEndlessLoopOfBoxesEndsInTheDarkToo) {
  Run("for (;;) external.MessageBox('for ever')");
  EXPECT_TRUE(WaitUntil([this] { return m_window->Map().IsDark(); }, 60'000));
  EXPECT_EQ(m_boxes, 5);
  EditAndLoadAgain(*m_window->Map().findChild<QPushButton*>());
}

TEST_F(PageTroubleTest, APageThatWaitsForTheUserIsNotSilent) {
  m_boxCloser.setInterval(24'000);
  EXPECT_EQ(Ask("external.MessageBox('read this')"), "1");
  EXPECT_EQ(m_boxes, 1);
  EXPECT_FALSE(m_window->Map().IsDark());
  EXPECT_EQ(Ask("external.GetCount(0)"), "2");
}

}  // namespace
