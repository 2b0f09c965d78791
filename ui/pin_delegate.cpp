#include "ui/pin_delegate.h"

#include <QApplication>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "ui/look.h"

namespace {

constexpr double kDisc = 22;
constexpr double kPad = 6;  // on both sides of a long number

QPainterPath Star(const QPointF& center, double radius) {
  QPolygonF star;
  for (int i = 0; i < 10; ++i) {
    const double angle = -M_PI / 2 + i * M_PI / 5;
    const double length = i % 2 == 0 ? radius : radius * 0.45;
    star << center + QPointF(std::cos(angle) * length, std::sin(angle) * length);
  }
  QPainterPath path;
  path.addPolygon(star);
  path.closeSubpath();
  return path;
}

QPainterPath Diamond(const QPointF& center, double radius) {
  QPainterPath path;
  path.addPolygon(QPolygonF{{center.x(), center.y() - radius},
                            {center.x() + radius, center.y()},
                            {center.x(), center.y() + radius},
                            {center.x() - radius, center.y()}});
  path.closeSubpath();
  return path;
}

void DrawDisc(QPainter& painter, const QRectF& cell, const QFont& font, const QString& number,
              bool isSelected) {
  const LookColors& colors = CurrentColors();
  QFont small = font;
  small.setPointSizeF(font.pointSizeF() * 0.85);
  small.setBold(true);
  const double width = std::max(kDisc, QFontMetricsF(small).horizontalAdvance(number) + 2 * kPad);
  QRectF disc(0, 0, width, kDisc);
  disc.moveCenter(cell.center());
  painter.setPen(QPen(colors.accent, 1.6));
  painter.setBrush(isSelected ? colors.accent : colors.panel);
  painter.drawRoundedRect(disc, kDisc / 2, kDisc / 2);
  painter.setFont(small);
  painter.setPen(isSelected ? colors.onAccent : colors.accent);
  painter.drawText(disc, Qt::AlignCenter, number);
}

}  // namespace

void PinDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const {
  QStyleOptionViewItem ground = option;
  initStyleOption(&ground, index);
  const QString number = ground.text;
  ground.text.clear();
  const QWidget* const widget = option.widget;
  (widget ? widget->style() : QApplication::style())
      ->drawControl(QStyle::CE_ItemViewItem, &ground, painter, widget);

  const bool isSelected = (option.state & QStyle::State_Selected) != 0;
  const LookColors& colors = CurrentColors();
  const QRectF cell(option.rect);
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  painter->setPen(QPen(colors.accent, 1.6));
  painter->setBrush(isSelected ? QBrush(colors.accent) : Qt::NoBrush);
  switch (m_kind) {
    case PinKind::kItinerary:
      DrawDisc(*painter, cell, option.font, number, isSelected);
      break;
    case PinKind::kSearchResults:
      painter->drawEllipse(cell.center(), kDisc / 3, kDisc / 3);
      break;
    case PinKind::kFavorites:
      painter->drawPath(Star(cell.center(), kDisc / 2.4));
      break;
    case PinKind::kPois:
      painter->drawPath(Diamond(cell.center(), kDisc / 2.6));
      break;
  }
  painter->restore();
}

QSize PinDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
  return {static_cast<int>(kDisc) + 2 * kSmallMargin, static_cast<int>(kDisc) + kSmallMargin};
}
