#include "ui/point_table.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QScopedValueRollback>
#include <algorithm>

#include "base/text_ids.h"
#include "planner/point_list_view.h"
#include "ui/look.h"
#include "ui/pin_delegate.h"
#include "ui/point_table_model.h"
#include "ui/text.h"

namespace {

constexpr int kRowHeight = 32;
constexpr int kPinWidth = 44;
constexpr int kPinRoom = 24;  // beside the digits

int ToInt(size_t value) { return static_cast<int>(value); }

}  // namespace

PointTable::PointTable(PinKind kind, const CSettings& settings, QWidget* parent)
    : QTableView(parent), m_model(new PointTableModel(kind, settings, this)) {
  setModel(m_model);
  setSelectionBehavior(SelectRows);
  setSelectionMode(ExtendedSelection);
  setEditTriggers(EditKeyPressed);
  setShowGrid(false);
  setWordWrap(false);
  setTabKeyNavigation(false);
  setHorizontalScrollMode(ScrollPerPixel);
  setAlternatingRowColors(false);
  SetUpColumns(kind);
  if (kind == PinKind::kItinerary) {
    setDragDropMode(InternalMove);
    setDragDropOverwriteMode(false);
    setDropIndicatorShown(true);
  }
  m_model->renamed = [this](size_t row, const QString& name) {
    if (renamed) renamed(row, name);
  };
  connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
    if (m_isProgram || !selected) return;
    const std::vector<size_t> rows = SelectedRows();
    selected(rows.size() == 1 ? static_cast<int64_t>(rows.front()) : kNoRow);
  });
}

PointTable::~PointTable() = default;

void PointTable::SetUpColumns(PinKind kind) {
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setDefaultSectionSize(kRowHeight);
  QHeaderView& header = *horizontalHeader();
  header.setHighlightSections(false);
  header.setMinimumSectionSize(kPinWidth);
  header.setSectionResizeMode(QHeaderView::Interactive);
  const auto columnOf = PointTableModel::ColumnOf;
  header.setSectionResizeMode(columnOf(RouteColumn::kNumber), QHeaderView::Fixed);
  header.resizeSection(columnOf(RouteColumn::kNumber), kPinWidth);
  header.setSectionResizeMode(columnOf(RouteColumn::kName), QHeaderView::Stretch);
  setItemDelegateForColumn(columnOf(RouteColumn::kNumber), new PinDelegate(kind, this));
  const bool isItinerary = kind == PinKind::kItinerary;
  if (!isItinerary) header.hide();
  header.setContextMenuPolicy(Qt::CustomContextMenu);
  connect(&header, &QWidget::customContextMenuRequested, this,
          [this](const QPoint& place) { OfferColumns(horizontalHeader()->mapToGlobal(place)); });
  for (const auto column : {RouteColumn::kDistance, RouteColumn::kDuration}) {
    setColumnHidden(columnOf(column), !isItinerary);
    const bool isDistance = column == RouteColumn::kDistance;
    const QString longest =
        isDistance ? QStringLiteral("000.0km / 000.0km") : QStringLiteral("00:00 / 00:00");
    header.resizeSection(columnOf(column), fontMetrics().horizontalAdvance(longest) + kWideMargin);
  }
  for (const auto column : {RouteColumn::kPosition, RouteColumn::kComment, RouteColumn::kTravelMode,
                            RouteColumn::kColor})
    setColumnHidden(columnOf(column), true);
}

