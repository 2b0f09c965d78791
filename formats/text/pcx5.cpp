#include "formats/text/pcx5.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>
#include <system_error>

#include <fmt/printf.h>

#include "base/numbers.h"
#include "base/product.h"
#include "base/text.h"
#include "conversion/conversion_lines.h"
#include "formats/text/padded_number.h"

namespace {

constexpr std::string_view kSoftwareTitle = "SOFTWARE NAME & VERSION";
constexpr std::string_view kCoordinateSystem = "LAT LON";

constexpr std::array<std::string_view, kPcx5ColumnCount> kColumnTitles = {
    "IDNT", "LATITUDE", "LONGITUDE", "DATE", "TIME", "ALT", "DESCRIPTION", "PROXIMITY", "SYMBOL"};

constexpr std::array<std::string_view, 12> kMonths = {"JAN", "FEB", "MAR", "APR", "MAY", "JUN",
                                                      "JUL", "AUG", "SEP", "OCT", "NOV", "DEC"};

constexpr size_t kDescriptionLength = 40;

// The altitude of a point that has none.
constexpr float kNoAltitude = -9999;
constexpr std::string_view kNoAltitudeText = "-9999";

// Takes numbers off the front of a column with the results of scanf's "%2d" and "%f" in the classic
// locale: white space is skipped, and once a number is missing, it and all behind it are 0.
class ColumnScanner {
 public:
  explicit ColumnScanner(std::string_view text) : m_text(text) {}

  // A whole number of at most `width` characters, its sign included.
  int Whole(size_t width) {
    SkipSpace();
    const std::string_view text = m_text.substr(0, width);
    const size_t start = SignLength(text);
    size_t end = start;
    int value = 0;
    for (; end < text.size() && text[end] >= '0' && text[end] <= '9'; ++end)
      value = 10 * value + (text[end] - '0');
    m_text = end == start ? std::string_view() : m_text.substr(end);
    return IsNegative(text) ? -value : value;
  }

  // The real number that ends the column.
  float Real() {
    SkipSpace();
    const std::string_view number = m_text.substr(SignLength(m_text));
    if (SignLength(number) != 0) return 0;
    const float value = ParseMagnitude(number);
    return IsNegative(m_text) ? -value : value;
  }

 private:
  static size_t SignLength(std::string_view text) {
    return !text.empty() && (text[0] == '-' || text[0] == '+') ? 1 : 0;
  }

  static bool IsNegative(std::string_view text) { return !text.empty() && text[0] == '-'; }

  // Other than a stream, scanf also takes hexadecimal fractions, "inf" and "nan".
  static float ParseMagnitude(std::string_view number) {
    const char* start = number.data();
    const char* const end = start + number.size();
    float value = 0;
    if (number.substr(0, 2) == "0x" || number.substr(0, 2) == "0X") {
      std::from_chars(start + 2, end, value, std::chars_format::hex);
      return value;
    }
    const auto parsed = std::from_chars(start, end, value);
    // What is too large becomes infinite, what is too small 0.
    if (parsed.ec == std::errc::result_out_of_range) value = static_cast<float>(ParseReal(number));
    return value;
  }

  void SkipSpace() { m_text = TrimLeft(m_text, " \t\n\v\f\r"); }

  std::string_view m_text;
};

// The text of a column, or what there is of it in a short line.
std::string_view ColumnText(std::string_view line, const Pcx5Column& column) {
  return column.start < line.size() ? line.substr(column.start, column.length) : std::string_view();
}

std::string_view TrimmedColumnText(std::string_view line, const Pcx5Column& column) {
  return TrimLeft(TrimRight(ColumnText(line, column), " \r"), " ");
}

// Takes the columns from a line of titles. At the first title that is missing the search ends; a
// line without any changes nothing.
void ParseTitles(std::string_view line, Pcx5Columns& columns) {
  for (size_t i = 0; i < columns.size(); ++i) {
    const size_t start = line.find(kColumnTitles[i]);
    if (start == std::string_view::npos) return;
    columns[i] = {start, 0};
    if (i == 0) continue;
    // One blank stands between two columns.
    Pcx5Column& previous = columns[i - 1];
    previous.length = start > previous.start ? start - previous.start - 1 : 0;
  }
}

// Takes the form of the angles from a "U" line. False for another coordinate system.
bool ParseForm(std::string_view line, Pcx5Form& form) {
  const size_t system = line.find(kCoordinateSystem, 1);
  if (system == std::string_view::npos) return false;
  const std::string_view unit = TrimLeft(line.substr(system + kCoordinateSystem.size()), " ");
  if (unit.starts_with("DEG")) {
    form = Pcx5Form::kDegrees;
  } else if (unit.starts_with("DMS")) {
    form = Pcx5Form::kDegreesMinutesSeconds;
  } else if (unit.starts_with("DM")) {
    form = Pcx5Form::kDegreesMinutes;
  } else {
    return false;
  }
  return true;
}

// Degrees of a latitude or longitude column, whose sign may be a letter.
double ParseAngle(std::string_view text, char positive, char negative, size_t degreeDigits,
                  Pcx5Form form) {
  const char sign = text.empty() ? '\0' : text[0];
  const bool isNegative = sign == '-' || sign == negative;
  if (isNegative || sign == '+' || sign == positive) text.remove_prefix(1);

  float value = 0;
  if (form == Pcx5Form::kDegrees) {
    value = static_cast<float>(ParseReal(text));
  } else {
    ColumnScanner scanner(text);
    const int degrees = scanner.Whole(degreeDigits);
    if (form == Pcx5Form::kDegreesMinutes) {
      value = static_cast<float>(scanner.Real() / 60.0 + degrees);
    } else {
      // Whole minutes are divided as whole numbers: below 60 they vanish.
      const int fullDegrees = scanner.Whole(2) / 60;
      value = static_cast<float>(scanner.Real() / 3600.0 + degrees + fullDegrees);
    }
  }
  return isNegative ? -value : value;
}

// The letter of the hemisphere where the sign would stand.
void AppendAngle(std::string& line, double angle, char positive, char negative, size_t width) {
  line += std::signbit(angle) ? negative : positive;
  AppendPaddedFixed(line, std::abs(angle), 7, width);
}

void AppendAltitude(std::string& line, double altitude) {
  if (altitude == 0.0) {
    line += kNoAltitudeText;
  } else {
    AppendPaddedFixed(line, altitude, 0, 5);
  }
}

void AppendDescription(std::string& line, std::string_view name) {
  const size_t start = line.size();
  AppendNarrowUtf8(line, name);
  line.resize(start + kDescriptionLength, ' ');
}

}  // namespace

