#include "formats/text/copilot.h"

#include <iterator>
#include <string>
#include <utility>

#include <fmt/format.h>

#include "base/numbers.h"
#include "base/product.h"
#include "base/text.h"
#include "conversion/conversion_lines.h"
#include "markup/json.h"

namespace {

constexpr double kUnitsPerDegree = 1000000.0;
constexpr std::string_view kUtf16Mark = "\xFF\xFE";

double FromMillionths(int32_t value) { return value / kUnitsPerDegree; }
int32_t ToMillionths(double degrees) { return TruncateToInt32(degrees * kUnitsPerDegree); }

// A line of keyed text. What stands behind a second "=" is no part of the value.
struct KeyedLine {
  std::string_view key;
  std::string_view value;  // empty without "="
};

KeyedLine SplitLine(std::string_view line) {
  const size_t equals = line.find('=');
  if (equals == std::string_view::npos) return {line, {}};
  const std::string_view rest = line.substr(equals + 1);
  return {line.substr(0, equals), rest.substr(0, rest.find('='))};
}

// A stop that has begun but not ended. The texts are views of the file's.
struct OpenStop {
  std::string_view title;  // such as "Stop 3"; the name of a stop that has no other
  std::string_view address;
  std::string_view zip;
  std::string_view city;
  std::string_view state;
  double latitude = 0.0;
  double longitude = 0.0;
};

void SetField(OpenStop& stop, const KeyedLine& line, ConversionContext& context) {
  if (line.key == "Longitude") {
    stop.longitude = FromMillionths(ParseWhole(line.value));
  } else if (line.key == "Latitude") {
    stop.latitude = FromMillionths(ParseWhole(line.value));
  } else if (line.key == "Address") {
    stop.address = line.value;
  } else if (line.key == "Zip") {
    stop.zip = line.value;
  } else if (line.key == "City") {
    stop.city = line.value;
  } else if (line.key == "State") {
    stop.state = line.value;
  } else if (line.key == "Start Stop") {
    context.Note(ConversionNote::kLinePassedOver);
  }
}

std::string NameOf(const OpenStop& stop) {
  std::string name;
  const auto join = [&name](std::string_view separator, std::string_view text) {
    if (text.empty()) return;
    if (!name.empty()) name += separator;
    name += text;
  };
  join("", stop.address);
  join(", ", stop.zip);
  join(" ", stop.city);
  join(", ", stop.state);
  if (name.empty()) name = stop.title;
  return name;
}

// The UTF-16 dialects differ in their version line, in the key that takes the name, and in whether
// the navigator is told which stops to show.
struct WideDialect {
  const char* version;
  const char* nameKey;
  bool hasShow;
};

constexpr WideDialect kCoPilot8{"1.9.1.1", "City", false};
constexpr WideDialect kCoPilot10{"3.4.1.2", "Address", true};

// The lines of a stop up to its name, which all dialects share.
void AppendStopStart(std::string& text, size_t index, const CGpsPoint& point) {
  fmt::format_to(std::back_inserter(text), "Start Stop=Stop {}\r\nLongitude={}\r\nLatitude={}\r\n",
                 index, ToMillionths(point.longitude), ToMillionths(point.latitude));
}

void WriteWideBody(ByteSink& sink, const CGpsPointArray& list, const WideDialect& dialect) {
  sink.Write(kUtf16Mark);
  sink.Utf16(fmt::format("Data Version:{}\r\nStart Trip={}\r\nEnd Trip\r\n\r\n", dialect.version,
                         list.name));
  const size_t last = list.LastIndex();
  size_t index = 0;
  std::string text;
  for (const CGpsPoint& point : list.points) {
    text.clear();
    AppendStopStart(text, index, point);
    text.append(dialect.nameKey).append("=").append(point.name).append("\r\n");
    if (dialect.hasShow) text.append(index == 0 || index == last ? "Show=1\r\n" : "Show=0\r\n");
    text.append("End Stop\r\n\r\n");
    sink.Utf16(text);
    ++index;
  }
}

}  // namespace

uint32_t ParseCoPilot6(std::string_view bytes, PointLists& lists, ConversionContext& context) {
  auto& route = AddList<CGpsRoute>(lists);
  const std::string text = DecodeTextFileToUtf8(bytes);
  context.TellEncoding(DetectEncoding(bytes).encoding);

  ConversionLines lines(text, context);
  bool inStop = false;
  OpenStop stop;
  for (std::string_view wholeLine; lines.Next(wholeLine);) {
    const KeyedLine line = SplitLine(TrimRight(wholeLine, " \r"));
    if (inStop && line.key == "End Stop") {
      CGpsPoint& point = route.points.emplace_back();
      point.latitude = stop.latitude;
      point.longitude = stop.longitude;
      point.name = NameOf(stop);
      inStop = false;
    } else if (inStop) {
      SetField(stop, line, context);
    } else if (line.key == "Start Stop") {
      stop = OpenStop();
      stop.title = line.value;
      inStop = true;
    } else if (line.key == "Start Trip") {
      route.name = line.value;
    } else if (line.key == "End Stop") {
      context.Note(ConversionNote::kLinePassedOver);
    }
  }
  if (inStop) context.Note(ConversionNote::kLinePassedOver);
  return kStatusSuccess;
}

uint32_t ParseCoPilot10(std::string_view bytes, PointLists& lists, ConversionContext&) {
  CJsonDocument document;
  // A failure does not matter as long as the trip was complete by then.
  static_cast<void>(document.Parse(bytes));
  const CJsonObject& trip = document.Get("Trip").AsObject();

  auto& route = AddList<CGpsRoute>(lists);
  route.name = trip.Get("Name").AsString();
  for (const auto& element : trip.Get("Stops").AsArray()) {
    const CJsonObject& info = element->Get("StopInfo").AsObject();
    CGpsPoint point;
    point.name = info.Get("Name").AsString();
    if (point.name.empty()) point.name = info.Get("Address").AsString();
    point.longitude = FromMillionths(TruncateToInt32(info.Get("Longitude").AsNumber()));
    point.latitude = FromMillionths(TruncateToInt32(info.Get("Latitude").AsNumber()));
    route.points.push_back(std::move(point));
  }
  return kStatusSuccess;
}

void WriteCoPilot6Body(ByteSink& sink, const CGpsPointArray& list) {
  sink.Printf(
      "Data Version=6.0.0.27\r\nStart Trip=%s\r\nCreator=%s\r\nTollClosed=0\r\nEnd Trip\r\n",
      NarrowUtf8(list.name), kCreatorTag);
  size_t index = 0;
  std::string text;
  for (const CGpsPoint& point : list.points) {
    text.clear();
    AppendStopStart(text, index, point);
    text.append("City=");
    AppendNarrowUtf8(text, point.name);
    text.append("\r\nEnd Stop\r\n");
    sink.Write(text);
    ++index;
  }
}

void WriteCoPilot8Body(ByteSink& sink, const CGpsPointArray& list) {
  WriteWideBody(sink, list, kCoPilot8);
}

void WriteCoPilot10Body(ByteSink& sink, const CGpsPointArray& list) {
  WriteWideBody(sink, list, kCoPilot10);
}
