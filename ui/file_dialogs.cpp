#include "ui/file_dialogs.h"

#include <QCheckBox>
#include <QFileDialog>
#include <QGridLayout>
#include <QStringList>

#include "base/text_ids.h"
#include "ui/text.h"

QStringList QtFilters(const WideString& filter) {
  const QStringList parts = FromWide(filter).split(QLatin1Char('|'));
  QStringList filters;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    if (parts[i].isEmpty()) continue;
    QString patterns = parts[i + 1];
    patterns.replace(QLatin1Char(';'), QLatin1Char(' '));
    if (patterns == QLatin1String("*.*")) patterns = QStringLiteral("*");
    // Qt hides the last parentheses; the label's own stay.
    filters.append(parts[i] + QStringLiteral(" (") + patterns + QLatin1Char(')'));
  }
  return filters;
}

std::optional<ChosenFile> ShowOpenDialog(QWidget* parent, const FileDialog& wanted,
                                         QString& folder) {
  QFileDialog dialog(parent, FromWide(wanted.title), folder);
  dialog.setFileMode(QFileDialog::ExistingFile);
  dialog.setOption(QFileDialog::HideNameFilterDetails);
  dialog.setNameFilters(QtFilters(wanted.filter));
  QCheckBox* append = nullptr;
  if (wanted.offersAppend) {
    // Dialogs of the desktop have no room for a box of ours.
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    append = new QCheckBox(Text(kTextAppend), &dialog);
    if (auto* const grid = qobject_cast<QGridLayout*>(dialog.layout()))
      grid->addWidget(append, grid->rowCount(), 0, 1, grid->columnCount());
  }
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  folder = dialog.directory().absolutePath();
  return ChosenFile{ToPath(dialog.selectedFiles().constFirst()), append && append->isChecked()};
}

std::optional<ChosenFile> ShowSaveDialog(QWidget* parent, const FileDialog& wanted,
                                         QString& folder) {
  QFileDialog dialog(parent, FromWide(wanted.title), folder);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setOption(QFileDialog::HideNameFilterDetails);
  dialog.setNameFilters(QtFilters(wanted.filter));
  dialog.setDefaultSuffix(FromWide(wanted.defaultExtension));
  dialog.selectFile(FromWide(wanted.defaultName));
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  folder = dialog.directory().absolutePath();
  return ChosenFile{ToPath(dialog.selectedFiles().constFirst()), false};
}
