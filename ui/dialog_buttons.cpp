#include "ui/dialog_buttons.h"

#include <QBoxLayout>
#include <QDialog>
#include <QDialogButtonBox>
#include <QPushButton>

#include "base/text_ids.h"
#include "ui/look.h"
#include "ui/text.h"

QVBoxLayout* AddDialogLayout(QDialog& dialog) {
  auto* const layout = new QVBoxLayout(&dialog);
  layout->setContentsMargins(kWideMargin, kWideMargin, kWideMargin, kWideMargin);
  layout->setSpacing(kWideMargin);
  return layout;
}

QDialogButtonBox* AddDialogButtons(QDialog& dialog, QBoxLayout& layout) {
  auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  buttons->button(QDialogButtonBox::Ok)->setText(Text(kTextOk));
  buttons->button(QDialogButtonBox::Ok)->setDefault(true);
  buttons->button(QDialogButtonBox::Cancel)->setText(Text(kTextCancel));
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  layout.addWidget(buttons);
  return buttons;
}

void EnableOk(QDialogButtonBox& buttons, bool enabled) {
  buttons.button(QDialogButtonBox::Ok)->setEnabled(enabled);
}
