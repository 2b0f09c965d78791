// What becomes of the itinerary and of the file when the disk is full.

#include <QDialogButtonBox>
#include <filesystem>

#include "conversion/format_search.h"
#include "tests/ui/file_size_limit.h"
#include "tests/ui/window_fixture.h"
#include "ui/notice_bar.h"
#include "ui/workspace.h"

namespace {

namespace fs = std::filesystem;

const QString kFull = QStringLiteral(
    "The file cannot be write.\n\nReason: the disk is full or the file would become too large; "
    "free "
    "some space and try again");

class FullDiskTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    Open();
    OpenStops(40);
    Stops().RenamePoint(0, "Changed");
    ASSERT_TRUE(WaitUntil([this] { return Kept() == 1; }, 20'000));
  }

  /// Exports as GPX through the dialogs; gives what a box has told.
  QString Export(const std::string& path) {
    QString told;
    WhenDialogOpens([&](QWidget& dialog) {
      WhenBoxOpens([this, &told](QMessageBox& box) { Answer(box, told); });
      ChooseFile(dialog, QString::fromStdString(path));
    });
    m_window->Work().driver.ExportCommand(FindWriter(m_window->Work().driver.table, u"gpx:107"));
    return told;
  }

  // Whether there are changes, as the window sees it when it closes.
  bool HasUnsavedChanges() {
    bool wasAsked = false;
    WhenBoxOpens([&wasAsked](QMessageBox& box) {
      wasAsked = box.text() == QLatin1String("Changes will be lost. Continue anyway?");
      box.button(QMessageBox::No)->click();
    });
    m_window->Work().driver.ConfirmDiscard();
    qDeleteAll(qApp->findChildren<QTimer*>(QStringLiteral("waits for a dialog")));
    return wasAsked;
  }

  /// How many itineraries are kept for the case of a crash.
  int Kept() const { return CountIn("state/CorvaneMap"); }
  /// The files of a folder, those that begin with a dot included.
  int CountIn(const std::string& name) const {
    const fs::path folder = m_folder.PathTo(name);
    if (!fs::exists(folder)) return 0;
    return static_cast<int>(
        std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
  }

 private:
  // The question whether the file is to be replaced comes first.
  void Answer(QMessageBox& box, QString& told) {
    if (QPushButton* const yes = qobject_cast<QPushButton*>(box.button(QMessageBox::Yes))) {
      WhenBoxOpens([this, &told](QMessageBox& next) { Answer(next, told); });
      yes->click();
      return;
    }
    told = box.text();
    box.button(QMessageBox::Ok)->click();
  }
};

TEST_F(FullDiskTest, AnExportLeavesTheOldFileAndTheChangesAsTheyWere) {
  fs::create_directory(m_folder.PathTo("out"));
  m_folder.Put("out/tour.gpx", "exported before");
  {
    const FileSizeLimit limit(1000);
    EXPECT_EQ(Export(m_folder.PathTo("out/tour.gpx")), kFull);
  }
  EXPECT_EQ(m_folder.Get("out/tour.gpx"), "exported before");
  EXPECT_EQ(CountIn("out"), 1);
  EXPECT_EQ(m_window->Work().driver.current.At(0).name, "Changed");
  EXPECT_TRUE(HasUnsavedChanges());
  EXPECT_EQ(Kept(), 1);
  // With room again, the same succeeds.
  EXPECT_EQ(Export(m_folder.PathTo("out/tour.gpx")), QString());
  EXPECT_NE(m_folder.Get("out/tour.gpx").find("<name>Changed</name>"), std::string::npos);
  EXPECT_FALSE(HasUnsavedChanges());
  EXPECT_EQ(Kept(), 0);
}

TEST_F(FullDiskTest, ANewFileIsNotLeftInPieces) {
  fs::create_directory(m_folder.PathTo("out"));
  {
    const FileSizeLimit limit(1000);
    EXPECT_EQ(Export(m_folder.PathTo("out/tour.gpx")), kFull);
  }
  EXPECT_EQ(CountIn("out"), 0);
  EXPECT_TRUE(HasUnsavedChanges());
  EXPECT_EQ(Kept(), 1);
}

TEST_F(FullDiskTest, ADeviceThatTakesNothingIsTold) {
  fs::create_symlink("/dev/full", m_folder.PathTo("full.gpx"));
  EXPECT_EQ(Export(m_folder.PathTo("full.gpx")), kFull);
  EXPECT_TRUE(HasUnsavedChanges());
  EXPECT_EQ(Kept(), 1);
}

TEST_F(FullDiskTest, SettingsThatFindNoRoomAreToldBeforeTheWindowCloses) {
  EXPECT_EQ(m_settings->Save(), 0u);
  m_window->Work().driver.current.snapshot.Assign(m_window->Work().driver.current);
  const auto stored = m_settings->coordinates;
  m_settings->coordinates = stored + 1;
  QString told;
  {
    const FileSizeLimit limit(1000);
    WhenBoxOpens([&told](QMessageBox& box) {
      told = box.text();
      box.button(QMessageBox::No)->click();
    });
    EXPECT_FALSE(m_window->close());
  }
  EXPECT_TRUE(told.startsWith("The settings cannot be stored in " +
                              QString::fromStdString(m_home.File()) + ". Reason: "))
      << told.toStdString();
  EXPECT_TRUE(told.endsWith("\n\nClose the window all the same?"));
  CSettings later;
  EXPECT_EQ(later.Load(), 0u);
  EXPECT_EQ(later.coordinates, stored);
  EXPECT_TRUE(m_window->close());
  EXPECT_EQ(later.Load(), 0u);
  EXPECT_EQ(later.coordinates, stored + 1);
}

}  // namespace
