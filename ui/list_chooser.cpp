#include "ui/list_chooser.h"

#include <QDialog>
#include <QLabel>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

#include "base/text_ids.h"
#include "ui/dialog_buttons.h"
#include "ui/icons.h"
#include "ui/look.h"
#include "ui/text.h"

namespace {

constexpr int kIndexRole = Qt::UserRole;
constexpr int kRowHeight = 26;

struct Group {
  uint32_t textId;
  const char* icon;
};

// Routes, tracks, and all lists of free points.
constexpr std::array<Group, 3> kGroups{
    {{kTextRoutes, "route"}, {kTextTracks, "track"}, {kTextWaypoints, "waypoints"}}};

size_t GroupOf(const CGpsPointArray& list) {
  return std::min<size_t>(list.GetKind(), kGroups.size() - 1);
}

QString LabelOf(const CGpsPointArray& list) {
  const QString name = list.name.empty() ? Text(kTextUntitled) : FromUtf8(list.name);
  return FilledText(kTextListWithPoints, ToUtf8(name), list.Count());
}

/// The tree of a file's lists.
class ListTree : public QTreeWidget {
 public:
  ListTree(const QString& fileName, const PointLists& lists) {
    setHeaderHidden(true);
    setSelectionMode(ExtendedSelection);
    setAccessibleName(Text(kTextChooseItinerary));
    auto* const root = new QTreeWidgetItem(this, {fileName});
    std::array<QTreeWidgetItem*, kGroups.size()> groups{};
    for (size_t i = 0; i < lists.size(); ++i) {
      const size_t kind = GroupOf(*lists[i]);
      QTreeWidgetItem*& group = groups.at(kind);
      const Group& row = kGroups.at(kind);
      const QIcon icon = LoadIcon(QLatin1String(row.icon));
      if (!group) {
        group = new QTreeWidgetItem(root, {PlainText(row.textId)});
        group->setIcon(0, icon);
      }
      auto* const item = new QTreeWidgetItem(group, {LabelOf(*lists[i])});
      item->setData(0, kIndexRole, QVariant::fromValue(static_cast<qulonglong>(i)));
      if (!currentItem()) setCurrentItem(item);
    }
    for (QTreeWidgetItemIterator item(this); *item; ++item)
      (*item)->setSizeHint(0, {0, kRowHeight});
    expandAll();
  }

  // Depth first, children in front of following siblings.
  std::vector<size_t> Choice() {
    std::vector<size_t> choice;
    for (QTreeWidgetItemIterator item(this); *item; ++item) {
      const QVariant index = (*item)->data(0, kIndexRole);
      if ((*item)->isSelected() && index.isValid()) choice.push_back(index.toULongLong());
    }
    return choice;
  }
};

}  // namespace

std::vector<size_t> ChooseListsInWindow(QWidget* parent, const QString& fileName,
                                        const PointLists& lists) {
  if (lists.empty()) return {};
  if (lists.size() == 1) return {0};
  QDialog dialog(parent);
  dialog.setWindowTitle(PlainText(kTextChooseItinerary));
  auto* const explanation = new QLabel(Text(kTextSeveralLists));
  explanation->setWordWrap(true);
  auto* const tree = new ListTree(fileName, lists);
  tree->setMinimumSize(440, 280);
  auto* const layout = new QVBoxLayout(&dialog);
  layout->setContentsMargins(kWideMargin, kWideMargin, kWideMargin, kWideMargin);
  layout->setSpacing(kSmallMargin);
  layout->addWidget(explanation);
  layout->addWidget(tree, 1);
  QDialogButtonBox* const buttons = AddDialogButtons(dialog, *layout);
  const auto enable = [tree, buttons] { EnableOk(*buttons, !tree->Choice().empty()); };
  QObject::connect(tree, &QTreeWidget::itemSelectionChanged, &dialog, enable);
  QObject::connect(tree, &QTreeWidget::itemDoubleClicked, &dialog, [&dialog, tree] {
    if (!tree->Choice().empty()) dialog.accept();
  });
  tree->setFocus();
  if (dialog.exec() != QDialog::Accepted) return {};
  return tree->Choice();
}
