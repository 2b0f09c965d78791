#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "settings/csv_layout.h"

/// Columns that the layout window offers besides "none".
inline constexpr uint32_t kHighestCsvColumnChoice = 19;

/// What stands in the layout window, and what its controls do; the window itself only shows it.
class CsvLayoutForm {
 public:
  /// Opens with a stored layout; with the first preset when the stored one does not exist.
  CsvLayoutForm(CsvUse use, CCsvLayout stored);

  /// Texts in the current language, UTF-8.
  std::string Title() const;
  static std::vector<std::string> PresetChoices();
  /// The choices of each column's list; an index is the column.
  static std::vector<std::string> ColumnChoices();

  /// A preset fills everything. "Manual" brings back what was entered by hand before, if anything
  /// was, and leaves the rest as it is.
  void ChoosePreset(uint32_t preset);
  /// The user's separators are shown while this is set.
  void SetUseLocale(bool useLocale);

  /// True when the columns and the check box cannot be changed.
  bool IsLocked() const { return m_layout.preset != kManualCsvPreset; }
  bool AreSeparatorsLocked() const { return IsLocked() || m_layout.useLocale; }

  /// What the controls show. Controls that are not locked write to it.
  CCsvLayout& Shown() { return m_layout; }
  const CCsvLayout& Shown() const { return m_layout; }

  /// OK: gives the layout, with separators of at most four characters, and stores it. Returns 0
  /// or the platform's error code when it could not be stored.
  uint32_t Accept(storage::Storage& storage, CCsvLayout& layout) const;

 private:
  CsvUse m_use;
  CCsvLayout m_layout;
  std::optional<CCsvLayout> m_manual;  // what was entered by hand before another preset came
};
