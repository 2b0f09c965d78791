#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

#include "planner/route_table.h"
#include "settings/storage.h"
#include "tests/ui/window_fixture.h"
#include "ui/itinerary_pane.h"
#include "ui/point_table.h"
#include "ui/settings_window.h"
#include "ui/workspace.h"

namespace {

class SettingsValuesTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    Open();
  }
  // Shows the window, lets the user do something, and presses OK.
  bool Confirm(const std::function<void(QWidget& dialog)>& act) {
    WhenDialogOpens([act](QWidget& dialog) {
      act(dialog);
      dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
    });
    return ShowSettingsWindow(m_window.get(), *m_settings, *m_window->Work().bridge).has_value();
  }
  template <typename Control>
  static Control& Field(QWidget& dialog, const char* name) {
    return dynamic_cast<Control&>(*FindControl(dialog, QLatin1String(name)));
  }
  static void Click(QWidget& dialog, const char* text) {
    for (QCheckBox* const box : dialog.findChildren<QCheckBox*>()) {
      if (box->text() == QLatin1String(text)) return box->click();
    }
    ADD_FAILURE() << text;
  }
  static storage::SValue Stored(const char* key) {
    return storage::OpenUserStorage().OpenFolder(kSettingsRoot).OpenValue(key);
  }
};

TEST_F(SettingsValuesTest, OkStoresWhatEachControlShows) {
  ASSERT_TRUE(Confirm([](QWidget& dialog) {
    for (const char* const text :
         {"Show distances in miles", "Show waypoint numbers",
          "Recalculate the itinerary automatically", "Optimise by road distance", "Avoid motorways",
          "Avoid tolls", "Place waypoints on roads", "Add a stage by clicking on the route"})
      Click(dialog, text);
    Field<QComboBox>(dialog, "Coordinate format").setCurrentIndex(1);
    Field<QComboBox>(dialog, "Vehicle").setCurrentText("Bus");
    Field<QComboBox>(dialog, "Kind of route").setCurrentText("Economical");
    Field<QComboBox>(dialog, "Hazardous goods").setCurrentText("Poison");
    Field<QDoubleSpinBox>(dialog, "Height").setValue(4.1);
    Field<QDoubleSpinBox>(dialog, "Width").setValue(3.2);
    Field<QDoubleSpinBox>(dialog, "Length").setValue(16.5);
    Field<QDoubleSpinBox>(dialog, "Weight").setValue(40);
    Field<QDoubleSpinBox>(dialog, "Weight per axle").setValue(11.5);
    Field<QSpinBox>(dialog, "Trailers").setValue(2);
    Field<QLineEdit>(dialog, "User identifier").setText("zoe");
  }));
  CSettings stored;
  stored.Load();
  EXPECT_TRUE(stored.distMiles);
  EXPECT_FALSE(stored.displayNumber);
  EXPECT_TRUE(stored.autoCalc);
  EXPECT_TRUE(stored.optimizeUseDirection);
  EXPECT_TRUE(stored.avoidHighway);
  EXPECT_TRUE(stored.avoidTolls);
  EXPECT_TRUE(stored.forceRoad);
  EXPECT_TRUE(stored.autoAddStep);
  EXPECT_EQ(stored.coordinates, 1);
  EXPECT_EQ(stored.vehicleType, 7);
  EXPECT_EQ(stored.itineraryType, 4);
  EXPECT_EQ(stored.truckCategory, 8);
  EXPECT_EQ(stored.truckHeight, 41);
  EXPECT_EQ(stored.truckWidth, 32);
  EXPECT_EQ(stored.truckLength, 165);
  EXPECT_EQ(stored.truckLimitedWeight, 400);
  EXPECT_EQ(stored.truckWeightAxle, 115);
  EXPECT_EQ(stored.truckTrailersCount, 2);
  EXPECT_EQ(stored.userId, u"zoe");
}

