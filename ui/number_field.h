#pragma once

#include <QDoubleSpinBox>

/// A field for a number in the program's language, which also takes the decimal mark of the others:
/// a point means the same as a comma.
class NumberField : public QDoubleSpinBox {
 public:
  using QDoubleSpinBox::QDoubleSpinBox;

  QValidator::State validate(QString& text, int& cursor) const override;
};
