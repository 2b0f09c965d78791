#include "ui/point_window.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTranslator>

#include "base/localized_text.h"
#include "base/text_ids.h"
#include "tests/ui/window_fixture.h"
#include "ui/angle_edit.h"
#include "ui/spoken_language.h"

namespace {

class PointWindowTest : public WindowTest {
 protected:
  template <typename Control>
  static Control& Field(QWidget& dialog, const char* name) {
    return dynamic_cast<Control&>(*FindControl(dialog, QLatin1String(name)));
  }
  static void Press(QWidget& dialog, QDialogButtonBox::StandardButton button) {
    dialog.findChild<QDialogButtonBox*>()->button(button)->click();
  }
  bool Edit(CGpsNamedPoint& point) {
    return EditPointInWindow(nullptr, *m_settings, kTextAddPoint, point);
  }
};

TEST_F(PointWindowTest, TakesWhatWasEntered) {
  CGpsNamedPoint point;
  WhenDialogOpens([](QWidget& dialog) {
    QTest::keyClicks(&Field<QLineEdit>(dialog, "Name"), "Colmar");
    QLineEdit& latitude = *Field<AngleEdit>(dialog, "Latitude").findChild<QLineEdit*>();
    latitude.selectAll();
    QTest::keyClicks(&latitude, "48.0794");
    QLineEdit& longitude = *Field<AngleEdit>(dialog, "Longitude").findChild<QLineEdit*>();
    longitude.selectAll();
    QTest::keyClicks(&longitude, "7,3585");
    Field<QDoubleSpinBox>(dialog, "Elevation").setValue(194);
    QTest::keyClicks(&Field<QPlainTextEdit>(dialog, "Comment"), "Old town");
    Press(dialog, QDialogButtonBox::Ok);
  });
  EXPECT_TRUE(Edit(point));
  EXPECT_EQ(point.name, "Colmar");
  EXPECT_EQ(point.comment, "Old town");
  EXPECT_DOUBLE_EQ(point.latitude, 48.0794);
  EXPECT_DOUBLE_EQ(point.longitude, 7.3585);
  EXPECT_DOUBLE_EQ(point.altitude, 194.0);
}

TEST_F(PointWindowTest, StaysOpenForALatitudeOutOfBounds) {
  CGpsNamedPoint point;
  QString message;
  WhenDialogOpens([&](QWidget& dialog) {
    QLineEdit& latitude = *Field<AngleEdit>(dialog, "Latitude").findChild<QLineEdit*>();
    latitude.selectAll();
    QTest::keyClicks(&latitude, "90.5");
    WhenBoxOpens([&](QMessageBox& box) {
      message = box.text();
      box.button(QMessageBox::Ok)->click();
    });
    Press(dialog, QDialogButtonBox::Ok);
    EXPECT_TRUE(dialog.isVisible());
    Press(dialog, QDialogButtonBox::Cancel);
  });
  EXPECT_FALSE(Edit(point));
  EXPECT_EQ(message, "Latitude value must lie between -90 and 90.");
}

TEST_F(PointWindowTest, NumbersFollowTheProgramsLanguageAndTakeEitherMark) {
  SetLanguage(Language::kGerman);
  QTranslator translator;
  SpeakProgramLanguage(translator);
  CGpsNamedPoint point;
  point.latitude = 48;
  point.altitude = 194.5;
  QString shown;
  WhenDialogOpens([&](QWidget& dialog) {
    auto& elevation = *dialog.findChild<QDoubleSpinBox*>();
    shown = elevation.text();
    elevation.selectAll();
    QTest::keyClicks(&elevation, "201.5");
    EXPECT_EQ(elevation.text(), "201,5 m");
    elevation.selectAll();
    QTest::keyClicks(&elevation, "203,5");
    Press(dialog, QDialogButtonBox::Ok);
  });
  EXPECT_TRUE(Edit(point));
  EXPECT_EQ(shown, "194,5 m");
  EXPECT_DOUBLE_EQ(point.altitude, 203.5);
  QApplication::removeTranslator(&translator);
  SetLanguage(Language::kEnglish);
  QLocale::setDefault(QLocale(QStringLiteral("en")));
}

TEST_F(PointWindowTest, TheBoundsThemselvesAreAllowedAndTheLatitudeIsToldFirst) {
  CGpsNamedPoint point;
  QStringList messages;
  const auto press = [&messages](QWidget& dialog) {
    WhenBoxOpens([&messages](QMessageBox& box) {
      messages.append(box.text());
      box.button(QMessageBox::Ok)->click();
    });
    Press(dialog, QDialogButtonBox::Ok);
  };
  WhenDialogOpens([&](QWidget& dialog) {
    const auto enter = [&dialog](const char* name, const char* text) {
      QLineEdit& field = *Field<AngleEdit>(dialog, name).findChild<QLineEdit*>();
      field.selectAll();
      QTest::keyClicks(&field, QLatin1String(text));
    };
    enter("Latitude", "-90.1");
    enter("Longitude", "180.1");
    press(dialog);
    enter("Latitude", "-90");
    press(dialog);
    enter("Longitude", "-180.0001");
    press(dialog);
    enter("Longitude", "180");
    Press(dialog, QDialogButtonBox::Ok);
  });
  EXPECT_TRUE(Edit(point));
  EXPECT_EQ(messages, (QStringList{"Latitude value must lie between -90 and 90.",
                                   "Longitude value must lie between -180 and 180.",
                                   "Longitude value must lie between -180 and 180."}));
  EXPECT_EQ(point.latitude, -90.0);
  EXPECT_EQ(point.longitude, 180.0);
}

TEST_F(PointWindowTest, OpensInTheFormatOfTheSettings) {
  m_settings->coordinates = 2;
  CGpsNamedPoint point;
  point.latitude = -33.51;
  point.longitude = 151.25;
  QStringList formats;
  WhenDialogOpens([&](QWidget& dialog) {
    auto& format = Field<QComboBox>(dialog, "Coordinate format");
    for (int i = 0; i < format.count(); ++i) formats.append(format.itemText(i));
    EXPECT_EQ(format.currentIndex(), 2);
    // 0.51 degrees are 30.6 minutes, and 0.6 minutes are 36 seconds.
    auto& latitude = Field<AngleEdit>(dialog, "Latitude");
    EXPECT_EQ(Field<QLineEdit>(latitude, "Degrees").text(), "33");
    EXPECT_EQ(Field<QLineEdit>(latitude, "Minutes").text(), "30");
    EXPECT_EQ(Field<QLineEdit>(latitude, "Seconds").text(), "36");
    EXPECT_EQ(Field<QComboBox>(latitude, "Hemisphere").currentText(), "S");
    auto& longitude = Field<AngleEdit>(dialog, "Longitude");
    EXPECT_EQ(Field<QLineEdit>(longitude, "Minutes").text(), "15");
    EXPECT_EQ(Field<QComboBox>(longitude, "Hemisphere").currentText(), "E");
    Press(dialog, QDialogButtonBox::Cancel);
  });
  EXPECT_FALSE(Edit(point));
  EXPECT_EQ(formats, (QStringList{"Decimal degrees", "Degrees and minutes",
                                  "Degrees, minutes and seconds"}));
}

TEST_F(PointWindowTest, SaysTheHemispheresInTheLanguageOfTheProgram) {
  SetLanguage(Language::kDutch);
  AngleEdit latitude(/*isLatitude=*/true);
  AngleEdit longitude(/*isLatitude=*/false);
  SetLanguage(Language::kEnglish);
  const auto letters = [](const AngleEdit& edit) {
    const auto& list = *edit.findChild<QComboBox*>();
    return list.itemText(0) + list.itemText(1);
  };
  EXPECT_EQ(letters(latitude), "NZ");
  EXPECT_EQ(letters(longitude), "OW");
}

TEST_F(PointWindowTest, LookingAtAnotherFormatChangesNothing) {
  CGpsNamedPoint point;
  point.latitude = 48.123456789;
  point.longitude = -7.987654321;
  WhenDialogOpens([](QWidget& dialog) {
    auto& format = Field<QComboBox>(dialog, "Coordinate format");
    format.setCurrentIndex(2);
    format.setCurrentIndex(1);
    format.setCurrentIndex(0);
    Press(dialog, QDialogButtonBox::Ok);
  });
  EXPECT_TRUE(Edit(point));
  EXPECT_EQ(point.latitude, 48.123456789);
  EXPECT_EQ(point.longitude, -7.987654321);
}

TEST(AngleEditTest, ReadsDegreesMinutesAndSeconds) {
  AngleEdit edit(/*isLatitude=*/true);
  edit.SetFormat(CoordinateFormat::kSeconds);
  const auto type = [&edit](const char* name, const char* text) {
    auto& field = dynamic_cast<QLineEdit&>(*FindControl(edit, QLatin1String(name)));
    field.selectAll();
    QTest::keyClicks(&field, QLatin1String(text));
  };
  type("Degrees", "12");
  type("Minutes", "30");
  type("Seconds", "36");
  dynamic_cast<QComboBox&>(*FindControl(edit, QStringLiteral("Hemisphere"))).setCurrentIndex(1);
  ASSERT_TRUE(edit.Angle());
  EXPECT_DOUBLE_EQ(*edit.Angle(), -12.51);
  type("Minutes", "60");
  EXPECT_FALSE(edit.Angle());
}

}  // namespace