TEST_F(SettingsValuesTest, TheListShowsNumbersAndPositionsAsTheSettingsSay) {
  OpenStops(2);
  const QAbstractItemModel& rows = *m_window->Pane().Stops().model();
  const auto cell = [&rows](RouteColumn column) {
    return rows.index(1, static_cast<int>(column) - 1).data().toString();
  };
  EXPECT_EQ(cell(RouteColumn::kNumber), "2");
  EXPECT_EQ(cell(RouteColumn::kPosition), "48.110000, 7.210000");
  ASSERT_TRUE(Confirm([](QWidget& dialog) {
    Click(dialog, "Show waypoint numbers");
    Field<QComboBox>(dialog, "Coordinate format").setCurrentIndex(1);
  }));
  EXPECT_EQ(cell(RouteColumn::kNumber), "");
  EXPECT_EQ(cell(RouteColumn::kName), "Stop 2");
  // 0.11 degrees are 6.6 minutes, 0.21 are 12.6.
  EXPECT_EQ(cell(RouteColumn::kPosition), "N48\u00B06.60', E7\u00B012.60'");
}

TEST_F(SettingsValuesTest, OkWithoutAChangeKeepsEachDefault) {
  ASSERT_TRUE(Confirm([](QWidget&) {}));
  CSettings stored;
  stored.Load();
  EXPECT_FALSE(stored.autoCalc);
  EXPECT_TRUE(stored.displayNumber);
  EXPECT_EQ(stored.vehicleType, 0);
  EXPECT_EQ(stored.itineraryType, 1);
  EXPECT_EQ(stored.routeProvider, 3);
  EXPECT_EQ(stored.coordinates, 0);
  EXPECT_EQ(stored.truckHeight, 20);
  EXPECT_EQ(stored.truckWidth, 30);
  EXPECT_EQ(stored.truckLength, 80);
  EXPECT_EQ(stored.truckTrailersCount, 1);
  EXPECT_EQ(stored.truckLimitedWeight, 30);
  EXPECT_EQ(stored.truckWeightAxle, 50);
  EXPECT_EQ(stored.truckCategory, 0);
}

TEST_F(SettingsValuesTest, EachBoundOfATruckIsTold) {
  struct Bound {
    const char* field;
    double wrong;
    const char* message;
    double right;
  };
  const Bound bounds[] = {
      {"Height", 1.9, "Truck height value must lie between 2 and 50 meters.", 2},
      {"Width", 50.1, "Truck width value must lie between 3 and 50 meters.", 50},
      {"Length", 7.9, "Truck length value must lie between 8 and 300 meters.", 8},
      {"Weight", 1000.1, "Truck weight value must lie between 3 and 1000 tons.", 1000},
      {"Weight per axle", 4.9, "Truck weight per axle value must lie between 5 and 1000 tons.", 5},
  };
  for (const Bound& bound : bounds) {
    QString message;
    EXPECT_TRUE(Confirm([&](QWidget& dialog) {
      auto& field = Field<QDoubleSpinBox>(dialog, bound.field);
      field.setValue(bound.wrong);
      WhenBoxOpens([&](QMessageBox& box) {
        message = box.text();
        box.button(QMessageBox::Ok)->click();
      });
      dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
      EXPECT_TRUE(dialog.isVisible());
      field.setValue(bound.right);
    }));
    EXPECT_EQ(message, bound.message);
  }
}

TEST_F(SettingsValuesTest, AChosenLanguageLeavesTheOneStoredByHandAlone) {
  ASSERT_TRUE(Confirm([](QWidget& dialog) {
    Field<QComboBox>(dialog, "Language (from the next start on)").setCurrentText("Deutsch");
  }));
  EXPECT_EQ(Stored("ProgramLanguage").ReadNumber(), 7u);
  EXPECT_FALSE(Stored("Language").Exists());
}

TEST_F(SettingsValuesTest, ALanguageStoredByHandCannotBeChanged) {
  storage::OpenUserStorage().CreateFolder(kSettingsRoot).CreateValue("Language").WriteNumber(12);
  m_settings->Load();
  ASSERT_TRUE(Confirm([](QWidget& dialog) {
    const auto& list = Field<QComboBox>(dialog, "Language (from the next start on)");
    EXPECT_FALSE(list.isEnabled());
    EXPECT_EQ(list.currentText(), "Français");
  }));
  EXPECT_EQ(Stored("Language").ReadNumber(), 12u);
  EXPECT_EQ(m_settings->programLanguage, 0);
}

}  // namespace
