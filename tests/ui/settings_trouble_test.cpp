// What a window does when the settings, the home or the display are not what they should be.

#include <QPushButton>
#include <csignal>
#include <filesystem>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "settings/favorites.h"
#include "settings/map_layers.h"
#include "tests/run_program.h"
#include "tests/ui/window_fixture.h"
#include "ui/map_view.h"
#include "ui/notice_bar.h"
#include "ui/planner_page.h"
#include "ui/workspace.h"

namespace {

namespace fs = std::filesystem;

// A process that holds the bytes that SQLite locks, as a program does that hangs while it saves.
class HoldingProcess {
 public:
  explicit HoldingProcess(const std::string& file) {
    int ready[2];
    EXPECT_EQ(pipe(ready), 0);
    m_process = fork();
    if (m_process == 0) {
      const int held = open(file.c_str(), O_RDWR);
      struct flock lock {};
      lock.l_type = F_WRLCK;
      lock.l_whence = SEEK_SET;
      lock.l_start = 0x40000000;
      lock.l_len = 512;
      const bool isHeld = fcntl(held, F_SETLK, &lock) == 0;
      if (write(ready[1], isHeld ? "1" : "0", 1) != 1) _exit(1);
      for (;;) pause();
    }
    char answer = '0';
    EXPECT_EQ(read(ready[0], &answer, 1), 1);
    EXPECT_EQ(answer, '1');
    close(ready[0]);
    close(ready[1]);
  }
  ~HoldingProcess() {
    kill(m_process, SIGKILL);
    waitpid(m_process, nullptr, 0);
  }
  HoldingProcess(const HoldingProcess&) = delete;
  HoldingProcess& operator=(const HoldingProcess&) = delete;

