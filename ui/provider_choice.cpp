#include "ui/provider_choice.h"

#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QVBoxLayout>

#include "base/text_ids.h"
#include "services/service_access.h"
#include "services/service_table.h"
#include "settings/settings.h"
#include "ui/dialog_buttons.h"
#include "ui/look.h"
#include "ui/service_list.h"
#include "ui/text.h"

namespace {

constexpr int kWidth = 420;

int32_t FirstUsable(int32_t wanted) {
  const Service* const service = FindService(wanted);
  return service && IsUsable(*service) ? wanted : provider::kStraight;
}

}  // namespace

bool ChooseDirectionsProvider(QWidget* parent, CSettings& settings) {
  const Service* const service = FindService(settings.routeProvider);
  if (settings.calculateAsked && service && IsUsable(*service)) return true;
  QDialog dialog(parent);
  dialog.setWindowTitle(PlainText(kTextCalculate));
  auto* const question = new QLabel(Text(kTextChooseProvider));
  question->setWordWrap(true);
  auto* const list = new QComboBox;
  list->setAccessibleName(Text(kTextDirectionsProvider));
  FillServiceList(*list, kCanDirections, FirstUsable(settings.routeProvider));
  auto* const layout = new QVBoxLayout(&dialog);
  layout->setContentsMargins(kWideMargin, kWideMargin, kWideMargin, kWideMargin);
  layout->setSpacing(kWideMargin);
  layout->addWidget(question);
  layout->addWidget(list);
  AddDialogButtons(dialog, *layout);
  dialog.setMinimumWidth(kWidth);
  list->setFocus();
  if (dialog.exec() != QDialog::Accepted) return false;
  settings.routeProvider = list->currentData().toInt();
  settings.calculateAsked = true;
  settings.Save();
  return true;
}
