#include "ui/boxes.h"

#include <QCheckBox>
#include <QMessageBox>
#include <QPushButton>

#include "base/text_ids.h"
#include "planner/window_parts.h"
#include "ui/text.h"

namespace {

constexpr uint32_t kButtonMask = 0xF;
constexpr uint32_t kIconMask = 0xF0;

QMessageBox::Icon IconOf(uint32_t style) {
  switch (style & kIconMask) {
    case kBoxErrorIcon:
      return QMessageBox::Critical;
    case kBoxQuestionIcon:
      return QMessageBox::Question;
    case kBoxWarningIcon:
      return QMessageBox::Warning;
    default:
      return QMessageBox::NoIcon;
  }
}

void AddButton(QMessageBox& box, QMessageBox::StandardButton button, uint32_t textId) {
  box.addButton(button)->setText(Text(textId));
}

// The first button is the default one; the last is what closing the box means.
void AddButtons(QMessageBox& box, uint32_t style) {
  switch (style & kButtonMask) {
    case kBoxOkCancel:
      AddButton(box, QMessageBox::Ok, kTextOk);
      AddButton(box, QMessageBox::Cancel, kTextCancel);
      break;
    case kBoxYesNo:
      AddButton(box, QMessageBox::Yes, kTextYes);
      AddButton(box, QMessageBox::No, kTextNo);
      box.setEscapeButton(QMessageBox::No);
      break;
    case kBoxRetryCancel:
      AddButton(box, QMessageBox::Retry, kTextRetry);
      AddButton(box, QMessageBox::Cancel, kTextCancel);
      break;
    default:
      AddButton(box, QMessageBox::Ok, kTextOk);
  }
}

int32_t AnswerOf(int button) {
  switch (button) {
    case QMessageBox::Ok:
      return kAnswerOk;
    case QMessageBox::Yes:
      return kAnswerYes;
    case QMessageBox::No:
      return kAnswerNo;
    case QMessageBox::Retry:
      return kAnswerRetry;
    default:
      return kAnswerCancel;
  }
}

void SetUp(QMessageBox& box, const QString& text, uint32_t style) {
  box.setWindowTitle(ProductTitle());
  box.setTextFormat(Qt::PlainText);
  box.setText(text);
  box.setIcon(IconOf(style));
  AddButtons(box, style);
}

}  // namespace

int32_t AnswerOfClosing(uint32_t style) {
  switch (style & kButtonMask) {
    case kBoxOkCancel:
    case kBoxRetryCancel:
      return kAnswerCancel;
    case kBoxYesNo:
      return kAnswerNo;
    default:
      return kAnswerOk;
  }
}

int32_t ShowMessageBox(QWidget* parent, const QString& text, uint32_t style) {
  QMessageBox box(parent);
  SetUp(box, text, style);
  return AnswerOf(box.exec());
}

RepeatedAnswer ShowRepeatedBox(QWidget* parent, const QString& text, uint32_t style) {
  QMessageBox box(parent);
  SetUp(box, text, style);
  auto* const repeats = new QCheckBox(Text(kTextSameForTheRest));
  box.setCheckBox(repeats);
  const int32_t answer = AnswerOf(box.exec());
  return {answer, repeats->isChecked()};
}