void PointTable::OfferColumns(const QPoint& place) {
  QMenu menu;
  menu.addSection(Text(kTextShownColumns));
  // Number and name always stand.
  for (int column = PointTableModel::ColumnOf(RouteColumn::kDistance);
       column < m_model->columnCount(); ++column) {
    QAction* const action =
        menu.addAction(m_model->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
    action->setCheckable(true);
    action->setChecked(!isColumnHidden(column));
    connect(action, &QAction::toggled, this,
            [this, column](bool isShown) { setColumnHidden(column, !isShown); });
  }
  menu.exec(place);
}

QByteArray PointTable::Columns() const { return horizontalHeader()->saveState(); }

void PointTable::RestoreColumns(const QByteArray& state) {
  if (!state.isEmpty()) horizontalHeader()->restoreState(state);
}

void PointTable::SetList(const CGpsPointArray* list) { m_model->SetList(list); }

void PointTable::SetHint(const QString& hint) {
  m_hint = hint;
  viewport()->update();
}

void PointTable::Changed() const {
  if (changed) changed();
}

// The discs of high numbers are wide.
void PointTable::FitNumbers() {
  const QString highest(QString::number(m_model->rowCount()).size(), QLatin1Char('0'));
  const int width = fontMetrics().horizontalAdvance(highest) + kPinRoom;
  horizontalHeader()->resizeSection(PointTableModel::ColumnOf(RouteColumn::kNumber),
                                    std::max(kPinWidth, width));
}

void PointTable::InsertRow(size_t index) {
  const QScopedValueRollback program(m_isProgram, true);
  m_model->InsertRow(ToInt(index));
  FitNumbers();
  Changed();
}

void PointTable::RemoveRows(size_t first, size_t count) {
  if (count == 0) return;
  const QScopedValueRollback program(m_isProgram, true);
  m_model->RemoveRows(ToInt(first), ToInt(count));
  Changed();
}

void PointTable::ResetRows(size_t count) {
  const QScopedValueRollback program(m_isProgram, true);
  m_model->ResetRows(ToInt(count));
  FitNumbers();
  Changed();
}

void PointTable::RefreshRows(size_t first, size_t last) {
  m_model->RefreshRows(ToInt(first), ToInt(last));
  Changed();
}

void PointTable::ClearSelection() {
  const QScopedValueRollback program(m_isProgram, true);
  selectionModel()->clear();
  Changed();
}

void PointTable::SelectRow(size_t index) {
  const QScopedValueRollback program(m_isProgram, true);
  const QModelIndex row =
      m_model->index(ToInt(index), PointTableModel::ColumnOf(RouteColumn::kName));
  selectionModel()->setCurrentIndex(row, QItemSelectionModel::NoUpdate);
  selectionModel()->select(row, QItemSelectionModel::Select | QItemSelectionModel::Rows);
  scrollTo(row);
  Changed();
}

std::vector<size_t> PointTable::SelectedRows() const {
  std::vector<size_t> rows;
  for (const QItemSelectionRange& range : selectionModel()->selection()) {
    for (int row = range.top(); row <= range.bottom(); ++row)
      rows.push_back(static_cast<size_t>(row));
  }
  std::sort(rows.begin(), rows.end());
  rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
  return rows;
}

size_t PointTable::RowCount() const { return static_cast<size_t>(m_model->rowCount()); }

bool PointTable::HasSelection() const { return selectionModel()->hasSelection(); }

void PointTable::paintEvent(QPaintEvent* event) {
  QTableView::paintEvent(event);
  if (m_model->rowCount() > 0 || m_hint.isEmpty()) return;
  QPainter painter(viewport());
  painter.setPen(CurrentColors().muted);
  painter.drawText(
      viewport()->rect().adjusted(kWideMargin, kWideMargin, -kWideMargin, -kWideMargin),
      Qt::AlignCenter | Qt::TextWordWrap, m_hint);
}

void PointTable::mouseDoubleClickEvent(QMouseEvent* event) {
  const QModelIndex index = indexAt(event->position().toPoint());
  if (index.isValid() && opened) opened(static_cast<size_t>(index.row()));
}

void PointTable::keyPressEvent(QKeyEvent* event) {
  const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (isEnter && state() != EditingState && currentIndex().isValid() && opened) {
    opened(static_cast<size_t>(currentIndex().row()));
    return;
  }
  if (event->key() == Qt::Key_F2 && currentIndex().isValid()) {
    edit(m_model->index(currentIndex().row(), PointTableModel::ColumnOf(RouteColumn::kName)));
    return;
  }
  QTableView::keyPressEvent(event);
}

void PointTable::contextMenuEvent(QContextMenuEvent* event) {
  const bool isByKey = event->reason() == QContextMenuEvent::Keyboard;
  const QModelIndex index = isByKey ? currentIndex() : indexAt(event->pos());
  if (!index.isValid() || !menuWanted) return;
  const QPoint place =
      isByKey ? viewport()->mapToGlobal(visualRect(index).center()) : event->globalPos();
  menuWanted(static_cast<size_t>(index.row()), place);
}

// Only rows of this table are dropped here; files go on to the window.

void PointTable::dragEnterEvent(QDragEnterEvent* event) {
  if (event->source() == this)
    QTableView::dragEnterEvent(event);
  else
    event->ignore();
}

void PointTable::dragMoveEvent(QDragMoveEvent* event) {
  if (event->source() == this)
    QTableView::dragMoveEvent(event);
  else
    event->ignore();
}

void PointTable::dropEvent(QDropEvent* event) {
  const std::vector<size_t> rows = SelectedRows();
  if (event->source() != this || rows.size() != 1 || !moved) {
    event->ignore();
    return;
  }
  const QModelIndex index = indexAt(event->position().toPoint());
  size_t target = index.isValid() ? static_cast<size_t>(index.row()) : RowCount();
  if (dropIndicatorPosition() == BelowItem) ++target;
  // The drag itself must not take the row away.
  event->setDropAction(Qt::CopyAction);
  event->accept();
  const size_t from = rows.front();
  moved(from, target > from ? target - 1 : target);
}
