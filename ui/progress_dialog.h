#pragma once

#include <QPointer>

#include "planner/window_parts.h"

class QDialog;
class QLabel;
class QProgressBar;
class QPushButton;
class QWidget;

/// A small window over its parent with a text, a bar, and a button that cancels. The rest of the
/// parent cannot be used meanwhile.
class ProgressDialog : public ProgressWindow {
 public:
  explicit ProgressDialog(QWidget* parent) : m_parent(parent) {}
  ~ProgressDialog() override;

  void Open(std::string_view text, int32_t provider, size_t steps) override;
  void SetText(std::string_view text) override;
  void Step() override;
  bool IsCancelled() const override { return m_isCancelled; }
  void Close() override;

  bool IsOpen() const { return !m_dialog.isNull(); }
  /// Moves the bar; 0 in all lets it run without an end.
  void SetProgress(uint64_t done, uint64_t inAll);

 private:
  QWidget* m_parent;
  QPointer<QDialog> m_dialog;
  QLabel* m_text = nullptr;
  QProgressBar* m_bar = nullptr;
  QPushButton* m_cancel = nullptr;
  bool m_isCancelled = false;
};
