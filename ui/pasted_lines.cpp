#include "ui/pasted_lines.h"

#include <charconv>
#include <cmath>

#include <fmt/format.h>

#include "base/text.h"
#include "ui/text.h"

namespace {

constexpr std::string_view kBlanks = " \t\r";
constexpr double kLargestLatitude = 90;
constexpr double kLargestLongitude = 180;

// Takes a number with a fraction off the front.
std::optional<double> TakeNumber(std::string_view& text) {
  text = TrimLeft(text, kBlanks);
  if (text.starts_with('+')) text.remove_prefix(1);
  double number = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), number,
                                    std::chars_format::fixed);
  if (read.ec != std::errc() || !std::isfinite(number)) return std::nullopt;
  const std::string_view digits(text.data(), static_cast<size_t>(read.ptr - text.data()));
  text.remove_prefix(digits.size());
  if (text.starts_with("°")) text.remove_prefix(std::string_view("°").size());
  return number;
}

}  // namespace

std::vector<PastedLine> SplitPastedText(const std::string& text) {
  std::vector<PastedLine> lines;
  LineSplitter splitter(text);
  std::string_view line;
  while (splitter.Next(line)) {
    const std::string_view trimmed = Trim(line, kBlanks);
    if (trimmed.empty()) continue;
    PastedLine pasted;
    pasted.text = trimmed;
    lines.push_back(std::move(pasted));
  }
  return lines;
}

std::optional<CGpsNamedPoint> ReadPastedPosition(const std::string& line) {
  std::string_view rest = line;
  const std::optional<double> latitude = TakeNumber(rest);
  if (!latitude) return std::nullopt;
  const std::string_view behind = TrimLeft(rest, kBlanks);
  const bool hasBlank = behind.size() < rest.size();
  rest = behind;
  const bool hasMark = rest.starts_with(',') || rest.starts_with(';');
  if (!hasMark && !hasBlank) return std::nullopt;
  if (hasMark) rest.remove_prefix(1);
  const std::optional<double> longitude = TakeNumber(rest);
  if (!longitude || std::fabs(*latitude) > kLargestLatitude ||
      std::fabs(*longitude) > kLargestLongitude)
    return std::nullopt;
  // "12 34 Long Street" is an address.
  const bool areWhole = std::floor(*latitude) == *latitude && std::floor(*longitude) == *longitude;
  if (!rest.empty() && kBlanks.find(rest.front()) == std::string_view::npos) return std::nullopt;
  if (areWhole && !hasMark) return std::nullopt;
  CGpsNamedPoint point;
  point.latitude = *latitude;
  point.longitude = *longitude;
  point.name = Trim(rest, kBlanks);
  return point;
}

bool IsSurelyMeant(const std::string& line, const CGpsNamedPoint& place) {
  const QString asked = FromUtf8(line).simplified();
  const QString found = FromUtf8(place.name).simplified();
  return found.compare(asked, Qt::CaseInsensitive) == 0 ||
         found.startsWith(asked + QLatin1Char(','), Qt::CaseInsensitive);
}

std::string PastableText(const std::vector<CGpsNamedPoint>& points) {
  std::string text;
  for (const CGpsNamedPoint& point : points)
    text += fmt::format("{:.6f}, {:.6f}\t{}\n", point.latitude, point.longitude, point.name);
  return text;
}
