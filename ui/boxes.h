#pragma once

#include <QString>
#include <cstdint>

class QWidget;

/// A modal box with plain text; `style` is a BoxStyle. Gives a BoxAnswer, that of Cancel or No
/// when the box is closed.
int32_t ShowMessageBox(QWidget* parent, const QString& text, uint32_t style);

/// What such a box gives when it is closed unanswered.
int32_t AnswerOfClosing(uint32_t style);

/// What a box with "do the same for the rest" has been answered.
struct RepeatedAnswer {
  int32_t answer;
  bool forTheRest;
};

/// The same with that check box.
RepeatedAnswer ShowRepeatedBox(QWidget* parent, const QString& text, uint32_t style);
