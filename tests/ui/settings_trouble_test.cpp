// What a window does when the settings, the home or the display are not what they should be.

#include <csignal>
#include <filesystem>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "base/text_ids.h"
#include "settings/map_layers.h"
#include "tests/run_program.h"
#include "tests/ui/window_fixture.h"
#include "ui/text.h"
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
};

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
    Close();
  }
  CSettings later;
  EXPECT_EQ(later.Load(), 0u);
  EXPECT_EQ(later.coordinates, 0);
}

TEST_F(SettingsTrouble, LayersThatCannotBeStoredAreTold) {
  ASSERT_EQ(m_settings->Save(), 0u);
  Open();
  auto holding = std::make_unique<HoldingProcess>(m_home.File());
  QString message;
  WhenDialogOpens([&](QWidget& dialog) {
    // What was there could not be read, and so must not be written over.
    holding.reset();
    for (QPushButton* const button : dialog.findChildren<QPushButton*>()) {
      if (button->text() == QLatin1String("Add OpenStreetMap")) button->click();
    }
    WhenBoxOpens([&message](QMessageBox& box) {
      message = box.text();
      box.button(QMessageBox::Ok)->click();
    });
    dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
  });
  m_window->Commands()[Command::kSettings].trigger();
  EXPECT_EQ(message, Text(kTextSettingsNotStored));
  MapLayers layers;
  EXPECT_EQ(LoadMapLayers(storage::OpenUserStorage(), layers), 0u);
  EXPECT_TRUE(layers.empty());
}

TEST_F(SettingsTrouble, AFileThatIsDamagedMeanwhileIsPutAside) {
  ASSERT_EQ(m_settings->Save(), 0u);
  Open();
  m_home.Folder().Put("CorvaneMap/settings.db", "no settings at all");
  m_settings->coordinates = 2;
  Close();
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
