#include "ui/progress_dialog.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "base/text_ids.h"
#include "services/service_table.h"
#include "ui/look.h"
#include "ui/text.h"

namespace {

constexpr int kWidth = 420;
constexpr int kWholeBar = 1000;

/// A dialog that Escape and its closing button do not close, but cancel.
class CancelDialog : public QDialog {
 public:
  using QDialog::QDialog;
  QPushButton* cancel = nullptr;
  void reject() override { cancel->click(); }
};

QString ProviderLabel(int32_t provider) {
  const Service* const service = FindService(provider);
  return service ? PlainText(service->labelTextId) : QString();
}

}  // namespace

ProgressDialog::~ProgressDialog() { Close(); }

void ProgressDialog::Open(std::string_view text, int32_t provider, size_t steps) {
  Close();
  m_isCancelled = false;
  auto* const dialog = new CancelDialog(m_parent);
  dialog->setWindowTitle(ProductTitle());
  dialog->setWindowModality(Qt::WindowModal);
  dialog->setObjectName(QStringLiteral("progress"));
  m_text = new QLabel;
  m_text->setWordWrap(true);
  m_text->setTextFormat(Qt::PlainText);
  m_text->setMinimumWidth(kWidth);
  auto* const service = new QLabel(ProviderLabel(provider));
  service->setProperty("role", QStringLiteral("hint"));
  m_bar = new QProgressBar;
  m_bar->setTextVisible(false);
  m_bar->setRange(0, static_cast<int>(steps));
  m_cancel = new QPushButton(Text(kTextCancel));
  dialog->cancel = m_cancel;
  QObject::connect(m_cancel, &QPushButton::clicked, dialog, [this] {
    m_isCancelled = true;
    m_cancel->setEnabled(false);
  });

  auto* const buttons = new QHBoxLayout;
  buttons->addWidget(service);
  buttons->addStretch();
  buttons->addWidget(m_cancel);
  auto* const layout = new QVBoxLayout(dialog);
  layout->setContentsMargins(kWideMargin, kWideMargin, kWideMargin, kWideMargin);
  layout->setSpacing(kSmallMargin);
  layout->addWidget(m_text);
  layout->addWidget(m_bar);
  layout->addLayout(buttons);
  m_dialog = dialog;
  SetText(text);
  dialog->show();
}

void ProgressDialog::SetText(std::string_view text) {
  if (m_dialog) m_text->setText(FromUtf8(text));
}

void ProgressDialog::Step() {
  if (m_dialog) m_bar->setValue(m_bar->value() + 1);
}

void ProgressDialog::SetProgress(uint64_t done, uint64_t inAll) {
  if (!m_dialog) return;
  if (inAll == 0) {
    m_bar->setRange(0, 0);
    return;
  }
  m_bar->setRange(0, kWholeBar);
  m_bar->setValue(
      static_cast<int>(static_cast<double>(done) / static_cast<double>(inAll) * kWholeBar));
}

void ProgressDialog::Close() {
  if (m_dialog) delete m_dialog.data();
}
