#include "ui/settings_form.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>

#include "ui/look.h"
#include "ui/text.h"

SettingsForm::SettingsForm() : m_form(new QFormLayout(this)) {
  m_form->setContentsMargins(kWideMargin, kWideMargin, kWideMargin, kWideMargin);
  m_form->setVerticalSpacing(kSmallMargin);
  m_form->setHorizontalSpacing(kWideMargin);
}

uint32_t SettingsForm::Store() {
  m_status = 0;
  for (const auto& action : m_actions) action();
  return m_status;
}

QCheckBox* SettingsForm::AddSwitch(uint32_t textId, bool& value) {
  auto* const box = new QCheckBox(Text(textId));
  box->setChecked(value);
  m_form->addRow(box);
  OnStore([box, &value] { value = box->isChecked(); });
  return box;
}

QComboBox* SettingsForm::AddList(uint32_t textId) {
  auto* const list = new QComboBox;
  AddRow(textId, list);
  return list;
}

QComboBox* SettingsForm::AddChoice(uint32_t textId, const QStringList& choices, int32_t& value) {
  QComboBox* const list = AddList(textId);
  list->addItems(choices);
  list->setCurrentIndex(value);
  OnStore([list, &value] {
    if (list->currentIndex() >= 0) value = list->currentIndex();
  });
  return list;
}

void SettingsForm::AddRow(uint32_t textId, QWidget* field) {
  field->setAccessibleName(PlainText(textId));
  m_form->addRow(Text(textId), field);
}

void SettingsForm::AddHeading(uint32_t textId) {
  auto* const heading = new QLabel(Text(textId));
  QFont bold = heading->font();
  bold.setBold(true);
  heading->setFont(bold);
  heading->setContentsMargins(0, kSmallMargin, 0, 0);
  m_form->addRow(heading);
}
