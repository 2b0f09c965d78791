#pragma once

#include <QWidget>
#include <functional>

#include "planner/window_parts.h"

class QLabel;
class QLineEdit;
class QToolButton;

/// The line at the bottom: how many stops, how long the way, and what there is to tell.
class StatusLine : public QWidget, public StatusField {
 public:
  explicit StatusLine(QWidget* parent = nullptr);

  void ShowMessage(std::string_view text) override;
  void ShowTotals(std::string_view text) override;
  void ShowCount(size_t count);

 private:
  QLabel* m_count;
  QLabel* m_totals;
  QLabel* m_message;
};
