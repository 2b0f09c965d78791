#include "settings/csv_layout_form.h"

#include <algorithm>
#include <utility>

#include "base/format_text.h"
#include "base/status.h"
#include "base/text_ids.h"

CsvLayoutForm::CsvLayoutForm(CsvUse use, CCsvLayout stored)
    : m_use(use), m_layout(std::move(stored)) {
  if (m_layout.preset >= CsvPresets().size()) ChoosePreset(0);
  if (m_layout.useLocale) SetUseLocale(true);
}

std::string CsvLayoutForm::Title() const {
  std::string title(LoadTextUtf8(m_use == CsvUse::kRead ? kTextOpen : kTextExport));
  std::erase(title, '&');
  return title + " CSV";
}

std::vector<std::string> CsvLayoutForm::PresetChoices() {
  std::vector<std::string> labels;
  for (const CsvPreset& preset : CsvPresets()) labels.emplace_back(LoadTextUtf8(preset.textId));
  return labels;
}

std::vector<std::string> CsvLayoutForm::ColumnChoices() {
  std::vector<std::string> choices{std::string(LoadTextUtf8(kTextNoColumn))};
  for (uint32_t column = 1; column <= kHighestCsvColumnChoice; ++column)
    choices.push_back(FormatText(kTextColumn, column));
  return choices;
}

void CsvLayoutForm::ChoosePreset(uint32_t preset) {
  if (preset >= CsvPresets().size() || preset == m_layout.preset) return;
  if (m_layout.preset == kManualCsvPreset) m_manual = m_layout;
  if (preset != kManualCsvPreset) {
    m_layout = CsvPresets()[preset].layout;
  } else if (m_manual) {
    m_layout = *m_manual;
  }
  m_layout.preset = preset;
}

void CsvLayoutForm::SetUseLocale(bool useLocale) {
  m_layout.useLocale = useLocale;
  if (!useLocale) return;
  const NumberSeparators separators = CsvSeparators(m_layout);
  m_layout.decimalSeparator = separators.decimal;
  m_layout.columnSeparator = separators.list;
}

uint32_t CsvLayoutForm::Accept(storage::Storage& storage, CCsvLayout& layout) const {
  layout = m_layout;
  layout.decimalSeparator.resize(std::min(layout.decimalSeparator.size(), kLongestCsvSeparator));
  layout.columnSeparator.resize(std::min(layout.columnSeparator.size(), kLongestCsvSeparator));
  try {
    StoreCsvLayout(storage, m_use, layout);
  } catch (const storage::Exception& failure) {
    return failure.status;
  }
  return kStatusSuccess;
}