 private:
  pid_t m_process;
};

class SettingsTrouble : public WindowTest {
 protected:
  // Closes the window, which has to be quick about it.
  void Close() {
    QElapsedTimer time;
    time.start();
    EXPECT_TRUE(m_window->close());
    EXPECT_LT(time.elapsed(), 20'000);
    m_window.reset();
  }
  // Closes it with an answer to what it has to tell, which this gives.
  QString CloseAnswering(QMessageBox::StandardButton answer) {
    QString told;
    WhenBoxOpens([&told, answer](QMessageBox& box) {
      told = box.text();
      box.button(answer)->click();
    });
    if (answer == QMessageBox::No) {
      EXPECT_FALSE(m_window->close());
      EXPECT_TRUE(m_window->isVisible());
    } else {
      Close();
    }
    return told;
  }
  QString Told() const { return m_window->Notice().NoticeText(); }
  QString File() const { return QString::fromStdString(m_home.File()); }
  std::vector<std::string> StoredFavorites() const {
    CGpsWaypointList list;
    EXPECT_EQ(LoadFavorites(storage::OpenUserStorage(), list), 0u);
    std::vector<std::string> names;
    for (const CGpsPoint& point : list.points) names.push_back(point.name);
    return names;
  }
};

TEST_F(SettingsTrouble, ADamagedFileIsToldAtTheStart) {
  fs::create_directory(m_home.Folder().PathTo("CorvaneMap"));
  m_home.Folder().Put("CorvaneMap/settings.db", "no settings at all");
  m_settings->Load();
  Open();
  EXPECT_EQ(Told(), "The settings file was damaged and has been put aside as " + File() +
                        ".damaged. The defaults are used.");
  EXPECT_EQ(m_home.Folder().Get("CorvaneMap/settings.db.damaged"), "no settings at all");
  Close();
}

TEST_F(SettingsTrouble, AFileThatIsHeldIsToldAtTheStartAndAtTheEnd) {
  ASSERT_EQ(m_settings->Save(), 0u);
  auto holding = std::make_unique<HoldingProcess>(m_home.File());
  m_settings->Load();
  Open();
  EXPECT_EQ(Told(), "Another program is holding the settings file; the defaults are used.");
  const QString told = CloseAnswering(QMessageBox::No);
  EXPECT_EQ(told, "The settings cannot be stored in " + File() +
                      ". Reason: the file is in use by another program; close it there and try "
                      "again\n\nClose the window all the same?");
  EXPECT_EQ(CloseAnswering(QMessageBox::Yes), told);
}

TEST_F(SettingsTrouble, WhoStaysCanStoreThemLater) {
  ASSERT_EQ(m_settings->Save(), 0u);
  Open();
  auto holding = std::make_unique<HoldingProcess>(m_home.File());
  m_settings->coordinates = 2;
  EXPECT_NE(CloseAnswering(QMessageBox::No), "");
  holding.reset();
  Close();
  CSettings later;
  EXPECT_EQ(later.Load(), 0u);
  EXPECT_EQ(later.coordinates, 2);
}

TEST_F(SettingsTrouble, AFolderInThePlaceOfTheFileIsToldAtTheStartAndAtTheEnd) {
  fs::create_directories(m_home.File());
  m_settings->Load();
  Open();
  EXPECT_EQ(Told(), "The settings file " + File() +
                        " cannot be read; the defaults are used. Reason: it is a folder, not a "
                        "file");
  EXPECT_EQ(CloseAnswering(QMessageBox::Yes),
            "The settings cannot be stored in " + File() +
                ". Reason: it is a folder, not a file\n\nClose the window all the same?");
}

TEST_F(SettingsTrouble, AFileInThePlaceOfTheFolderIsToldAtTheEnd) {
  m_home.Folder().Put("CorvaneMap", "in the way");
  m_settings->Load();
  Open();
  EXPECT_EQ(Told(), "");
  EXPECT_TRUE(CloseAnswering(QMessageBox::Yes)
                  .startsWith("The settings cannot be stored in " + File() + ". Reason: "));
  EXPECT_EQ(m_home.Folder().Get("CorvaneMap"), "in the way");
}

TEST_F(SettingsTrouble, FavoritesThatCannotBeStoredAreToldUntilTheyAre) {
  ASSERT_EQ(m_settings->Save(), 0u);
  Open();
  OpenStops(2);
  auto holding = std::make_unique<HoldingProcess>(m_home.File());
  m_window->Work().AddFavorites({1});
  EXPECT_EQ(Told(), "The settings cannot be stored in " + File() +
                        ". Reason: the file is in use by another program; close it there and try "
                        "again");
  auto* const retry = m_window->Notice().findChild<QPushButton*>();
  ASSERT_NE(retry, nullptr);
  EXPECT_EQ(retry->text(), "Retry");
  holding.reset();
  retry->click();
  EXPECT_EQ(Told(), "");
  EXPECT_EQ(StoredFavorites(), (std::vector<std::string>{"Stop 2"}));
  Close();
}

TEST_F(SettingsTrouble, FavoritesThatCouldNotBeReadAreNotReplacedByFewer) {
  CGpsWaypointList former;
  former.InsertAt(0, CGpsPoint());
  former.At(0).name = "Sea";
  ASSERT_EQ(SaveFavorites(storage::OpenUserStorage(), former), 0u);
  auto holding = std::make_unique<HoldingProcess>(m_home.File());
  Open();
  ASSERT_TRUE(WaitUntil([this] { return Stops().planner != nullptr; }));
  EXPECT_TRUE(m_window->Work().favorites.points.empty());
  holding.reset();
  m_window->Map().Page().runJavaScript(
      QStringLiteral("external.AddFavorite({lat: 48.5, lng: 7.5, address: 'Hill'})"));
  EXPECT_TRUE(WaitUntil([this] { return StoredFavorites().size() == 2; }, 10'000));
  EXPECT_EQ(StoredFavorites(), (std::vector<std::string>{"Hill", "Sea"}));
  EXPECT_EQ(m_window->Work().favorites.Count(), 2u);
  Close();
}

TEST_F(SettingsTrouble, AFileThatIsHeldHoldsNoWindowUp) {
  ASSERT_EQ(m_settings->Save(), 0u);
  Open();
  OpenStops(2);
  {
    const HoldingProcess holding(m_home.File());
    m_settings->coordinates = 2;
    Stops().ReverseAll();
    EXPECT_EQ(m_window->Work().driver.current.At(0).name, "Stop 2");
    Stops().Undo();
    QTest::qWait(50);
    EXPECT_NE(CloseAnswering(QMessageBox::Yes), "");
  }
  CSettings later;
  EXPECT_EQ(later.Load(), 0u);
  EXPECT_EQ(later.coordinates, 0);
}

TEST_F(SettingsTrouble, LayersThatCannotBeStoredAreTold) {
  ASSERT_EQ(m_settings->Save(), 0u);
  Open();
  auto holding = std::make_unique<HoldingProcess>(m_home.File());
  WhenDialogOpens([&](QWidget& dialog) {
    // What was there could not be read, and so must not be written over.
    holding.reset();
    for (QPushButton* const button : dialog.findChildren<QPushButton*>()) {
      if (button->text() == QLatin1String("Add OpenStreetMap")) button->click();
    }
    dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
  });
  m_window->Commands()[Command::kSettings].trigger();
  EXPECT_EQ(Told(), "The settings cannot be stored in " + File() +
                        ". Reason: the file is in use by another program; close it there and try "
                        "again");
  MapLayers layers;
  EXPECT_EQ(LoadMapLayers(storage::OpenUserStorage(), layers), 0u);
  EXPECT_TRUE(layers.empty());
}

TEST_F(SettingsTrouble, AFileThatIsDamagedMeanwhileIsPutAside) {
  ASSERT_EQ(m_settings->Save(), 0u);
  Open();
  m_home.Folder().Put("CorvaneMap/settings.db", "no settings at all");
  m_settings->coordinates = 2;
  EXPECT_EQ(CloseAnswering(QMessageBox::Ok),
            "The settings file was damaged and has been put aside as " + File() +
                ".damaged. The defaults are used.");
  CSettings later;
  EXPECT_EQ(later.Load(), 0u);
  EXPECT_EQ(later.coordinates, 2);
  EXPECT_EQ(m_home.Folder().Get("CorvaneMap/settings.db.damaged"), "no settings at all");
}

TEST_F(SettingsTrouble, TwoWindowsKeepWhatEachHasChanged) {
  ASSERT_EQ(m_settings->Save(), 0u);
  CSettings others;
  ASSERT_EQ(others.Load(), 0u);
  Open();
  auto second = std::make_unique<MainWindow>(others);
  second->Start();
  m_settings->distMiles = true;
  others.coordinates = 1;
  EXPECT_TRUE(second->close());
  second.reset();
  Close();
  CSettings later;
  EXPECT_EQ(later.Load(), 0u);
  EXPECT_TRUE(later.distMiles);
  EXPECT_EQ(later.coordinates, 1);
}

TEST_F(SettingsTrouble, WithoutAHomeTheWindowOpensAndKeepsNothing) {
  const QByteArray home = qgetenv("HOME");
  for (const char* const variable : {"HOME", "XDG_CONFIG_HOME", "XDG_STATE_HOME"})
    qunsetenv(variable);
  m_settings->Load();
  Open();
  EXPECT_EQ(Told(),
            "There is no home folder. Settings, favorites and unsaved changes are kept only "
            "until you close the window.");
  OpenStops(2);
  Stops().ReverseAll();
  QTest::qWait(3000);
  EXPECT_EQ(m_window->Work().driver.current.At(0).name, "Stop 2");
  Stops().Undo();
  QTest::qWait(50);
  Close();
  qputenv("HOME", home);
  EXPECT_FALSE(fs::exists("/.local/state/CorvaneMap"));
}

TEST(Display, WithoutOneTheWindowSaysSoAndEnds) {
  const ProgramResult result = RunShell(
      "ulimit -c 0; unset DISPLAY WAYLAND_DISPLAY; export QT_QPA_PLATFORM=xcb LC_ALL=C "
      "XDG_CONFIG_HOME=/nonexistent/corvane; exec '" CORVANE_BINARY_FOLDER
      "/bin/corvanemap-window'");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(
      result.errors,
      "The window cannot be opened, since there is no display. Start it in a desktop session, "
      "or convert without a window: corvanemap SOURCE KEY\n");
}

}  // namespace
