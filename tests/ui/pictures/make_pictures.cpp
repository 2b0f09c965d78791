// Makes the pictures of the window for the documents: make_pictures FOLDER LOOK LANGUAGE, such as
// "make_pictures docs/pictures dark de". It needs a screen, on which the map draws itself.

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QElapsedTimer>
#include <QPushButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QWebEngineView>
#include <functional>

#include "base/localized_text.h"
#include "base/text_ids.h"
#include "planner/point_list_view.h"
#include "planner/tile_layers.h"
#include "services/offline/offline_finders.h"
#include "services/service_registry.h"
#include "services/service_table.h"
#include "settings/settings.h"
#include "ui/itinerary_pane.h"
#include "ui/layer_window.h"
#include "ui/list_chooser.h"
#include "ui/look.h"
#include "ui/main_window.h"
#include "ui/map_view.h"
#include "ui/notice_bar.h"
#include "ui/paste_window.h"
#include "ui/point_table.h"
#include "ui/point_window.h"
#include "ui/text.h"
#include "ui/window_program.h"
#include "ui/workspace.h"

namespace {

struct Place {
  const char* name;
  double latitude;
  double longitude;
};

constexpr Place kPlaces[] = {{"Marlenheim", 48.6206, 7.4905},
                             {"Molsheim", 48.5427, 7.4922},
                             {"Obernai", 48.4622, 7.4819},
                             {"Barr", 48.4078, 7.4492},
                             {"Dambach-la-Ville", 48.3241, 7.4264},
                             {"Ribeauvillé", 48.1950, 7.3190},
                             {"Riquewihr", 48.1669, 7.2979},
                             {"Kaysersberg", 48.1390, 7.2631},
                             {"Turckheim", 48.0872, 7.2806},
                             {"Eguisheim", 48.0428, 7.3061},
                             {"Rouffach", 47.9565, 7.3006},
                             {"Guebwiller", 47.9079, 7.2105},
                             {"Thann", 47.8084, 7.1040}};

constexpr QSize kWindowSize(1280, 800);
constexpr int kPatience = 60'000;  // milliseconds
constexpr int kMapTime = 5000;     // for the map to draw itself
constexpr int kWaysTime = 15'000;  // for the ways to come

Language LanguageOf(const QString& code) {
  if (code == QLatin1String("fr")) return Language::kFrench;
  if (code == QLatin1String("de")) return Language::kGerman;
  if (code == QLatin1String("nl")) return Language::kDutch;
  return Language::kEnglish;
}

/// Makes the pictures one after the other.
class Photographer {
 public:
  Photographer(QString folder, QString suffix)
      : m_folder(std::move(folder)), m_suffix(std::move(suffix)) {}

  void Take(QWidget& widget, const char* name) const {
    const QString file =
        QStringLiteral("%1/%2-%3.png").arg(m_folder, QLatin1String(name), m_suffix);
    if (!widget.grab().save(file)) qFatal("cannot write %s", qPrintable(file));
  }

  // Takes the picture of the dialog that `open` opens, as `prepare` leaves it, and closes it.
  void TakeDialog(const char* name, const std::function<void()>& open,
                  const std::function<void(QWidget&)>& prepare = {}) const {
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
      QWidget* const dialog = QApplication::activeModalWidget();
      if (!dialog || dialog->objectName() == QLatin1String("progress")) return;
      timer.stop();
      if (prepare) prepare(*dialog);
      QTest::qWait(100);
      Take(*dialog, name);
      dialog->close();
    });
    timer.start(50);
    open();
  }

 private:
  const QString m_folder;
  const QString m_suffix;
};

constexpr char kPastedLines[] =
    "Colmar\nObernai\n48.0794, 7.3585\tMarket hall\nN48 27.732 E007 28.914\n"
    "https://www.google.com/maps/dir/Colmar/Riquewihr/\nNowhereinparticular";
constexpr int kSettingsPages = 4;
constexpr const char* kSettingsNames[kSettingsPages] = {"settings", "settings-itinerary",
                                                        "settings-map", "settings-services"};

