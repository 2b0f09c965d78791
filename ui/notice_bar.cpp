#include "ui/notice_bar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <algorithm>
#include <utility>

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
  connect(close, &QToolButton::clicked, this, [this] { Withdraw(m_notices.back().subject); });
  m_layout->setContentsMargins(kWideMargin, kGrid, kSmallMargin, kGrid);
  m_layout->setSpacing(kSmallMargin);
  m_layout->addWidget(sign);
  m_layout->addWidget(m_text, 1);
  m_layout->addWidget(close);
  hide();
}

void NoticeBar::ShowNotice(NoticeSubject subject, const QString& text,
                           std::vector<NoticeButton> buttons) {
  std::erase_if(m_notices, [subject](const Notice& notice) { return notice.subject == subject; });
  m_notices.push_back({subject, text, std::move(buttons)});
  ShowNewest();
}

void NoticeBar::Withdraw(NoticeSubject subject) {
  std::erase_if(m_notices, [subject](const Notice& notice) { return notice.subject == subject; });
  ShowNewest();
}

bool NoticeBar::IsTold(NoticeSubject subject) const {
  return std::ranges::find(m_notices, subject, &Notice::subject) != m_notices.end();
}

void NoticeBar::ShowNewest() {
  for (QWidget* const button : m_buttons) button->deleteLater();
  m_buttons.clear();
  setVisible(!m_notices.empty());
  if (m_notices.empty()) return;
  const Notice& notice = m_notices.back();
  m_text->setText(notice.text);
  setAccessibleName(notice.text);
  for (const NoticeButton& each : notice.buttons) {
    auto* const button = new QPushButton(each.text);
    connect(button, &QPushButton::clicked, this,
            [this, subject = notice.subject, action = each.action] {
              Withdraw(subject);
              action();
            });
    m_layout->insertWidget(m_layout->count() - 1, button);
    m_buttons.push_back(button);
  }
}

QString NoticeBar::NoticeText() const {
  return m_notices.empty() ? QString() : m_notices.back().text;
}
