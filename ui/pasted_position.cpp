#include "ui/pasted_position.h"

#include <charconv>
#include <cmath>
#include <initializer_list>
#include <utility>

#include "base/text.h"

namespace {

constexpr std::string_view kBlanks = " \t\r";
constexpr double kLargestLatitude = 90;
constexpr double kLargestLongitude = 180;
constexpr double kSixty = 60;

char UpperCase(char letter) {
  return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

bool TakeMark(std::string_view& text, std::initializer_list<std::string_view> marks) {
  for (const std::string_view mark : marks) {
    if (!text.starts_with(mark)) continue;
    text.remove_prefix(mark.size());
    return true;
  }
  return false;
}

std::optional<double> TakeNumber(std::string_view& text) {
  double number = 0;
  const auto read =
      std::from_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed);
  if (read.ec != std::errc() || !std::isfinite(number)) return std::nullopt;
  text.remove_prefix(static_cast<size_t>(read.ptr - text.data()));
  return number;
}

bool IsWhole(double number) { return std::floor(number) == number; }

/// An angle as it stands in a line.
struct PastedAngle {
  double degrees = 0;
  bool isMarked = false;  ///< by a letter, a fraction or the sign of degrees: no number of a house
};

/// Takes one angle off the front of a text; `positive` and `negative` are its letters.
class AngleReader {
 public:
  AngleReader(std::string_view& text, char positive, char negative)
      : m_text(text), m_positive(positive), m_negative(negative) {}

  std::optional<PastedAngle> Read() {
    m_text = TrimLeft(m_text, kBlanks);
    const bool hasLetter = TakeLetter();
    m_text = TrimLeft(m_text, kBlanks);
    TakeMark(m_text, {"+"});
    const std::optional<double> degrees = TakeNumber(m_text);
    if (!degrees) return std::nullopt;
    const bool hasSign = TakeMark(m_text, {"°", "º"});
    PastedAngle angle{*degrees, hasLetter || hasSign || !IsWhole(*degrees)};
    if (IsWhole(*degrees) && (hasLetter || hasSign)) AddMinutes(angle.degrees, hasLetter);
    if (!hasLetter) angle.isMarked |= TakeLetterBehind();
    angle.degrees *= m_sign;
    return angle;
  }

 private:
  bool TakeLetter() {
    if (m_text.empty()) return false;
    const char letter = UpperCase(m_text.front());
    if (letter != m_positive && letter != m_negative) return false;
    m_text.remove_prefix(1);
    if (letter == m_negative) m_sign = -1;
    return true;
  }

  bool TakeLetterBehind() {
    std::string_view behind = TrimLeft(m_text, kBlanks);
    if (behind.empty()) return false;
    // The letter stands alone: "7.5 East Road" is none.
    const bool isAlone = behind.size() == 1 || (behind[1] & 0x80) != 0 || !IsLetter(behind[1]);
    std::swap(m_text, behind);
    if (isAlone && TakeLetter()) return true;
    std::swap(m_text, behind);
    return false;
  }

  static bool IsLetter(char letter) { return UpperCase(letter) >= 'A' && UpperCase(letter) <= 'Z'; }

  // Minutes have their sign, or stand behind a letter in front of the degrees.
  void AddMinutes(double& degrees, bool mayBeBare) {
    std::string_view rest = TrimLeft(m_text, kBlanks);
    const std::optional<double> minutes = TakeNumber(rest);
    if (!minutes || *minutes < 0 || *minutes >= kSixty) return;
    const bool hasSign = TakeMark(rest, {"'", "′", "’"});
    if (!hasSign && !mayBeBare) return;
    const double side = std::signbit(degrees) ? -1 : 1;
    degrees += side * *minutes / kSixty;
    m_text = rest;
    if (!IsWhole(*minutes)) return;
    rest = TrimLeft(rest, kBlanks);
    const std::optional<double> seconds = TakeNumber(rest);
    if (!seconds || *seconds < 0 || *seconds >= kSixty) return;
    if (!TakeMark(rest, {"\"", "″", "”", "''"}) && !mayBeBare) return;
    degrees += side * *seconds / kSixty / kSixty;
    m_text = rest;
  }

  std::string_view& m_text;
  const char m_positive;
  const char m_negative;
  double m_sign = 1;
};

}  // namespace

std::optional<CGpsNamedPoint> ReadPastedPosition(std::string_view line) {
  const std::optional<PastedAngle> latitude = AngleReader(line, 'N', 'S').Read();
  if (!latitude) return std::nullopt;
  const std::string_view behind = TrimLeft(line, kBlanks);
  const bool hasBlank = behind.size() < line.size();
  line = behind;
  const bool hasMark = TakeMark(line, {",", ";"});
  if (!hasMark && !hasBlank) return std::nullopt;
  const std::optional<PastedAngle> longitude = AngleReader(line, 'E', 'W').Read();
  if (!longitude || std::fabs(latitude->degrees) > kLargestLatitude ||
      std::fabs(longitude->degrees) > kLargestLongitude)
    return std::nullopt;
  // "12 34 Long Street" is an address.
  if (!hasMark && !latitude->isMarked && !longitude->isMarked) return std::nullopt;
  if (!line.empty() && kBlanks.find(line.front()) == std::string_view::npos) return std::nullopt;
  CGpsNamedPoint point;
  point.latitude = latitude->degrees;
  point.longitude = longitude->degrees;
  point.name = Trim(line, kBlanks);
  return point;
}
