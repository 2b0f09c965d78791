#include "ui/accessible_lists.h"

#include <QAccessibleWidget>
#include <QComboBox>

namespace {

/// A drop-down list with its name, what is chosen as its value, and its entries.
class NamedList : public QAccessibleWidget {
 public:
  explicit NamedList(QComboBox& list)
      : QAccessibleWidget(&list, QAccessible::ComboBox), m_list(list) {}

  QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Value ? m_list.currentText() : QAccessibleWidget::text(kind);
  }
  int childCount() const override { return 1; }
  QAccessibleInterface* child(int index) const override {
    return index == 0 ? QAccessible::queryAccessibleInterface(m_list.view()) : nullptr;
  }
  int indexOfChild(const QAccessibleInterface* child) const override {
    return child && child->object() == m_list.view() ? 0 : -1;
  }
  QStringList actionNames() const override { return {showMenuAction(), pressAction()}; }
  void doAction(const QString& action) override {
    if (actionNames().contains(action)) m_list.showPopup();
  }

 private:
  QComboBox& m_list;
};

QAccessibleInterface* MakeInterface(const QString& className, QObject* object) {
  if (className != QLatin1String("QComboBox")) return nullptr;
  auto* const list = qobject_cast<QComboBox*>(object);
  return list ? new NamedList(*list) : nullptr;
}

}  // namespace

void NameListsForAssistiveTechnology() { QAccessible::installFactory(MakeInterface); }
