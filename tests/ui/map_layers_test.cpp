// Layers of tiles: the list in the settings, and what a tile server on the loopback is asked.

#include "settings/map_layers.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTcpServer>
#include <QTcpSocket>
#include <memory>
#include <optional>

#include <gmock/gmock.h>

#include "settings/map_sources.h"
#include "tests/ui/window_fixture.h"
#include "ui/map_view.h"
#include "ui/planner_page.h"
#include "ui/workspace.h"

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

constexpr int kMapTab = 2;

/// Answers with status 404, which the page takes for a tile that is missing, and keeps what it was
/// asked.
class TileServer {
 public:
  TileServer() {
    QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] {
      QTcpSocket* const socket = m_server.nextPendingConnection();
      QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] {
        m_received[socket] += socket->readAll();
        QByteArray& received = m_received[socket];
        for (qsizetype end = received.indexOf("\r\n\r\n"); end >= 0;
             end = received.indexOf("\r\n\r\n")) {
          requests.push_back(received.left(end + 4).toStdString());
          received.remove(0, end + 4);
          socket->write("HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\n\r\n");
        }
      });
    });
    m_server.listen(QHostAddress::LocalHost);
  }

  std::string Address() const {
    return "http://127.0.0.1:" + std::to_string(m_server.serverPort());
  }

  std::vector<std::string> requests;

 private:
  QTcpServer m_server;
  std::map<QTcpSocket*, QByteArray> m_received;
};

class MapLayersTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    Open();
    ASSERT_TRUE(WaitUntil([this] { return Stops().planner != nullptr; }));
  }

  /// Does `work` on the map's page of the settings, and presses OK.
  void InSettings(const std::function<void(QWidget& dialog)>& work) {
    WhenDialogOpens([&work](QWidget& dialog) {
      dialog.findChild<QTabWidget*>()->setCurrentIndex(kMapTab);
      work(dialog);
      dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
    });
    m_window->Commands()[Command::kSettings].trigger();
  }
  static QListWidget& List(QWidget& dialog) { return *dialog.findChild<QListWidget*>(); }
  static QPushButton& Button(QWidget& dialog, const char* text) {
    for (QPushButton* const button : dialog.findChildren<QPushButton*>()) {
      if (button->text() == QLatin1String(text) && button->isVisible()) return *button;
    }
    throw std::runtime_error(text);
  }
  static void Enter(QWidget& dialog, const char* field, const std::string& text) {
    dynamic_cast<QLineEdit&>(*FindControl(dialog, field)).setText(QString::fromStdString(text));
  }
  static void PressOk(QWidget& dialog) {
    dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
  }
  static MapLayers Layers() {
    MapLayers layers;
    EXPECT_EQ(LoadMapLayers(storage::OpenUserStorage(), layers), 0u);
    return layers;
  }
  static MapSources Maps() {
    MapSources maps;
    EXPECT_EQ(LoadMaps(storage::OpenUserStorage(), maps), 0u);
    return maps;
  }

  /// The value of an expression on the page, as text.
  QString Ask(const QString& expression) {
    const auto answer = std::make_shared<std::optional<QString>>();
    m_window->Map().Page().runJavaScript(
        QStringLiteral("String(%1)").arg(expression),
        [answer](const QVariant& value) { *answer = value.toString(); });
    EXPECT_TRUE(WaitUntil([&] { return answer->has_value(); }));
    return answer->value_or(QString());
  }
  void WaitForPage() {
    ASSERT_TRUE(WaitUntil([this] { return Stops().planner != nullptr; }));
    ASSERT_TRUE(WaitUntil([this] { return Ask("typeof GetMaps") == "function"; }));
  }
};

TEST_F(MapLayersTest, OpenStreetMapIsASuggestionWithItsCreditAndRules) {
  EXPECT_EQ(Ask("GetMaps()"), "[]");
  InSettings([](QWidget& dialog) {
    EXPECT_EQ(List(dialog).count(), 0);
    bool hasRules = false;
    for (const QLabel* const label : dialog.findChildren<QLabel*>())
      hasRules |= label->text().contains("https://operations.osmfoundation.org/policies/tiles/");
    EXPECT_TRUE(hasRules);
    Button(dialog, "Add OpenStreetMap").click();
    EXPECT_FALSE(Button(dialog, "Add OpenStreetMap").isEnabled());
    ASSERT_EQ(List(dialog).count(), 1);
    EXPECT_EQ(List(dialog).item(0)->checkState(), Qt::Unchecked);
  });
  ASSERT_EQ(Layers().size(), 1u);
  EXPECT_EQ(Layers()[0].name, "OpenStreetMap");
  EXPECT_EQ(Layers()[0].address, "https://tile.openstreetmap.org/{z}/{x}/{y}.png");
  EXPECT_THAT(Layers()[0].credit, StartsWith("© OpenStreetMap contributors"));
  EXPECT_EQ(Maps(), (MapSources{{"OpenStreetMap", 0x01}}));
  WaitForPage();
  EXPECT_EQ(Ask("GetMaps()"), "[{\"name\":\"OpenStreetMap\",\"map\":false}]");
  // Nobody may be asked before the user has ticked it.
  EXPECT_EQ(Ask("/img-src ([^;]*);/.exec(document.querySelector('meta[http-equiv]').content)[1]"),
            "'self' data: ");
}

