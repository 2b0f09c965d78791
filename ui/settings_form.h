#pragma once

#include <QFormLayout>
#include <functional>
#include <vector>

#include "ui/settings_page.h"

class QCheckBox;
class QComboBox;

/// A page whose rows know where their values go.
class SettingsForm : public SettingsPage {
 public:
  SettingsForm();
  uint32_t Store() override;

 protected:
  QCheckBox* AddSwitch(uint32_t textId, bool& value);
  /// A list of texts; the value is the index.
  QComboBox* AddChoice(uint32_t textId, const QStringList& choices, int32_t& value);
  QComboBox* AddList(uint32_t textId);
  void AddRow(uint32_t textId, QWidget* field);
  void AddHeading(uint32_t textId);
  void OnStore(std::function<void()> action) { m_actions.push_back(std::move(action)); }
  /// For actions that write to the settings file: the user is told of the first failure.
  void NoteStored(uint32_t status) {
    if (m_status == 0) m_status = status;
  }

  QFormLayout* m_form;

 private:
  std::vector<std::function<void()>> m_actions;
  uint32_t m_status = 0;
};
