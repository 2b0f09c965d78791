#include <QAction>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>
#include <QTreeWidget>

#include "services/offline/offline_finders.h"
#include "services/service_access.h"
#include "services/service_registry.h"
#include "services/service_table.h"
#include "tests/loopback_server.h"
#include "tests/ui/window_fixture.h"
#include "ui/itinerary_pane.h"
#include "ui/point_table.h"
#include "ui/workspace.h"

namespace {

using NameList = std::vector<std::string>;

// Finding with the towns that come with the program: nobody else is asked.
class SearchWindowTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    m_settings->findProvider = provider::kOfflinePlaces;
    Open();
  }

  void Do(Command command) {
    QTest::qWait(5);
    m_window->Commands()[command].trigger();
  }
  NameList Names() const {
    NameList names;
    for (const CGpsPoint& point : m_window->Work().driver.current.points)
      names.push_back(point.name.substr(0, point.name.find(',')));
    return names;
  }
};

TEST_F(SearchWindowTest, WhatIsFoundIsAddedByADoubleClick) {
  auto& field = dynamic_cast<QLineEdit&>(*FindControl(*m_window, "Search text"));
  QTest::keyClicks(&field, "Obernai");
  QTest::keyClick(&field, Qt::Key_Return);
  ASSERT_TRUE(WaitUntil([this] { return m_window->Work().results.Count() > 0; }));
  auto& results = dynamic_cast<PointTable&>(*FindControl(*m_window, "Search result"));
  EXPECT_TRUE(results.isVisible());
  EXPECT_EQ(results.SelectedRows(), (std::vector<size_t>{0}));
  QTest::keyClick(&results, Qt::Key_Return);
  EXPECT_EQ(Names(), (NameList{"Obernai"}));
  EXPECT_NEAR(m_window->Work().driver.current.At(0).latitude, 48.46, 0.02);
}

