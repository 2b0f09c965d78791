#include "ui/notice_bar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>

#include "base/text_ids.h"
#include "ui/icons.h"
#include "ui/look.h"
#include "ui/text.h"

NoticeBar::NoticeBar(QWidget* parent)
    : QFrame(parent), m_text(new QLabel), m_layout(new QHBoxLayout(this)) {
  setProperty("role", QStringLiteral("bar"));
  m_text->setTextFormat(Qt::PlainText);
  m_text->setWordWrap(true);
  auto* const sign = new QLabel;
  sign->setPixmap(LoadIcon(QStringLiteral("about")).pixmap(kIconSize));
  auto* const close = new QToolButton;
  close->setIcon(LoadIcon(QStringLiteral("close")));
  close->setToolTip(Text(kTextOnMapClose));
  close->setAccessibleName(Text(kTextOnMapClose));
  connect(close, &QToolButton::clicked, this, &QWidget::hide);
  m_layout->setContentsMargins(kWideMargin, kGrid, kSmallMargin, kGrid);
  m_layout->setSpacing(kSmallMargin);
  m_layout->addWidget(sign);
  m_layout->addWidget(m_text, 1);
  m_layout->addWidget(close);
  hide();
}

void NoticeBar::ShowNotice(const QString& text, std::vector<NoticeButton> buttons) {
  for (QWidget* const button : m_buttons) button->deleteLater();
  m_buttons.clear();
  m_text->setText(text);
  setAccessibleName(text);
  for (NoticeButton& each : buttons) {
    auto* const button = new QPushButton(each.text);
    connect(button, &QPushButton::clicked, this, [this, action = std::move(each.action)] {
      hide();
      action();
    });
    m_layout->insertWidget(m_layout->count() - 1, button);
    m_buttons.push_back(button);
  }
  show();
}

QString NoticeBar::NoticeText() const { return isHidden() ? QString() : m_text->text(); }
