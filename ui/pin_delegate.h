#pragma once

#include <QStyledItemDelegate>

#include "planner/list_ids.h"

/// Draws the sign of a row as the map draws its pin: a numbered disc for a stop, a ring for what
/// was found, a star for a favourite, a diamond for a point of interest.
class PinDelegate : public QStyledItemDelegate {
 public:
  PinDelegate(PinKind kind, QObject* parent) : QStyledItemDelegate(parent), m_kind(kind) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  const PinKind m_kind;
};
