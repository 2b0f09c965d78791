#pragma once

#include <QTableView>
#include <functional>
#include <memory>

#include "planner/list_ids.h"
#include "planner/window_parts.h"

class CGpsPointArray;
class CSettings;
class PointTableModel;

/// The rows of one list of points. Texts are fetched when they are drawn, so that a million rows
/// are as quick as ten.
class PointTable : public QTableView, public PointRows {
 public:
  /// `settings` must outlive this.
  PointTable(PinKind kind, const CSettings& settings, QWidget* parent = nullptr);
  ~PointTable() override;

  /// The list whose rows these are; null for none. The rows themselves come by `PointRows`.
  void SetList(const CGpsPointArray* list);
  /// The text that stands in the middle while there are no rows.
  void SetHint(const QString& hint);

  void InsertRow(size_t index) override;
  void RemoveRows(size_t first, size_t count) override;
  void ResetRows(size_t count) override;
  void RefreshRows(size_t first, size_t last) override;
  void ClearSelection() override;
  void SelectRow(size_t index) override;
  std::vector<size_t> SelectedRows() const override;

  /// Widths of the columns, and which are shown.
  QByteArray Columns() const;
  /// Takes over what `Columns` has given; bytes that are none change nothing.
  void RestoreColumns(const QByteArray& state);

  size_t RowCount() const;
  bool HasSelection() const;

  /// The rows, or their texts, have changed.
  std::function<void()> changed;
  /// The user has selected other rows; the only one, or -1.
  std::function<void(int64_t row)> selected;
  /// The user wants to see or edit a row.
  std::function<void(size_t row)> opened;
  std::function<void(size_t row, const QString& name)> renamed;
  /// The user wants the menu of a row, which is selected, at a place of the screen.
  std::function<void(size_t row, const QPoint& place)> menuWanted;
  /// The user has dragged a row to another place.
  std::function<void(size_t from, size_t to)> moved;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void SetUpColumns(PinKind kind);
  void FitNumbers();
  void OfferColumns(const QPoint& place);
  void Changed() const;

  PointTableModel* m_model;
  QString m_hint;
  bool m_isProgram = false;  ///< the selection is changed by the program
};
