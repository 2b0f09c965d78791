#include "ui/service_list.h"

#include <QComboBox>
#include <QStandardItemModel>
#include <set>

#include "base/text_ids.h"
#include "services/service_access.h"
#include "services/service_table.h"
#include "ui/text.h"

void FillServiceList(QComboBox& list, uint32_t ability, int32_t chosen) {
  list.clear();
  std::set<int32_t> shown;
  for (const Service& service : Services()) {
    const int32_t number = ProviderIdOf(service);
    if ((service.abilities & ability) == 0 || number == kNoProviderId) continue;
    if (!shown.insert(number).second) continue;
    const Service& asked = ServiceFor(service, static_cast<ServiceAbility>(ability));
    const bool isUsable = IsUsable(asked);
    const QString label = PlainText(service.labelTextId);
    list.addItem(isUsable ? label : FilledText(kTextNotSetUp, ToUtf8(label)), number);
    const auto* const model = qobject_cast<QStandardItemModel*>(list.model());
    if (!isUsable && model) model->item(list.count() - 1)->setEnabled(false);
  }
  const int index = list.findData(chosen);
  if (index >= 0) list.setCurrentIndex(index);
}
