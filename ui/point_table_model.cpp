#include "ui/point_table_model.h"

#include "base/text_ids.h"
#include "model/route_leg.h"
#include "ui/look.h"
#include "ui/text.h"

namespace {

constexpr int kColumnCount = 8;

uint32_t HeaderText(RouteColumn column) {
  switch (column) {
    case RouteColumn::kNumber:
      return kTextColumnNumber;
    case RouteColumn::kName:
      return kTextName;
    case RouteColumn::kDistance:
      return kTextPageDistance;
    case RouteColumn::kDuration:
      return kTextPageDuration;
    case RouteColumn::kPosition:
      return kTextColumnPosition;
    case RouteColumn::kComment:
      return kTextComment;
    case RouteColumn::kTravelMode:
      return kTextColumnMode;
    case RouteColumn::kColor:
      return kTextColumnColor;
  }
  return 0;
}

}  // namespace

PointTableModel::PointTableModel(PinKind kind, const CSettings& settings, QObject* parent)
    : QAbstractTableModel(parent), m_kind(kind), m_settings(settings) {}

void PointTableModel::InsertRow(int index) {
  beginInsertRows({}, index, index);
  ++m_rows;
  endInsertRows();
}

void PointTableModel::RemoveRows(int first, int count) {
  beginRemoveRows({}, first, first + count - 1);
  m_rows -= count;
  endRemoveRows();
}

void PointTableModel::ResetRows(int count) {
  beginResetModel();
  m_rows = count;
  endResetModel();
}

void PointTableModel::RefreshRows(int first, int last) {
  Q_EMIT dataChanged(index(first, 0), index(last, kColumnCount - 1));
}

int PointTableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : m_rows;
}

int PointTableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kColumnCount;
}

const CGpsPoint* PointTableModel::PointAt(int row) const {
  // Rows follow the list a little later than it changes.
  const bool isThere = m_list && row >= 0 && static_cast<size_t>(row) < m_list->Count();
  return isThere ? &m_list->points[static_cast<size_t>(row)] : nullptr;
}

QString PointTableModel::CellText(int row, RouteColumn column) const {
  const CGpsPoint* const point = PointAt(row);
  if (!point) return {};
  // The disc of the first column holds the number; names have a column of their own.
  if (column == RouteColumn::kNumber) return QString::number(row + 1);
  if (column == RouteColumn::kName && point->name.empty())
    return FromUtf8(PositionText(*point, static_cast<CoordinateFormat>(m_settings.coordinates)));
  return FromUtf8(RouteTableText(*m_list, static_cast<size_t>(row), column, m_settings));
}

QVariant PointTableModel::data(const QModelIndex& index, int role) const {
  const auto column = static_cast<RouteColumn>(index.column() + 1);
  const CGpsPoint* const point = PointAt(index.row());
  if (!point) return {};
  switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole:
      return CellText(index.row(), column);
    case Qt::EditRole:
      return FromUtf8(point->name);
    case Qt::ToolTipRole:
      return column == RouteColumn::kName && !point->comment.empty()
                 ? FromUtf8(point->comment).toHtmlEscaped()
                 : QVariant();
    case Qt::TextAlignmentRole: {
      const bool isMeasure = column == RouteColumn::kDistance || column == RouteColumn::kDuration;
      return QVariant::fromValue(Qt::AlignVCenter | (isMeasure ? Qt::AlignRight : Qt::AlignLeft));
    }
    case Qt::ForegroundRole:
      if (column == RouteColumn::kDistance || column == RouteColumn::kDuration)
        return CurrentColors().muted;
      return {};
    default:
      return {};
  }
}

QVariant PointTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) return {};
  const auto column = static_cast<RouteColumn>(section + 1);
  if (role == Qt::DisplayRole) return Text(HeaderText(column));
  if (role == Qt::TextAlignmentRole) {
    const bool isMeasure = column == RouteColumn::kDistance || column == RouteColumn::kDuration;
    return QVariant::fromValue(Qt::AlignVCenter | (isMeasure ? Qt::AlignRight : Qt::AlignLeft));
  }
  return {};
}

bool PointTableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  const CGpsPoint* const point = PointAt(index.row());
  if (role != Qt::EditRole || !point || !renamed) return false;
  const QString name = value.toString();
  if (ToUtf8(name) != point->name) renamed(static_cast<size_t>(index.row()), name);
  return true;
}

Qt::ItemFlags PointTableModel::flags(const QModelIndex& index) const {
  Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
  if (m_kind != PinKind::kItinerary) return flags;
  if (!index.isValid()) return Qt::ItemIsDropEnabled;
  if (index.column() == ColumnOf(RouteColumn::kName)) flags |= Qt::ItemIsEditable;
  return flags | Qt::ItemIsDragEnabled;
}

Qt::DropActions PointTableModel::supportedDropActions() const {
  return Qt::CopyAction | Qt::MoveAction;
}
