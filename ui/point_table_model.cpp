#include "ui/point_table_model.h"

#include <algorithm>

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
      return kTextDistance;
    case RouteColumn::kDuration:
      return kTextDuration;
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

size_t ToIndex(int row) { return static_cast<size_t>(row); }

bool IsMeasure(RouteColumn column) {
  return column == RouteColumn::kDistance || column == RouteColumn::kDuration;
}

QVariant AlignmentOf(RouteColumn column) {
  return QVariant::fromValue(Qt::AlignVCenter |
                             (IsMeasure(column) ? Qt::AlignRight : Qt::AlignLeft));
}

}  // namespace

PointTableModel::PointTableModel(PinKind kind, const CSettings& settings, QObject* parent)
    : QAbstractTableModel(parent), m_kind(kind), m_settings(settings) {}

void PointTableModel::InsertRow(int index) {
  m_hasWays.reset();
  beginInsertRows({}, index, index);
  ++m_rows;
  endInsertRows();
}

void PointTableModel::RemoveRows(int first, int count) {
  m_hasWays.reset();
  beginRemoveRows({}, first, first + count - 1);
  m_rows -= count;
  endRemoveRows();
}

void PointTableModel::ResetRows(int count) {
  m_hasWays.reset();
  beginResetModel();
  m_rows = count;
  endResetModel();
}

void PointTableModel::RefreshRows(int first, int last) {
  m_hasWays.reset();
  // A list that is not shown yet has no rows.
  if (first < m_rows) Q_EMIT dataChanged(index(first, 0), index(last, kColumnCount - 1));
}

int PointTableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : m_rows;
}

int PointTableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kColumnCount;
}

const CGpsPoint* PointTableModel::PointAt(int row) const {
  // Rows follow the list a little later than it changes.
  const bool isThere = m_list && row >= 0 && ToIndex(row) < m_list->Count();
  return isThere ? &m_list->points[ToIndex(row)] : nullptr;
}

bool PointTableModel::LacksWay(int row) const {
  if (m_kind != PinKind::kItinerary || row == 0 || m_list->points[ToIndex(row)].GetRouteLeg())
    return false;
  if (!m_hasWays) {
    m_hasWays = std::any_of(m_list->points.begin(), m_list->points.end(),
                            [](const CGpsPoint& point) { return point.GetRouteLeg(); });
  }
  return *m_hasWays;
}

QString PointTableModel::CellText(int row, RouteColumn column) const {
  const CGpsPoint* const point = PointAt(row);
  if (!point) return {};
  // The disc of the first column holds the number, if any; names have a column of their own.
  if (column == RouteColumn::kNumber)
    return m_settings.displayNumber ? QString::number(row + 1) : QString();
  if (column == RouteColumn::kName && point->name.empty())
    return FromUtf8(PositionText(*point, static_cast<CoordinateFormat>(m_settings.coordinates)));
  return FromUtf8(RouteTableText(*m_list, ToIndex(row), column, m_settings));
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
      if (IsMeasure(column) && LacksWay(index.row())) return Text(kTextNoWayToStop);
      return column == RouteColumn::kName && !point->comment.empty()
                 ? FromUtf8(point->comment).toHtmlEscaped()
                 : QVariant();
    case Qt::TextAlignmentRole:
      return AlignmentOf(column);
    case Qt::ForegroundRole:
      if (!IsMeasure(column)) return {};
      return LacksWay(index.row()) ? CurrentColors().dangling : CurrentColors().muted;
    default:
      return {};
  }
}

QVariant PointTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) return {};
  const auto column = static_cast<RouteColumn>(section + 1);
  if (role == Qt::DisplayRole) return Text(HeaderText(column));
  if (role == Qt::TextAlignmentRole) return AlignmentOf(column);
  return {};
}

bool PointTableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  const CGpsPoint* const point = PointAt(index.row());
  if (role != Qt::EditRole || !point || !renamed) return false;
  const QString name = value.toString();
  if (ToUtf8(name) != point->name) renamed(ToIndex(index.row()), name);
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
