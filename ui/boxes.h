#pragma once

#include <QString>
#include <cstdint>

class QWidget;

/// A modal box with plain text; `style` is an BoxStyle. Gives an BoxAnswer, that of Cancel or No
/// when the box is closed.
int32_t ShowMessageBox(QWidget* parent, const QString& text, uint32_t style);

/// What a box with "do the same for the rest" has been answered.
struct BoxAnswer {
  int32_t answer;
  bool forTheRest;
};

/// The same with that check box.
BoxAnswer ShowRepeatedBox(QWidget* parent, const QString& text, uint32_t style);
