#pragma once

#include <QWidget>

/// A page of the settings window.
class SettingsPage : public QWidget {
 public:
  using QWidget::QWidget;

  /// A message about what cannot be accepted, with the field in focus; empty when all is well.
  virtual QString Check() { return {}; }
  /// Takes what was entered over into the settings. False when the settings file has not taken
  /// some of it.
  virtual bool Store() = 0;
};