TEST_F(MapLayersTest, LayersAreAddedChangedAndRemoved) {
  QString message;
  InSettings([&message](QWidget& dialog) {
    WhenDialogOpens([&message](QWidget& layer) {
      Enter(layer, "Name", " Hills ");
      Enter(layer, "Address", "ftp://tile.example/{z}/{x}/{y}");
      Enter(layer, "Credit", "© us");
      WhenBoxOpens([&message](QMessageBox& box) {
        message = box.text();
        box.button(QMessageBox::Ok)->click();
      });
      PressOk(layer);
      EXPECT_TRUE(layer.isVisible());
      Enter(layer, "Address", "https://tile.example/{z}/{x}/{y}");
      dynamic_cast<QSpinBox&>(*FindControl(layer, "Smallest zoom")).setValue(3);
      dynamic_cast<QSpinBox&>(*FindControl(layer, "Largest zoom")).setValue(17);
      PressOk(layer);
    });
    Button(dialog, "Add").click();
    Button(dialog, "Add OpenStreetMap").click();
    List(dialog).item(0)->setCheckState(Qt::Checked);
  });
  EXPECT_TRUE(message.startsWith("The address of a map layer begins with https:// or http://"));
  ASSERT_EQ(Layers().size(), 2u);
  EXPECT_EQ(Layers()[0], (MapLayer{"Hills", "https://tile.example/{z}/{x}/{y}", "© us", 3, 17}));
  EXPECT_EQ(Maps(), (MapSources{{"Hills", 0x11}, {"OpenStreetMap", 0x01}}));
  // Who allows a layer wants to see it.
  ASSERT_TRUE(m_settings->defaultMap.has_value());
  EXPECT_EQ(m_settings->defaultMap->name, "Hills");

  InSettings([](QWidget& dialog) {
    List(dialog).setCurrentRow(0);
    WhenDialogOpens([](QWidget& layer) {
      Enter(layer, "Name", "Alps");
      PressOk(layer);
    });
    Button(dialog, "Edit").click();
    List(dialog).setCurrentRow(1);
    Button(dialog, "Remove").click();
  });
  ASSERT_EQ(Layers().size(), 1u);
  EXPECT_EQ(Layers()[0].name, "Alps");
  EXPECT_EQ(Maps(), (MapSources{{"Alps", 0x11}}));
}

TEST_F(MapLayersTest, TwoLayersOfOneNameAreToldApartByTheUser) {
  QString message;
  WhenDialogOpens([&message](QWidget& dialog) {
    dialog.findChild<QTabWidget*>()->setCurrentIndex(kMapTab);
    Button(dialog, "Add OpenStreetMap").click();
    WhenDialogOpens([](QWidget& layer) {
      Enter(layer, "Name", "OpenStreetMap");
      Enter(layer, "Address", "https://tile.example/{z}/{x}/{y}");
      PressOk(layer);
    });
    Button(dialog, "Add").click();
    WhenBoxOpens([&message](QMessageBox& box) {
      message = box.text();
      box.button(QMessageBox::Ok)->click();
    });
    PressOk(dialog);
    EXPECT_TRUE(dialog.isVisible());
    dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Cancel)->click();
  });
  m_window->Commands()[Command::kSettings].trigger();
  EXPECT_EQ(message, "A map layer needs a name that no other layer has.");
  EXPECT_THAT(Layers(), IsEmpty());
}

TEST_F(MapLayersTest, AServerIsAskedOnlyWhenItsLayerIsAllowed) {
  TileServer server;
  const MapLayer layer{"Streets", server.Address() + "/t/{z}/{x}/{y}.png", "© us", 0, 19};
  ASSERT_EQ(SaveMapLayers(storage::OpenUserStorage(), {layer}, {{"Streets", 0x01}}), 0u);
  m_settings->defaultMap = MapChoice{1, "Streets"};
  m_window->Map().Reload();
  WaitForPage();
  // Even a page that asks all the same does not reach the server.
  Ask("(window.answer = '', window.probe = new Image(), probe.onerror = () => answer = 'refused', "
      "probe.src = '" +
      QString::fromStdString(server.Address()) + "/t/0/0/0.png')");
  EXPECT_TRUE(WaitUntil([this] { return Ask("answer") == "refused"; }));
  EXPECT_THAT(server.requests, IsEmpty());

  InSettings([](QWidget& dialog) { List(dialog).item(0)->setCheckState(Qt::Checked); });
  WaitForPage();
  ASSERT_TRUE(WaitUntil([&server] { return server.requests.size() >= 4; }));
  EXPECT_EQ(Ask("document.querySelector('.credit').textContent"), "© us");
  for (const std::string& request : server.requests) {
    EXPECT_THAT(request,
                testing::MatchesRegex("GET /t/[0-9]+/[0-9]+/[0-9]+\\.png HTTP/1\\.1\r\n.*"));
    EXPECT_THAT(request, HasSubstr("\r\nHost: " + server.Address().substr(7) + "\r\n"));
    EXPECT_THAT(request, HasSubstr("\r\nUser-Agent: Corvane Map"));
    EXPECT_THAT(request, HasSubstr("\r\nReferer: https://corvane-map.example"));
    EXPECT_THAT(request, testing::Not(HasSubstr("Cookie")));
  }
  // The tiles are missing, and the outline is there.
  EXPECT_TRUE(WaitUntil(
      [this] { return Ask("document.querySelectorAll('.outline canvas').length > 0") == "true"; }));

  InSettings([](QWidget& dialog) { List(dialog).item(0)->setCheckState(Qt::Unchecked); });
  WaitForPage();
  server.requests.clear();
  EXPECT_EQ(Ask("document.querySelector('.credit').textContent"), "Natural Earth · GeoNames");
  EXPECT_EQ(Ask("document.querySelectorAll('.tiles').length"), "0");
  EXPECT_THAT(server.requests, IsEmpty());
}

}  // namespace
