#include "ui/csv_layout_window.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QFile>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QVBoxLayout>
#include <array>

#include "base/text.h"
#include "base/text_ids.h"
#include "planner/window_parts.h"
#include "settings/csv_layout_form.h"
#include "ui/boxes.h"
#include "ui/dialog_buttons.h"
#include "ui/look.h"
#include "ui/settings_trouble.h"
#include "ui/text.h"

namespace {

constexpr int kPreviewLines = 5;
constexpr qint64 kLongestPreview = 4096;  // bytes

struct ColumnRow {
  uint32_t textId;
  uint32_t CCsvLayout::*column;
};

constexpr std::array<ColumnRow, 5> kColumns{{{kTextLatitude, &CCsvLayout::latitudeColumn},
                                             {kTextLongitude, &CCsvLayout::longitudeColumn},
                                             {kTextElevation, &CCsvLayout::elevationColumn},
                                             {kTextName, &CCsvLayout::nameColumn},
                                             {kTextComment, &CCsvLayout::commentColumn}}};

QString FirstLines(const QString& fileName) {
  QFile file(fileName);
  if (fileName.isEmpty() || !file.open(QIODevice::ReadOnly)) return {};
  const std::string text = DecodeTextFileToUtf8(file.read(kLongestPreview).toStdString());
  QStringList lines = FromUtf8(text).split(QLatin1Char('\n'));
  return lines.mid(0, kPreviewLines).join(QLatin1Char('\n'));
}

// Separators are 8-bit text.
QString ShownSeparator(const std::string& separator) {
  return QString::fromLatin1(separator.data(), static_cast<qsizetype>(separator.size()));
}

/// The window and its controls; what they do is the form's matter.
class CsvLayoutWindow : public QDialog {
 public:
  CsvLayoutWindow(QWidget* parent, CsvUse use, const QString& fileName, const CCsvLayout& layout)
      : QDialog(parent), m_form(use, layout) {
    setWindowTitle(FromUtf8(m_form.Title()));
    m_controls = new QFormLayout;
    m_controls->setVerticalSpacing(kSmallMargin);
    m_presets = AddList(kTextTemplate, CsvLayoutForm::PresetChoices());
    for (size_t i = 0; i < kColumns.size(); ++i)
      m_columns.at(i) = AddList(kColumns.at(i).textId, CsvLayoutForm::ColumnChoices());
    m_useLocale = new QCheckBox(Text(kTextUseLocale));
    m_controls->addRow(QString(), m_useLocale);
    m_decimal = AddEdit(kTextDecimalSeparator);
    m_separator = AddEdit(kTextColumnSeparator);

    QVBoxLayout* const outer = AddDialogLayout(*this);
    outer->addLayout(m_controls);
    AddPreview(*outer, fileName);
    AddDialogButtons(*this, *outer);
    ShowForm();
    connect(m_presets, &QComboBox::activated, this, [this](int preset) {
      TakeControls();
      m_form.ChoosePreset(static_cast<uint32_t>(preset));
      ShowForm();
    });
    connect(m_useLocale, &QCheckBox::clicked, this, [this](bool isOn) {
      TakeControls();
      m_form.SetUseLocale(isOn);
      ShowForm();
    });
  }

  uint32_t Accept(CCsvLayout& layout) {
    TakeControls();
    storage::Storage storage = storage::OpenUserStorage();
    return m_form.Accept(storage, layout);
  }

 private:
  QComboBox* AddList(uint32_t textId, const std::vector<std::string>& choices) {
    auto* const list = new QComboBox;
    for (const std::string& choice : choices) list->addItem(FromUtf8(choice));
    list->setAccessibleName(PlainText(textId));
    m_controls->addRow(Text(textId), list);
    return list;
  }

  QLineEdit* AddEdit(uint32_t textId) {
    auto* const edit = new QLineEdit;
    edit->setMaxLength(static_cast<int>(kLongestCsvSeparator));
    edit->setMaximumWidth(80);
    edit->setAccessibleName(PlainText(textId));
    m_controls->addRow(Text(textId), edit);
    return edit;
  }

  static void AddPreview(QBoxLayout& layout, const QString& fileName) {
    const QString lines = FirstLines(fileName);
    if (lines.isEmpty()) return;
    auto* const preview = new QPlainTextEdit(lines);
    preview->setReadOnly(true);
    preview->setLineWrapMode(QPlainTextEdit::NoWrap);
    preview->setTabChangesFocus(true);
    preview->setMinimumWidth(420);
    preview->setFixedHeight(preview->fontMetrics().lineSpacing() * (kPreviewLines + 2));
    preview->setAccessibleName(Text(kTextFirstLines));
    auto* const label = new QLabel(Text(kTextFirstLines));
    label->setBuddy(preview);
    layout.addWidget(label);
    layout.addWidget(preview);
  }

  void ShowForm() {
    const CCsvLayout& shown = m_form.Shown();
    m_presets->setCurrentIndex(static_cast<int>(shown.preset));
    for (size_t i = 0; i < kColumns.size(); ++i) {
      QComboBox& list = *m_columns.at(i);
      list.setCurrentIndex(static_cast<int>(shown.*kColumns.at(i).column));
      list.setEnabled(!m_form.IsLocked());
    }
    m_useLocale->setChecked(shown.useLocale);
    m_useLocale->setEnabled(!m_form.IsLocked());
    m_decimal->setText(ShownSeparator(shown.decimalSeparator));
    m_separator->setText(ShownSeparator(shown.columnSeparator));
    m_decimal->setEnabled(!m_form.AreSeparatorsLocked());
    m_separator->setEnabled(!m_form.AreSeparatorsLocked());
  }

  void TakeControls() {
    CCsvLayout& shown = m_form.Shown();
    if (!m_form.IsLocked()) {
      for (size_t i = 0; i < kColumns.size(); ++i) {
        const int column = m_columns.at(i)->currentIndex();
        // A column beyond the list's end stays as it was stored.
        if (column >= 0) shown.*kColumns.at(i).column = static_cast<uint32_t>(column);
      }
    }
    if (m_form.AreSeparatorsLocked()) return;
    shown.decimalSeparator = m_decimal->text().toLatin1().toStdString();
    shown.columnSeparator = m_separator->text().toLatin1().toStdString();
  }

  CsvLayoutForm m_form;
  QFormLayout* m_controls;
  QComboBox* m_presets;
  std::array<QComboBox*, kColumns.size()> m_columns{};
  QCheckBox* m_useLocale;
  QLineEdit* m_decimal;
  QLineEdit* m_separator;
};

}  // namespace

bool AskCsvLayout(QWidget* parent, CsvUse use, const QString& fileName, CCsvLayout& layout) {
  CsvLayoutWindow window(parent, use, fileName, layout);
  if (window.exec() != QDialog::Accepted) return false;
  const QString trouble = DescribeStoreTrouble(window.Accept(layout));
  if (!trouble.isEmpty()) ShowMessageBox(parent, trouble, kBoxOk | kBoxWarningIcon);
  return true;
}
