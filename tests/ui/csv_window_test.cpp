#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

#include "tests/ui/window_fixture.h"
#include "ui/csv_layout_window.h"

namespace {

class CsvWindowTest : public WindowTest {
 protected:
  static QComboBox& List(QWidget& dialog, const char* name) {
    return dynamic_cast<QComboBox&>(*FindControl(dialog, QLatin1String(name)));
  }
  static void Press(QWidget& dialog, QDialogButtonBox::StandardButton button) {
    dialog.findChild<QDialogButtonBox*>()->button(button)->click();
  }
  static void Choose(QComboBox& list, int index) {
    list.setCurrentIndex(index);
    Q_EMIT list.activated(index);
  }
};

TEST_F(CsvWindowTest, APresetLocksAndManualUnlocks) {
  CCsvLayout layout;
  QString title;
  WhenDialogOpens([&](QWidget& dialog) {
    title = dialog.windowTitle();
    EXPECT_FALSE(List(dialog, "Longitude").isEnabled());
    EXPECT_EQ(List(dialog, "Longitude").currentIndex(), 1);
    EXPECT_EQ(List(dialog, "Latitude").currentIndex(), 2);
    Choose(List(dialog, "Template"), 4);
    EXPECT_TRUE(List(dialog, "Longitude").isEnabled());
    EXPECT_EQ(List(dialog, "Longitude").count(), 20);
    EXPECT_EQ(List(dialog, "Longitude").itemText(19), "Column 19");
    List(dialog, "Longitude").setCurrentIndex(19);
    Press(dialog, QDialogButtonBox::Ok);
  });
  EXPECT_TRUE(AskCsvLayout(nullptr, CsvUse::kRead, QString(), layout));
  EXPECT_EQ(title, "Open CSV");
  EXPECT_EQ(layout.preset, 4u);
  EXPECT_EQ(layout.longitudeColumn, 19u);
}

TEST_F(CsvWindowTest, TheFirstLinesAreShown) {
  const QString file = WriteFile("a.csv", "1,2,A\n3,4,B\n");
  CCsvLayout layout;
  QString lines;
  WhenDialogOpens([&](QWidget& dialog) {
    lines = dialog.findChild<QPlainTextEdit*>()->toPlainText();
    Press(dialog, QDialogButtonBox::Cancel);
  });
  EXPECT_FALSE(AskCsvLayout(nullptr, CsvUse::kRead, file, layout));
  EXPECT_TRUE(lines.startsWith("1,2,A\n3,4,B"));
}

}  // namespace