void ShowListChooser(MainWindow& window) {
  PointLists lists;
  const auto fill = [](CGpsPointArray& list, const char* name, size_t count) {
    list.name = name;
    for (size_t i = 0; i < count; ++i) list.InsertAt(i, CGpsPoint());
  };
  fill(AddList<CGpsRoute>(lists), "Route des Vins", 13);
  fill(AddList<CGpsRoute>(lists), "", 4);
  fill(AddList<CGpsTrack>(lists), "2026-09-12", 1841);
  fill(AddList<CGpsWaypointList>(lists), "Alsace", 27);
  ChooseListsInWindow(&window, QStringLiteral("alsace.gpx"), lists);
}

void FillItinerary(Workspace& work) {
  CGpsRoute& route = work.driver.current;
  route.Clear();
  for (const Place& place : kPlaces) {
    CGpsPoint point;
    point.name = place.name;
    point.latitude = place.latitude;
    point.longitude = place.longitude;
    route.InsertAt(route.Count(), point);
  }
  route.name = "Route des Vins d’Alsace";
  route.snapshot.Assign(route);
  work.front.ItineraryLoaded();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) qFatal("usage: make_pictures FOLDER LOOK LANGUAGE");
  const QString look = QString::fromLocal8Bit(argv[2]);
  const QString language = QString::fromLocal8Bit(argv[3]);
  QTemporaryDir home;
  for (const char* const variable :
       {"XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME"})
    qputenv(variable, home.path().toLocal8Bit());
  const Look wanted = look == QLatin1String("dark") ? Look::kDark : Look::kLight;
  PrepareApplication(wanted);
  QApplication application(argc, argv);
  ApplyLook(application, wanted);
  SetLanguage(LanguageOf(language));
  FillServiceRegistry(CServiceRegistry::Instance());
  RegisterOfflinePlaces(CServiceRegistry::Instance());

  CSettings settings;
  settings.Load();
  settings.routeProvider = provider::kStraight;
  settings.calculateAsked = true;
  const Photographer photographer(QString::fromLocal8Bit(argv[1]),
                                  look + QLatin1Char('-') + language);
  MainWindow window(settings);
  window.Start();
  window.resize(kWindowSize);
  CPointListView& view = window.Work().itineraryView;
  if (!QTest::qWaitFor([&view] { return view.planner != nullptr; }, kPatience))
    qFatal("the map did not come");
  QTest::qWait(kMapTime);
  photographer.Take(window, "window-empty");

  FillItinerary(window.Work());
  view.CalculateAll(/*showProgress=*/false);
  view.SelectRow(2);
  view.planner->AutoViewMap();
  QTest::qWait(kWaysTime);
  photographer.Take(window, "window");
  photographer.TakeDialog("point", [&] {
    CGpsNamedPoint point = window.Work().driver.current.At(2);
    EditPointInWindow(&window, settings, kTextEditPoint, point);
  });
  for (int page = 0; page < kSettingsPages; ++page) {
    photographer.TakeDialog(
        kSettingsNames[page], [&] { window.Commands()[Command::kSettings].trigger(); },
        [page](QWidget& dialog) {
          dialog.findChild<QTabWidget*>()->setCurrentIndex(page);
          for (QPushButton* const button : dialog.findChildren<QPushButton*>()) {
            if (button->text() == PlainText(kTextAddOpenStreetMap)) button->click();
          }
        });
  }
  photographer.TakeDialog("layer", [&] {
    MapLayer layer = SuggestedLayer();
    EditLayerInWindow(&window, layer);
  });
  photographer.TakeDialog("paste", [&] {
    QGuiApplication::clipboard()->setText(QString::fromUtf8(kPastedLines));
    PasteStops(window, settings);
  });
  photographer.TakeDialog("lists", [&] { ShowListChooser(window); });
  window.Notice().ShowNotice(NoticeSubject::kExport, FilledText(kTextExportLost, "alsace.itn"),
                             {{Text(kTextDetails), [] {}}});
  // The page has to draw itself for the room that is left.
  QTest::qWait(3000);
  photographer.Take(window, "window-loss");
  window.Notice().Withdraw(NoticeSubject::kExport);
  photographer.TakeDialog("about", [&] { window.Commands()[Command::kAbout].trigger(); });
  window.Work().driver.current.snapshot.Assign(window.Work().driver.current);
  window.close();
  return 0;
}
