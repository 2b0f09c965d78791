#include "ui/settings_window.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QPushButton>
#include <QTabWidget>

#include "tests/ui/window_fixture.h"
#include "ui/workspace.h"

namespace {

class SettingsWindowTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    Open();
  }
  bool Show() {
    return ShowSettingsWindow(m_window.get(), *m_settings, *m_window->Work().bridge).has_value();
  }
  static void Press(QWidget& dialog, QDialogButtonBox::StandardButton button) {
    dialog.findChild<QDialogButtonBox*>()->button(button)->click();
  }
  static QCheckBox& Box(QWidget& dialog, const char* text) {
    for (QCheckBox* const box : dialog.findChildren<QCheckBox*>()) {
      if (box->text() == QLatin1String(text)) return *box;
    }
    throw std::runtime_error(text);
  }
};

TEST_F(SettingsWindowTest, ItsGroupsHaveTheirNames) {
  QStringList tabs;
  WhenDialogOpens([&](QWidget& dialog) {
    const auto& pages = *dialog.findChild<QTabWidget*>();
    for (int i = 0; i < pages.count(); ++i) tabs.append(pages.tabText(i));
    Press(dialog, QDialogButtonBox::Cancel);
  });
  EXPECT_FALSE(Show());
  EXPECT_EQ(tabs, (QStringList{"Display options", "Itinerary options", "Map options", "Services"}));
}

TEST_F(SettingsWindowTest, OkSavesWhatWasChanged) {
  WhenDialogOpens([](QWidget& dialog) {
    Box(dialog, "Show distances in miles").setChecked(true);
    Box(dialog, "Recalculate the itinerary automatically").setChecked(true);
    dynamic_cast<QComboBox&>(*FindControl(dialog, "Coordinate format")).setCurrentIndex(2);
    Press(dialog, QDialogButtonBox::Ok);
  });
  EXPECT_TRUE(Show());
  CSettings stored;
  stored.Load();
  EXPECT_TRUE(stored.distMiles);
  EXPECT_TRUE(stored.autoCalc);
  EXPECT_EQ(stored.coordinates, 2);
}

TEST_F(SettingsWindowTest, CancelChangesNothing) {
  const bool before = m_settings->distMiles;
  WhenDialogOpens([](QWidget& dialog) {
    Box(dialog, "Show distances in miles").click();
    Press(dialog, QDialogButtonBox::Cancel);
  });
  EXPECT_FALSE(Show());
  EXPECT_EQ(m_settings->distMiles, before);
}

TEST_F(SettingsWindowTest, ATruckOutOfBoundsIsTold) {
  QString message;
  WhenDialogOpens([&](QWidget& dialog) {
    dynamic_cast<QDoubleSpinBox&>(*FindControl(dialog, "Height")).setValue(51);
    WhenBoxOpens([&](QMessageBox& box) {
      message = box.text();
      box.button(QMessageBox::Ok)->click();
    });
    Press(dialog, QDialogButtonBox::Ok);
    EXPECT_TRUE(dialog.isVisible());
    dynamic_cast<QDoubleSpinBox&>(*FindControl(dialog, "Height")).setValue(4.2);
    Press(dialog, QDialogButtonBox::Ok);
  });
  EXPECT_TRUE(Show());
  EXPECT_EQ(message, "Truck height value must lie between 2 and 50 meters.");
  EXPECT_EQ(m_settings->truckHeight, 42);
}

}  // namespace
