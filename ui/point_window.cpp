#include "ui/point_window.h"

#include <QComboBox>
#include <QDialog>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <cmath>

#include "base/measure_text.h"
#include "base/text_ids.h"
#include "planner/window_parts.h"
#include "ui/angle_edit.h"
#include "ui/boxes.h"
#include "ui/dialog_buttons.h"
#include "ui/look.h"
#include "ui/number_field.h"
#include "ui/text.h"

namespace {

constexpr int kLargestLatitude = 90;
constexpr int kLargestLongitude = 180;
constexpr double kHighest = 100'000;  // metres, both ways
constexpr int kWidth = 420;
constexpr int kCommentLines = 3;

/// The window and its fields.
class PointWindow : public QDialog {
 public:
  PointWindow(QWidget* parent, CoordinateFormat format, uint32_t titleTextId,
              const CGpsNamedPoint& point)
      : QDialog(parent),
        m_name(new QLineEdit(FromUtf8(point.name))),
        m_format(new QComboBox),
        m_latitude(new AngleEdit(/*isLatitude=*/true)),
        m_longitude(new AngleEdit(/*isLatitude=*/false)),
        m_elevation(new NumberField),
        m_comment(new QPlainTextEdit(FromUtf8(point.comment))) {
    setWindowTitle(PlainText(titleTextId).remove(QChar(0x2026)));
    for (const uint32_t textId :
         {kTextDecimalDegrees, kTextDegreesAndMinutes, kTextDegreesMinutesSeconds})
      m_format->addItem(Text(textId));
    m_comment->setTabChangesFocus(true);
    m_comment->setFixedHeight(kCommentLines * m_comment->fontMetrics().lineSpacing() + kWideMargin);
    m_elevation->setRange(-kHighest, kHighest);
    m_elevation->setDecimals(1);
    m_elevation->setSuffix(QStringLiteral(" m"));
    m_elevation->setValue(point.altitude);
    m_latitude->SetAngle(point.latitude);
    m_longitude->SetAngle(point.longitude);
    m_format->setCurrentIndex(static_cast<int>(format));
    ShowFormat();
    connect(m_format, &QComboBox::currentIndexChanged, this, [this] { ShowFormat(); });

    auto* const form = new QFormLayout;
    form->setVerticalSpacing(kSmallMargin);
    const auto add = [form](uint32_t textId, QWidget* field) {
      field->setAccessibleName(PlainText(textId));
      form->addRow(Text(textId), field);
    };
    add(kTextName, m_name);
    add(kTextCoordinateFormat, m_format);
    add(kTextLatitude, m_latitude);
    add(kTextLongitude, m_longitude);
    add(kTextElevation, m_elevation);
    add(kTextComment, m_comment);
    QVBoxLayout* const layout = AddDialogLayout(*this);
    layout->addLayout(form);
    AddDialogButtons(*this, *layout);
    setMinimumWidth(kWidth);
    m_name->setFocus();
  }

  void accept() override {
    if (!IsWithin(m_latitude->Angle(), kLargestLatitude, kTextLatitudeBounds) ||
        !IsWithin(m_longitude->Angle(), kLargestLongitude, kTextLongitudeBounds))
      return;
    QDialog::accept();
  }

  void Take(CGpsNamedPoint& point) const {
    point.name = ToUtf8(m_name->text());
    point.comment = ToUtf8(m_comment->toPlainText());
    point.latitude = *m_latitude->Angle();
    point.longitude = *m_longitude->Angle();
    point.altitude = m_elevation->value();
  }

  CoordinateFormat Format() const {
    return static_cast<CoordinateFormat>(m_format->currentIndex());
  }

 private:
  bool IsWithin(const std::optional<double>& angle, int largest, uint32_t textId) {
    if (angle && std::fabs(*angle) <= largest) return true;
    ShowMessageBox(this, FilledText(textId, -largest, largest), kBoxOk | kBoxWarningIcon);
    return false;
  }

  void ShowFormat() {
    m_latitude->SetFormat(Format());
    m_longitude->SetFormat(Format());
  }

  QLineEdit* m_name;
  QComboBox* m_format;
  AngleEdit* m_latitude;
  AngleEdit* m_longitude;
  QDoubleSpinBox* m_elevation;
  QPlainTextEdit* m_comment;
};

}  // namespace

bool EditPointInWindow(QWidget* parent, CSettings& settings, uint32_t titleTextId,
                       CGpsNamedPoint& point) {
  PointWindow window(parent, static_cast<CoordinateFormat>(settings.coordinates), titleTextId,
                     point);
  if (window.exec() != QDialog::Accepted) return false;
  window.Take(point);
  return true;
}
