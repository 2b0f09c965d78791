#pragma once

#include <QAbstractTableModel>
#include <functional>
#include <optional>

#include "model/point_list.h"
#include "planner/list_ids.h"
#include "planner/route_table.h"
#include "settings/settings.h"

/// What the rows of a list of points show. Columns are those of `RouteColumn`, from 0.
class PointTableModel : public QAbstractTableModel {
 public:
  PointTableModel(PinKind kind, const CSettings& settings, QObject* parent);

  void SetList(const CGpsPointArray* list) { m_list = list; }

  void InsertRow(int index);
  void RemoveRows(int first, int count);
  void ResetRows(int count);
  void RefreshRows(int first, int last);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  Qt::DropActions supportedDropActions() const override;

  static constexpr int ColumnOf(RouteColumn column) { return static_cast<int>(column) - 1; }

  std::function<void(size_t row, const QString& name)> renamed;

 private:
  const CGpsPoint* PointAt(int row) const;
  // A stop to which no way was found, although others have one.
  bool LacksWay(int row) const;
  QString CellText(int row, RouteColumn column) const;

  const PinKind m_kind;
  const CSettings& m_settings;
  const CGpsPointArray* m_list = nullptr;
  int m_rows = 0;
  mutable std::optional<bool> m_hasWays;  ///< whether any stop has a way; looked up when needed
};
