#include "ui/angle_edit.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QStackedLayout>
#include <cmath>

#include "base/numbers.h"
#include "base/text_ids.h"
#include "ui/look.h"
#include "ui/text.h"

namespace {

constexpr int kDecimals = 7;  // of degrees: a centimetre on the ground
constexpr double kSixty = 60.0;

// The whole text as a number, with a point or a comma; nothing for any other text.
std::optional<double> ReadNumber(const QLineEdit& field) {
  QString text = field.text().trimmed();
  text.replace(QLatin1Char(','), QLatin1Char('.'));
  bool isNumber = false;
  const double number = text.toDouble(&isNumber);
  if (!isNumber || !std::isfinite(number)) return std::nullopt;
  return number;
}

QString ShownNumber(double number, int decimals) {
  QString text = QString::number(number, 'f', decimals);
  if (!text.contains(QLatin1Char('.'))) return text;
  while (text.endsWith(QLatin1Char('0'))) text.chop(1);
  if (text.endsWith(QLatin1Char('.'))) text.chop(1);
  return text;
}

QLineEdit* MakeField(uint32_t textId) {
  auto* const field = new QLineEdit;
  field->setAccessibleName(Text(textId));
  field->setToolTip(Text(textId));
  return field;
}

}  // namespace

AngleEdit::AngleEdit(bool isLatitude, QWidget* parent)
    : QWidget(parent),
      m_decimal(new QLineEdit),
      m_degrees(MakeField(kTextDegrees)),
      m_minutes(MakeField(kTextMinutes)),
      m_seconds(MakeField(kTextSeconds)),
      m_hemisphere(new QComboBox),
      m_layout(new QStackedLayout(this)),
      m_secondsPart(new QWidget) {
  m_decimal->setAccessibleName(Text(isLatitude ? kTextLatitude : kTextLongitude));
  m_hemisphere->addItems(isLatitude ? QStringList{Text(kTextNorthLetter), Text(kTextSouthLetter)}
                                    : QStringList{Text(kTextEastLetter), Text(kTextWestLetter)});
  m_hemisphere->setAccessibleName(Text(kTextHemisphere));
  auto* const seconds = new QHBoxLayout(m_secondsPart);
  seconds->setContentsMargins(0, 0, 0, 0);
  seconds->setSpacing(kGrid);
  seconds->addWidget(m_seconds);
  seconds->addWidget(new QLabel(QStringLiteral("″")));
  auto* const parts = new QWidget;
  auto* const row = new QHBoxLayout(parts);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(kGrid);
  row->addWidget(m_degrees, 1);
  row->addWidget(new QLabel(QStringLiteral("°")));
  row->addWidget(m_minutes, 1);
  row->addWidget(new QLabel(QStringLiteral("′")));
  row->addWidget(m_secondsPart, 1);
  row->addWidget(m_hemisphere);
  m_layout->addWidget(m_decimal);
  m_layout->addWidget(parts);
  setFocusProxy(m_decimal);
  for (const QLineEdit* const field : {m_decimal, m_degrees, m_minutes, m_seconds})
    connect(field, &QLineEdit::textEdited, this, [this] { m_isEdited = true; });
  connect(m_hemisphere, &QComboBox::activated, this, [this] { m_isEdited = true; });
}

void AngleEdit::SetAngle(double degrees) {
  m_shown = degrees;
  m_isEdited = false;
  ShowAngle(degrees);
}

void AngleEdit::ShowAngle(double degrees) {
  m_decimal->setText(ShownNumber(degrees, kDecimals));
  const AngleParts parts = DecomposeAngle(degrees);
  m_hemisphere->setCurrentIndex(parts.negative ? 1 : 0);
  m_degrees->setText(QString::number(parts.degrees));
  if (m_format == CoordinateFormat::kSeconds) {
    m_minutes->setText(QString::number(std::floor(parts.minutes)));
    m_seconds->setText(ShownNumber(parts.seconds, 3));
  } else {
    m_minutes->setText(ShownNumber(parts.minutes, 5));
    m_seconds->setText(QStringLiteral("0"));
  }
}

std::optional<double> AngleEdit::Angle() const {
  if (!m_isEdited) return m_shown;
  if (m_format == CoordinateFormat::kDegrees) return ReadNumber(*m_decimal);
  const std::optional<double> degrees = ReadNumber(*m_degrees);
  const std::optional<double> minutes = ReadNumber(*m_minutes);
  const std::optional<double> seconds =
      m_format == CoordinateFormat::kSeconds ? ReadNumber(*m_seconds) : std::optional(0.0);
  if (!degrees || !minutes || !seconds) return std::nullopt;
  const bool isProper =
      *degrees >= 0 && *minutes >= 0 && *minutes < kSixty && *seconds >= 0 && *seconds < kSixty;
  if (!isProper) return std::nullopt;
  return ComposeAngle(m_hemisphere->currentIndex() == 1, *degrees, *minutes, *seconds);
}

void AngleEdit::SetFormat(CoordinateFormat format) {
  const std::optional<double> angle = Angle();
  m_format = format;
  const bool isDecimal = format == CoordinateFormat::kDegrees;
  m_layout->setCurrentIndex(isDecimal ? 0 : 1);
  setFocusProxy(isDecimal ? m_decimal : m_degrees);
  m_secondsPart->setVisible(format == CoordinateFormat::kSeconds);
  if (angle) SetAngle(*angle);
}
