#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
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

TEST_F(CsvWindowTest, ItsLabelsAndChoicesAreInTheirOrder) {
  CCsvLayout layout;
  QString title;
  QStringList labels;
  QStringList presets;
  QStringList columns;
  WhenDialogOpens([&](QWidget& dialog) {
    title = dialog.windowTitle();
    const auto& form = *dialog.findChild<QFormLayout*>();
    for (int i = 0; i < form.rowCount(); ++i) {
      const QLayoutItem* const label = form.itemAt(i, QFormLayout::LabelRole);
      const QLayoutItem* const field = form.itemAt(i, QFormLayout::FieldRole);
      const auto* const box = qobject_cast<QCheckBox*>(field->widget());
      labels.append(box ? box->text() : qobject_cast<QLabel*>(label->widget())->text());
    }
    for (int i = 0; i < List(dialog, "Template").count(); ++i)
      presets.append(List(dialog, "Template").itemText(i));
    for (int i = 0; i < 3; ++i) columns.append(List(dialog, "Comment").itemText(i));
    EXPECT_EQ(List(dialog, "Comment").count(), 20);
    Press(dialog, QDialogButtonBox::Cancel);
  });
  EXPECT_FALSE(AskCsvLayout(nullptr, CsvUse::kWrite, QString(), layout));
  EXPECT_EQ(title, "Export CSV");
  EXPECT_EQ(labels,
            (QStringList{"Template", "Latitude", "Longitude", "Elevation", "Name", "Comment",
                         "Use locale settings", "Decimal separator", "Column separator"}));
  EXPECT_EQ(presets,
            (QStringList{"Default", "Inforad", "Pioneer Navgate", "Destinator", "Manual"}));
  EXPECT_EQ(columns, (QStringList{"No", "Column 01", "Column 02"}));
}

TEST_F(CsvWindowTest, APresetFillsEverythingAndManualBringsBackWhatWasEntered) {
  CCsvLayout layout;
  layout.preset = 9;  // there is none of this number: the first one counts
  WhenDialogOpens([&](QWidget& dialog) {
    auto& decimal = dynamic_cast<QLineEdit&>(*FindControl(dialog, "Decimal separator"));
    auto& separator = dynamic_cast<QLineEdit&>(*FindControl(dialog, "Column separator"));
    auto& useLocale = *dialog.findChild<QCheckBox*>();
    EXPECT_EQ(List(dialog, "Template").currentText(), "Default");
    EXPECT_FALSE(useLocale.isEnabled());
    Choose(List(dialog, "Template"), 4);
    List(dialog, "Comment").setCurrentIndex(5);
    separator.setText("abcdef");
    Choose(List(dialog, "Template"), 1);
    EXPECT_EQ(List(dialog, "Latitude").currentIndex(), 1);
    EXPECT_EQ(List(dialog, "Longitude").currentIndex(), 2);
    EXPECT_EQ(List(dialog, "Name").currentIndex(), 3);
    EXPECT_EQ(List(dialog, "Comment").currentIndex(), 0);
    EXPECT_EQ(decimal.text(), ",");
    EXPECT_EQ(separator.text(), ";");
    EXPECT_FALSE(decimal.isEnabled());
    EXPECT_FALSE(separator.isEnabled());
    Choose(List(dialog, "Template"), 4);
    EXPECT_EQ(List(dialog, "Comment").currentIndex(), 5);
    EXPECT_EQ(separator.text(), "abcd");
    EXPECT_TRUE(separator.isEnabled());
    Press(dialog, QDialogButtonBox::Ok);
  });
  EXPECT_TRUE(AskCsvLayout(nullptr, CsvUse::kWrite, QString(), layout));
  EXPECT_EQ(layout.columnSeparator, "abcd");
  EXPECT_EQ(layout.commentColumn, 5u);
  EXPECT_EQ(LoadCsvLayout(storage::OpenUserStorage(), CsvUse::kWrite), layout);
  EXPECT_EQ(LoadCsvLayout(storage::OpenUserStorage(), CsvUse::kRead), CCsvLayout());
}

TEST_F(CsvWindowTest, TheSeparatorsOfTheLocaleAreShownAndLocked) {
  const NumberSeparators locale = LocaleSeparators();
  CCsvLayout layout;
  WhenDialogOpens([&](QWidget& dialog) {
    auto& decimal = dynamic_cast<QLineEdit&>(*FindControl(dialog, "Decimal separator"));
    auto& separator = dynamic_cast<QLineEdit&>(*FindControl(dialog, "Column separator"));
    Choose(List(dialog, "Template"), 4);
    decimal.setText("x");
    separator.setText("y");
    dialog.findChild<QCheckBox*>()->click();
    EXPECT_EQ(decimal.text().toStdString(), locale.decimal);
    EXPECT_EQ(separator.text().toStdString(), locale.list);
    EXPECT_FALSE(decimal.isEnabled());
    EXPECT_FALSE(separator.isEnabled());
    dialog.findChild<QCheckBox*>()->click();
    EXPECT_TRUE(decimal.isEnabled());
    EXPECT_TRUE(separator.isEnabled());
    Press(dialog, QDialogButtonBox::Cancel);
  });
  EXPECT_FALSE(AskCsvLayout(nullptr, CsvUse::kRead, QString(), layout));
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
