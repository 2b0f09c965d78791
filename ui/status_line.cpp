#include "ui/status_line.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>

#include "base/text_ids.h"
#include "ui/look.h"
#include "ui/text.h"

namespace {

/// A label whose text ends in dots where there is no room for it.
class ShortenedLabel : public QLabel {
 public:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, width());
    painter.drawText(rect(), static_cast<int>(alignment()), shown);
  }
};

}  // namespace

StatusLine::StatusLine(QWidget* parent)
    : QWidget(parent), m_count(new QLabel), m_totals(new QLabel), m_message(new ShortenedLabel) {
  m_totals->setAccessibleName(Text(kTextDistance));
  m_totals->setToolTip(Text(kTextDistance));
  m_totals->setTextInteractionFlags(Qt::TextSelectableByMouse);
  for (QLabel* const label : {m_count, m_totals, m_message}) label->setTextFormat(Qt::PlainText);
  m_message->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  m_message->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  m_message->setObjectName(QStringLiteral("message"));
  auto* const layout = new QHBoxLayout(this);
  layout->setContentsMargins(kSmallMargin, kGrid, kSmallMargin, kGrid);
  layout->setSpacing(kWideMargin);
  layout->addWidget(m_count);
  layout->addWidget(m_totals);
  layout->addWidget(m_message, 1);
  ShowCount(0);
}

void StatusLine::ShowMessage(std::string_view text) {
  const QString shown = FromUtf8(text).simplified();
  m_message->setText(shown);
  m_message->setToolTip(shown.toHtmlEscaped());
}

void StatusLine::ShowTotals(std::string_view text) { m_totals->setText(FromUtf8(text)); }

void StatusLine::ShowCount(size_t count) {
  m_count->setText(FilledText(kTextWaypointCount, count).trimmed());
}
