#pragma once

#include <QWidget>
#include <cstdint>

/// A page of the settings window.
class SettingsPage : public QWidget {
 public:
  using QWidget::QWidget;

  /// A message about what cannot be accepted, with the field in focus; empty when all is well.
  virtual QString Check() { return {}; }
  /// Takes what was entered over into the settings. Gives 0, or the platform's error code when the
  /// settings file has not taken some of it.
  virtual uint32_t Store() = 0;
};
