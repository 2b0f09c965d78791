#pragma once

#include <QWidget>
#include <optional>

#include "base/measure_text.h"

class QComboBox;
class QLineEdit;
class QStackedLayout;

/// Fields for a latitude or longitude: one for decimal degrees, or separate ones for degrees,
/// minutes and seconds with a list of the hemispheres.
class AngleEdit : public QWidget {
 public:
  explicit AngleEdit(bool isLatitude, QWidget* parent = nullptr);

  void SetAngle(double degrees);
  /// Nothing while a field holds no number, or minutes or seconds are 60 and more.
  std::optional<double> Angle() const;
  /// Shows the fields of another format; the angle stays.
  void SetFormat(CoordinateFormat format);

 private:
  void ShowAngle(double degrees);

  QLineEdit* m_decimal;
  QLineEdit* m_degrees;
  QLineEdit* m_minutes;
  QLineEdit* m_seconds;
  QComboBox* m_hemisphere;
  QStackedLayout* m_layout;
  QWidget* m_secondsPart;
  CoordinateFormat m_format = CoordinateFormat::kDegrees;
  /// What was shown last, so that looking at another format changes nothing.
  double m_shown = 0.0;
  bool m_isEdited = false;
};
