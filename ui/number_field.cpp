#include "ui/number_field.h"

#include <QLocale>

QValidator::State NumberField::validate(QString& text, int& cursor) const {
  const QString mark = locale().decimalPoint();
  for (const char other : {'.', ','}) text.replace(QLatin1Char(other), mark);
  return QDoubleSpinBox::validate(text, cursor);
}
