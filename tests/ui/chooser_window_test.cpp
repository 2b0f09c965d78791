#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>

#include "base/localized_text.h"
#include "model/point_list.h"
#include "tests/ui/window_fixture.h"
#include "ui/list_chooser.h"

namespace {

// The lists of a file in the order in which its reader found them.
class ChooserWindowTest : public WindowTest {
 protected:
  template <typename List>
  void Add(const char* name, size_t points) {
    auto list = std::make_unique<List>();
    list->name = name;
    list->points.resize(points);
    m_lists.push_back(std::move(list));
  }
  std::vector<size_t> Choose(const std::function<void(QDialog& dialog, QTreeWidget& tree)>& act) {
    WhenDialogOpens([act](QWidget& dialog) {
      act(dynamic_cast<QDialog&>(dialog), *dialog.findChild<QTreeWidget*>());
    });
    return ChooseListsInWindow(nullptr, QStringLiteral("trip.gpx"), m_lists);
  }
  static void Press(QWidget& dialog, QDialogButtonBox::StandardButton button) {
    dialog.findChild<QDialogButtonBox*>()->button(button)->click();
  }
  // One line an item, each level two blanks further in.
  static QStringList LinesOf(const QTreeWidgetItem& item, const QString& indent = {}) {
    QStringList lines{indent + item.text(0)};
    for (int i = 0; i < item.childCount(); ++i)
      lines += LinesOf(*item.child(i), indent + QStringLiteral("  "));
    return lines;
  }
  static bool IsExpanded(const QTreeWidgetItem& item) {
    for (int i = 0; i < item.childCount(); ++i) {
      if (!item.isExpanded() || !IsExpanded(*item.child(i))) return false;
    }
    return true;
  }

  PointLists m_lists;
};

TEST_F(ChooserWindowTest, TheTreeHasAGroupForEachKindThatTheFileHolds) {
  Add<CGpsTrack>("Monday", 12);
  Add<CGpsRoute>("", 1);
  Add<CGpsTrack>("", 2);
  Add<CGpsWaypointList>("Huts", 3);
  QString title;
  QString text;
  QStringList lines;
  bool isExpanded = false;
  Choose([&](QDialog& dialog, QTreeWidget& tree) {
    title = dialog.windowTitle();
    text = dialog.findChild<QLabel*>()->text();
    QTreeWidgetItem& root = *tree.topLevelItem(0);
    lines = LinesOf(root);
    isExpanded = IsExpanded(root);
    for (int i = 0; i < root.childCount(); ++i) {
      EXPECT_FALSE(root.child(i)->icon(0).isNull());
      for (int j = 0; j < i; ++j)
        EXPECT_NE(root.child(i)->icon(0).cacheKey(), root.child(j)->icon(0).cacheKey());
    }
    EXPECT_EQ(tree.topLevelItemCount(), 1);
    Press(dialog, QDialogButtonBox::Cancel);
  });
  EXPECT_EQ(title, "Choose an itinerary");
  EXPECT_EQ(text,
            "The file contains several lists of points. Please select one that will be used as an "
            "itinerary.");
  EXPECT_EQ(lines, (QStringList{"trip.gpx", "  Tracks", "    Monday (12 points)",
                                "    Untitled (2 points)", "  Routes", "    Untitled (1 points)",
                                "  Waypoints", "    Huts (3 points)"}));
  EXPECT_TRUE(isExpanded);
}

TEST_F(ChooserWindowTest, TheChoiceGoesThroughTheTreeFromTopToBottom) {
  Add<CGpsRoute>("A", 1);
  Add<CGpsWaypointList>("B", 1);
  Add<CGpsRoute>("C", 1);
  const std::vector<size_t> all = Choose([](QDialog& dialog, QTreeWidget& tree) {
    tree.selectAll();
    Press(dialog, QDialogButtonBox::Ok);
  });
  EXPECT_EQ(all, (std::vector<size_t>{0, 2, 1}));
  const std::vector<size_t> none = Choose([](QDialog& dialog, QTreeWidget& tree) {
    tree.selectAll();
    Press(dialog, QDialogButtonBox::Cancel);
  });
  EXPECT_TRUE(none.empty());
}

TEST_F(ChooserWindowTest, OneListIsTakenAndNoneIsDeclinedWithoutAQuestion) {
  EXPECT_TRUE(ChooseListsInWindow(nullptr, QString(), m_lists).empty());
  Add<CGpsTrack>("Monday", 12);
  EXPECT_EQ(ChooseListsInWindow(nullptr, QString(), m_lists), std::vector<size_t>{0});
}

TEST_F(ChooserWindowTest, SpeaksTheLanguageOfTheProgram) {
  Add<CGpsRoute>("", 1);
  Add<CGpsTrack>("", 2);
  SetLanguage(Language::kGerman);
  QStringList lines;
  Choose([&](QDialog& dialog, QTreeWidget& tree) {
    lines = LinesOf(*tree.topLevelItem(0));
    Press(dialog, QDialogButtonBox::Cancel);
  });
  SetLanguage(Language::kEnglish);
  EXPECT_EQ(lines, (QStringList{"trip.gpx", "  Routen", "    Unbenannt (1 Punkte)", "  Tracks",
                                "    Unbenannt (2 Punkte)"}));
}

}  // namespace
