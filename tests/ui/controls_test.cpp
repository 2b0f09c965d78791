#include <QAccessible>
#include <QAction>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QTabWidget>
#include <QToolButton>
#include <set>

#include "base/languages.h"
#include "tests/ui/window_fixture.h"
#include "ui/itinerary_pane.h"
#include "ui/point_table.h"

namespace {

constexpr int kFirstWidth = 1180;  // of the window before anybody has moved it

// The names of everything that assistive technology finds below an object.
void CollectNames(QAccessibleInterface* object, std::set<QString>& names) {
  if (!object) return;
  names.insert(object->text(QAccessible::Name));
  for (int i = 0; i < object->childCount(); ++i) CollectNames(object->child(i), names);
}

class ControlsTest : public WindowTest {
 protected:
  static std::set<QString> AccessibleNames(QWidget& window) {
    std::set<QString> names;
    CollectNames(QAccessible::queryAccessibleInterface(&window), names);
    return names;
  }
};

TEST_F(ControlsTest, EachRoleIsFoundByItsName) {
  Open().resize(1280, 800);
  // The tool bar makes room a little later.
  EXPECT_TRUE(WaitUntil([this] { return m_window->ExportList().isVisible(); }, 5000));
  const std::set<QString> names = AccessibleNames(*m_window);
  for (const char* const name : {"Open",
                                 "Export",
                                 "Up",
                                 "Down",
                                 "Add",
                                 "Remove",
                                 "Invert",
                                 "Remove all",
                                 "Calculate",
                                 "Clear route",
                                 "Show all",
                                 "Optimise itinerary",
                                 "Settings",
                                 "Print",
                                 "Place waypoints on roads",
                                 "Search",
                                 "Exit",
                                 "Waypoints",
                                 "Itinerary",
                                 "Search text",
                                 "Export format",
                                 "Distance",
                                 "Location search",
                                 "Proximity search",
                                 "Favorites"})
    EXPECT_TRUE(names.contains(QLatin1String(name))) << name;
}

TEST_F(ControlsTest, EachToolTipIsTheNameOfItsButton) {
  Open();
  size_t buttons = 0;
  for (const QToolButton* const button : m_window->findChildren<QToolButton*>()) {
    if (button->accessibleName().isEmpty()) continue;
    ++buttons;
    EXPECT_EQ(button->toolTip(), button->accessibleName());
  }
  EXPECT_GE(buttons, 16u);
}

TEST_F(ControlsTest, TheFieldsOfAPointAreFoundByTheirNames) {
  Open();
  std::set<QString> names;
  WhenDialogOpens([&names](QWidget& dialog) {
    names = AccessibleNames(dialog);
    dynamic_cast<QDialog&>(dialog).reject();
  });
  m_window->Commands()[Command::kAdd].trigger();
  for (const char* const name : {"Name", "Latitude", "Longitude", "Elevation", "Comment",
                                 "Coordinate format", "OK", "Cancel"})
    EXPECT_TRUE(names.contains(QLatin1String(name))) << name;
}

// The letters behind the marks of texts, as they are counted.
std::multiset<QChar> Mnemonics(const QStringList& texts) {
  std::multiset<QChar> letters;
  for (const QString& text : texts) {
    const qsizetype mark = text.indexOf(QLatin1Char('&'));
    if (mark >= 0 && mark + 1 < text.size()) letters.insert(text[mark + 1].toLower());
  }
  return letters;
}

TEST_F(ControlsTest, MnemonicsDifferInEachMenu) {
  for (const LanguageRow& row : kLanguages) {
    SetLanguage(row.language);
    Open();
    for (const QAction* const menu : m_window->menuBar()->actions()) {
      QStringList texts;
      for (const QAction* const action : menu->menu()->actions()) texts.append(action->text());
      const std::multiset<QChar> letters = Mnemonics(texts);
      for (const QChar letter : letters)
        EXPECT_EQ(letters.count(letter), 1u) << menu->text().toStdString();
    }
    m_window.reset();
  }
}

TEST_F(ControlsTest, MnemonicsDifferInEachLanguage) {
  for (const LanguageRow& row : kLanguages) {
    SetLanguage(row.language);
    Open();
    // Those of the tool bar stand beside the menus' own.
    QStringList texts{m_window->Commands()[Command::kOpen].text(),
                      m_window->Commands()[Command::kExport].text()};
    for (const QAction* const menu : m_window->menuBar()->actions()) texts.append(menu->text());
    const std::multiset<QChar> letters = Mnemonics(texts);
    for (const QChar letter : letters)
      EXPECT_EQ(letters.count(letter), 1u)
          << QString(letter).toStdString() << " in language " << NumberOf(row.language);
    m_window.reset();
  }
}

// Every text has the room that it asks for.
void ExpectNothingCutOff(const QWidget& window) {
  for (const QWidget* const control : window.findChildren<QWidget*>()) {
    const auto* const label = qobject_cast<const QLabel*>(control);
    const auto* const list = qobject_cast<const QComboBox*>(control);
    const bool isButton = qobject_cast<const QAbstractButton*>(control) != nullptr;
    const bool isSingleLine = label && !label->wordWrap() &&
                              label->sizePolicy().horizontalPolicy() != QSizePolicy::Ignored;
    if (!control->isVisible() || !(isSingleLine || isButton || list)) continue;
    const int wanted = label ? label->sizeHint().width() : control->minimumSizeHint().width();
    EXPECT_GE(control->width(), wanted)
        << window.windowTitle().toStdString() << ": " << control->accessibleName().toStdString()
        << (label ? label->text().toStdString() : std::string());
    EXPECT_GE(control->height(), control->fontMetrics().height());
  }
}

TEST_F(ControlsTest, NothingIsCutOffInAnyLanguage) {
  for (const LanguageRow& row : kLanguages) {
    SetLanguage(row.language);
    Open();
    OpenStops(4);
    m_window->resize(kFirstWidth, 760);
    QTest::qWait(20);
    ExpectNothingCutOff(*m_window);
    // The button that stands for what the tool bar has no room for.
    const auto* const more = m_window->findChild<QToolButton*>("qt_toolbar_ext_button");
    EXPECT_FALSE(more && more->isVisible()) << NumberOf(row.language);
    m_window.reset();
  }
}

TEST_F(ControlsTest, NothingIsCutOffInTheOtherWindows) {
  for (const LanguageRow& row : kLanguages) {
    SetLanguage(row.language);
    Open();
    OpenStops(2);
    Stops().SelectRow(0);
    m_settings->calculateAsked = false;
    for (const Command command : {Command::kAdd, Command::kEdit, Command::kSettings,
                                  Command::kAbout, Command::kCalculate, Command::kRemoveAll}) {
      bool wasThere = false;
      WhenDialogOpens([&wasThere](QWidget& dialog) {
        wasThere = true;
        QTabWidget* const tabs = dialog.findChild<QTabWidget*>();
        for (int i = 0; i < (tabs ? tabs->count() : 1); ++i) {
          if (tabs) tabs->setCurrentIndex(i);
          QTest::qWait(5);
          ExpectNothingCutOff(dialog);
        }
        dynamic_cast<QDialog&>(dialog).reject();
      });
      QTest::qWait(5);
      m_window->Commands()[command].trigger();
      EXPECT_TRUE(wasThere) << static_cast<size_t>(command);
    }
    m_window.reset();
  }
}

TEST_F(ControlsTest, EachButtonIsInTheTabOrder) {
  Open();
  for (const QWidget* const control : m_window->Pane().findChildren<QAbstractButton*>()) {
    if (!control->isVisible()) continue;
    EXPECT_TRUE(control->focusPolicy() & Qt::TabFocus) << control->accessibleName().toStdString();
    EXPECT_FALSE(control->toolTip().isEmpty());
  }
}

TEST_F(ControlsTest, AMillionRowsScrollAtOnce) {
  Open();
  PointTable& table = m_window->Pane().Stops();
  QElapsedTimer timer;
  timer.start();
  table.ResetRows(1'000'000);
  table.scrollToBottom();
  table.repaint();
  EXPECT_EQ(table.RowCount(), 1'000'000u);
  // Items would take minutes; a model takes no time that a slow machine could make long.
  EXPECT_LT(timer.elapsed(), 30'000);
}

}  // namespace