TEST_F(SearchWindowTest, AnEmptySearchAndAPlaceThatIsNoneAreTold) {
  const auto told = [this] {
    for (const QLabel* const label : m_window->Pane().findChildren<QLabel*>()) {
      if (label->isVisible() && label->property("role") == "hint") return label->text();
    }
    return QString();
  };
  auto& field = dynamic_cast<QLineEdit&>(*FindControl(*m_window, "Search text"));
  QTest::keyClick(&field, Qt::Key_Return);
  EXPECT_FALSE(told().isEmpty());
  QTest::keyClicks(&field, "Xqzqxv");
  QTest::keyClick(&field, Qt::Key_Return);
  EXPECT_TRUE(WaitUntil([&] { return told() == "Nothing was found."; }, 20'000))
      << told().toStdString();
}

TEST_F(SearchWindowTest, PastedLinesAreReviewedWithTheSureOnesFirst) {
  QGuiApplication::clipboard()->setText(
      "Colmar\nXqzqxv\n48.5, 7.5\tPoint\n"
      "https://www.google.com/maps/dir/48.1,7.2/48.3,7.4/\n");
  QStringList shown;
  WhenDialogOpens([&](QWidget& dialog) {
    const auto& table = *dialog.findChild<QTreeWidget*>();
    for (int i = 0; i < table.topLevelItemCount(); ++i)
      shown.append(table.topLevelItem(i)->text(0).left(6) + '|' +
                   table.topLevelItem(i)->text(1).left(9));
    dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
  });
  Do(Command::kPaste);
  ASSERT_EQ(shown.size(), 4);
  EXPECT_EQ(shown.last(), "Xqzqxv|not found");
  EXPECT_TRUE(shown.first().endsWith("found exa")) << shown.first().toStdString();
  ASSERT_EQ(Names().size(), 4u);
  EXPECT_EQ(Names()[0], "Colmar");
  EXPECT_EQ(Names()[1], "Point");
  EXPECT_NEAR(m_window->Work().driver.current.At(3).latitude, 48.3, 1e-9);
  Do(Command::kUndo);
  EXPECT_TRUE(Names().empty());
}

TEST_F(SearchWindowTest, FavouritesAreKeptAddedAndCleared) {
  OpenStops(2);
  Stops().SelectRow(1);
  Do(Command::kFavorite);
  EXPECT_EQ(m_window->Work().favorites.Count(), 1u);
  m_window.reset();
  Open();
  ASSERT_EQ(m_window->Work().favorites.Count(), 1u);
  EXPECT_EQ(m_window->Work().favorites.At(0).name, "Stop 2");
  m_window->Pane().ShowPage(2);
  auto& table = dynamic_cast<PointTable&>(*FindControl(*m_window, "Favorites"));
  table.SelectRow(0);
  QTest::keyClick(&table, Qt::Key_Return);
  EXPECT_EQ(Names(), (NameList{"Stop 2"}));
  QString question;
  WhenBoxOpens([&](QMessageBox& box) {
    question = box.text();
    box.button(QMessageBox::Yes)->click();
  });
  dynamic_cast<QToolButton&>(*FindControl(*m_window, "Clear favorites")).click();
  EXPECT_FALSE(question.isEmpty());
  EXPECT_EQ(m_window->Work().favorites.Count(), 0u);
}

TEST_F(SearchWindowTest, PlacesNearAStopAreFound) {
  m_window->Pane().ShowPage(1);
  const auto search = [this](const char* text) {
    auto& field = dynamic_cast<QLineEdit&>(*FindControl(*m_window, "Search text"));
    field.clear();
    QTest::keyClicks(&field, text);
    QTest::keyClick(&field, Qt::Key_Return);
  };
  const auto told = [this] {
    for (const QLabel* const label : m_window->Pane().findChildren<QLabel*>()) {
      if (label->isVisible() && label->property("role") == "hint") return label->text();
    }
    return QString();
  };
  search("Colmar");
  EXPECT_EQ(told(), "Add a stop first: the search looks around it.");
  m_window->OpenPath(
      WriteFile("stops.gpx",
                "<?xml version=\"1.0\"?><gpx version=\"1.1\"><rte>"
                "<rtept lat=\"48.1\" lon=\"7.3\"><name>Near Colmar</name></rtept>"
                "<rtept lat=\"52.5\" lon=\"13.4\"><name>In Berlin</name></rtept></rte></gpx>"));
  // Around the last stop, unless another is selected.
  search("Colmar");
  EXPECT_TRUE(WaitUntil([&] { return told() == "Nothing was found."; }, 20'000));
  Stops().SelectRow(0);
  search("Colmar");
  ASSERT_TRUE(WaitUntil([this] { return m_window->Work().results.Count() > 0; }));
  const CGpsPoint& first = m_window->Work().results.At(0);
  EXPECT_TRUE(first.name.starts_with("Colmar")) << first.name;
  EXPECT_NEAR(first.latitude, 48.08, 0.02);
}

TEST_F(SearchWindowTest, FavouritesGoIntoAFileAndComeBack) {
  const QString file = QString::fromStdString(m_folder.PathTo("favourites.gpx"));
  const auto press = [this](const char* name) {
    dynamic_cast<QToolButton&>(*FindControl(*m_window, name)).click();
  };
  const auto choose = [&](QWidget& dialog) { ChooseFile(dialog, file); };
  const auto names = [this] {
    NameList list;
    for (const CGpsPoint& point : m_window->Work().favorites.points) list.push_back(point.name);
    return list;
  };
  OpenStops(3);
  m_window->Work().AddFavorites({2, 0});
  m_window->Pane().ShowPage(2);
  EXPECT_EQ(names(), (NameList{"Stop 1", "Stop 3"}));
  WhenDialogOpens(choose);
  press("Export favorites");
  EXPECT_NE(m_folder.Get("favourites.gpx").find("<name>Stop 3</name>"), std::string::npos);

  WhenBoxOpens([](QMessageBox& box) { box.button(QMessageBox::Yes)->click(); });
  press("Clear favorites");
  EXPECT_TRUE(names().empty());
  WhenDialogOpens(choose);
  press("Import favorites");
  EXPECT_EQ(names(), (NameList{"Stop 1", "Stop 3"}));

  m_window.reset();
  Open();
  EXPECT_EQ(names(), (NameList{"Stop 1", "Stop 3"}));
}

TEST_F(SearchWindowTest, AFileThatHoldsNoFavouritesIsTold) {
  m_window->Pane().ShowPage(2);
  const QString file = WriteFile("broken.gpx", "no points");
  WhenDialogOpens([&](QWidget& dialog) { ChooseFile(dialog, file); });
  QString told;
  WhenBoxOpens([&](QMessageBox& box) {
    told = box.text();
    box.button(QMessageBox::Ok)->click();
  });
  dynamic_cast<QToolButton&>(*FindControl(*m_window, "Import favorites")).click();
  EXPECT_TRUE(told.startsWith("The file cannot be read.")) << told.toStdString();
}

// Each kind of search, asked of a service that does not answer.
TEST_F(SearchWindowTest, ClosingDoesNotWaitForASearch) {
  LoopbackServer server{LoopbackServer::Talk([](LoopbackConnection& connection) {
    if (!connection.ReadRequest().empty()) connection.Sleep(std::chrono::minutes(5));
  })};
  ServiceValues values;
  values.url = server.Url();
  values.key = "secret";
  SetServiceValues({{"google", values}});
  m_settings->findProvider = provider::kGoogle;
  for (const int page : {0, 1}) {
    OpenStops(1);
    m_window->Pane().ShowPage(page);
    auto& field = dynamic_cast<QLineEdit&>(*FindControl(*m_window, "Search text"));
    QTest::keyClicks(&field, "Colmar");
    QTest::keyClick(&field, Qt::Key_Return);
    ASSERT_TRUE(WaitUntil([&] { return server.Connections() == page + 1; }, 20'000));
    // Would wait for five minutes.
    m_window.reset();
    Open();
  }
  SetServiceValues({});
}

TEST_F(SearchWindowTest, ALinkInTheNameFieldIsInterpreted) {
  QLineEdit& name = m_window->Pane().NameField();
  QTest::keyClicks(&name, "https://www.google.com/maps/dir/48.1,7.2/48.3,7.4/");
  QString question;
  WhenBoxOpens([&](QMessageBox& box) {
    question = box.text();
    box.button(QMessageBox::Yes)->click();
  });
  QTest::keyClick(&name, Qt::Key_Return);
  EXPECT_EQ(question, "A hyperlink was detected. Do you want to interpret this link?");
  EXPECT_EQ(m_window->Work().driver.current.Count(), 2u);
}

}  // namespace
