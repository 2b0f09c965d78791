#include <QProcess>
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <random>

#include "conversion/read_trip.h"
#include "tests/ui/played_session.h"
#include "tests/ui/window_fixture.h"
#include "ui/recovery.h"
#include "ui/workspace.h"

namespace {

namespace fs = std::filesystem;

class KilledSession : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    m_window = std::make_unique<MainWindow>(*m_settings);
  }

  /// Plays a session and kills it after so many milliseconds.
  static void PlayAndKill(const std::string& folder, uint32_t seed, int milliseconds) {
    QProcess session;
    session.start(QCoreApplication::applicationFilePath(),
                  {"--play-session", QString::fromStdString(folder), QString::number(seed)});
    ASSERT_TRUE(WaitUntil([&] { return fs::exists(folder + "/notes"); }));
    QTest::qWait(milliseconds);
    session.kill();
    ASSERT_TRUE(session.waitForFinished());
    EXPECT_EQ(session.exitStatus(), QProcess::CrashExit);
  }

  std::string ReadNames(const std::string& file) {
    ConversionContext context;
    ReadOptions options;
    options.silent = true;
    const TripRead trip = ReadTrip(m_window->Work().driver.table, WidePath(file), context, options);
    EXPECT_EQ(trip.status, 0u) << file;
    return trip.lists.empty() ? std::string() : NamesIn(*trip.lists.front());
  }

  // What was saved is there, or something that the session had since.
  void CheckSaved(const std::string& folder, const SessionNotes& notes) {
    if (notes.saved.empty()) return;
    const std::string found = ReadNames(SavedFile(folder));
    const auto last = std::find(notes.lists.rbegin(), notes.lists.rend(), notes.saved);
    EXPECT_TRUE(std::find(notes.lists.rbegin(), std::next(last), found) != std::next(last));
    CSettings settings;
    EXPECT_EQ(settings.Load(), 0u);
    if (notes.setting < 0) return;
    EXPECT_GE(settings.exportIndex, notes.setting);
    EXPECT_LE(settings.exportIndex, notes.setting + 1);
  }

  // True when the next window offers an itinerary, which must be one that there was.
  bool CheckRecovery(const std::string& folder, const SessionNotes& notes) {
    const std::string state = folder + "/state/CorvaneMap";
    size_t files = 0;
    for (const auto& entry : fs::directory_iterator(fs::exists(state) ? state : folder))
      files += entry.path().extension() == ".gpx" && entry.path().parent_path() == state ? 1 : 0;
    Recovery recovery(*m_window);
    EXPECT_EQ(recovery.HasLeftOver(), files == 1);
    EXPECT_LE(files, 1u);
    if (!recovery.HasLeftOver()) return false;
    recovery.Restore();
    const std::string found = NamesIn(m_window->Work().driver.current);
    EXPECT_NE(std::find(notes.lists.begin(), notes.lists.end(), found), notes.lists.end()) << found;
    recovery.Forget();
    return true;
  }
};

// As often as CORVANE_KILLS says.
TEST_F(KilledSession, LosesNothingThatWasSaved) {
  const char* const wanted = std::getenv("CORVANE_KILLS");
  const int kills = wanted ? std::atoi(wanted) : 12;
  std::mt19937 random(20260101);
  int recovered = 0;
  for (int i = 0; i < kills; ++i) {
    const TemporaryFolder folder;
    const std::string path = folder.Path().string();
    const auto seed = static_cast<uint32_t>(random());
    // The first lives long enough to have kept something.
    const int moment = i == 0 ? 15'000 : static_cast<int>(random() % 8000);
    SCOPED_TRACE("seed " + std::to_string(seed) + ", after " + std::to_string(moment) + " ms");
    PlayAndKill(path, seed, moment);
    LiveIn(path);
    const SessionNotes notes = ReadSessionNotes(path);
    CheckSaved(path, notes);
    if (CheckRecovery(path, notes)) ++recovered;
    if (HasFailure()) break;
  }
  std::printf("%d of %d sessions left an itinerary\n", recovered, kills);
  EXPECT_GT(recovered, 0);
}

}  // namespace