uint32_t ParsePcx5(std::string_view bytes, PointLists& lists, ConversionContext& context) {
  auto& route = AddList<CGpsRoute>(lists);
  bool started = false;
  Pcx5Columns columns;
  Pcx5Form form = Pcx5Form::kDegrees;

  ConversionLines lines(bytes, context);
  for (std::string_view line; lines.Next(line);) {
    const char code = line.empty() ? '\0' : line[0];
    if (code == 'H' && line.find(kSoftwareTitle) != std::string_view::npos) {
      started = true;
      continue;
    }
    if (!started) continue;
    switch (code) {
      case 'H':
        ParseTitles(line, columns);
        break;
      case 'R':
        ParsePcx5RouteLine(line, route);
        break;
      case 'U':
        if (!ParseForm(line, form)) return lines.FailHere();
        break;
      case 'W':
        ParsePcx5Waypoint(line, columns, form, route);
        break;
      case 'T':  // a point of a track
        context.Note(ConversionNote::kLinePassedOver);
        break;
      default:
        break;
    }
  }
  return started ? kStatusSuccess : kStatusFailure;
}

void ParsePcx5RouteLine(std::string_view line, CGpsPointArray& list) {
  if (!line.empty()) line.remove_prefix(1);
  line = TrimLeft(line, " ");
  line.remove_prefix(std::min<size_t>(2, line.size()));  // the number of the route
  list.name = WidenToUtf8(TrimLeft(TrimRight(line, " \r"), " "));
}

void ParsePcx5Waypoint(std::string_view line, const Pcx5Columns& columns, Pcx5Form form,
                       CGpsPointArray& list) {
  CGpsPoint& point = list.points.emplace_back();
  point.latitude = ParseAngle(ColumnText(line, columns[kPcx5Latitude]), 'N', 'S', 2, form);
  point.longitude = ParseAngle(ColumnText(line, columns[kPcx5Longitude]), 'E', 'W', 3, form);

  const size_t altitudeStart = std::min(columns[kPcx5Altitude].start, line.size());
  const auto altitude = static_cast<float>(ParseReal(line.substr(altitudeStart)));
  point.altitude = altitude == kNoAltitude ? 0.0 : altitude;

  std::string_view name = TrimmedColumnText(line, columns[kPcx5Description]);
  if (name.empty()) name = TrimmedColumnText(line, columns[kPcx5Ident]);
  point.name = WidenToUtf8(name);
}

uint32_t EmitPcx5(ByteSink& sink, const CGpsPointArray& list, uint32_t, ConversionContext&) {
  WritePcx5Body(sink, list, UtcNow());
  return kStatusSuccess;
}

void WritePcx5Body(ByteSink& sink, const CGpsPointArray& list, const CalendarTime& moment) {
  const std::string stamp = fmt::sprintf(
      "%02d-%s-%02d %02d:%02d:%02d", moment.day, kMonths[static_cast<size_t>(moment.month - 1)],
      moment.year % 100, moment.hour, moment.minute, moment.second);

  sink.Printf("H  SOFTWARE NAME & VERSION\r\nI  PCX5 2.09 by %s\r\n", kCreatorTag);
  sink.Write(
      "\r\nH  R DATUM                IDX DA            DF            DX            DY            "
      "DZ\r\n"
      "M  G WGS 84               121 +0.000000e+00 +0.000000e+00 +0.000000e+00 +0.000000e+00 "
      "+0.000000e+00\r\n"
      "\r\nH  COORDINATE SYSTEM\r\nU  LAT LON DEG\r\n");
  sink.Printf("\r\nR  01 %s\r\n", NarrowUtf8(list.name));
  sink.Write(
      "\r\nH  IDNT     LATITUDE    LONGITUDE    DATE      TIME     ALT   "
      "DESCRIPTION                              PROXIMITY     SYMBOL ;waypts\r\n");
  std::string line;
  size_t index = 0;
  for (const CGpsPoint& point : list.points) {
    // "W  WPT%05d %s %s %s %s %s %s 0.00000e+000  00018\r\n"
    line = "W  WPT";
    AppendWhole(line, static_cast<int64_t>(++index), 5);
    line += ' ';
    AppendAngle(line, point.latitude, 'N', 'S', 10);
    line += ' ';
    AppendAngle(line, point.longitude, 'E', 'W', 11);
    line += ' ';
    line += stamp;
    line += ' ';
    AppendAltitude(line, point.altitude);
    line += ' ';
    AppendDescription(line, point.name);
    line += " 0.00000e+000  00018\r\n";
    sink.Write(line);
  }
}
