#include "formats/text/navigon_rte.h"

#include <string>
#include <vector>

#include "base/numbers.h"
#include "base/text.h"
#include "conversion/conversion_lines.h"

namespace {

using Fields = std::vector<std::string_view>;

// Where a line has its values, counted from 0.
struct FieldNumbers {
  size_t name;
  size_t longitude;
  size_t latitude;
};

// "[Paris|][0][10]|||2.35222|48.85661" and "[Paris||][0][10]|||2.35222|48.85661". The name stands
// behind the bracket; the field given here is for lines that have nothing there.
constexpr FieldNumbers kOneBar = {2, 4, 5};
constexpr FieldNumbers kTwoBars = {3, 5, 6};

// "-|-|16|-|-|Paris|-|-|-|-|-|2.35222|48.85661|-|-|", and the same with one field less in front.
// The field before the name belongs to the address.
constexpr size_t kPlainFieldCount = 16;
constexpr FieldNumbers kPlain = {5, 11, 12};
constexpr FieldNumbers kShortPlain = {4, 10, 11};

// What a writer puts around the name and behind the position.
struct LineFrame {
  std::string_view start;
  std::string_view behindName;
  std::string_view end;
};

constexpr LineFrame kMn5Frame = {"-|-|16|-|-|", "|-|-|-|-|-|", "|-|-|\r\n"};
constexpr LineFrame kMn6Frame = {"[", "|][0][10]|||", "\r\n"};
constexpr LineFrame kBeckerFrame = {"[", "||][0][10]|||", "\r\n"};

constexpr int kDecimals = 5;

std::string_view FieldAt(const Fields& fields, size_t number) {
  return number < fields.size() ? fields[number] : std::string_view();
}

void ReadPosition(const Fields& fields, const FieldNumbers& numbers, CGpsPoint& stop) {
  stop.longitude = ParseReal(FieldAt(fields, numbers.longitude));
  stop.latitude = ParseReal(FieldAt(fields, numbers.latitude));
}

// Asks for the position of a stop that has none. The address goes out as the file spells it.
void LookUp(const std::string& address, CGpsPoint& stop, ConversionContext& context) {
  if (!context.lookups.HasGeocoder()) {
    context.Note(ConversionNote::kPointWithoutPosition);
    context.Note(ConversionNote::kStopNotAsked);
    return;
  }
  context.Note(ConversionNote::kStopLookedUp);
  if (const auto position = context.lookups.FindAddress(address)) {
    static_cast<CGpsCoordinate&>(stop) = *position;
    stop.ClearRouteLeg();
  }
  if (stop.IsNull()) context.Note(ConversionNote::kStopNotFound);
}

// Gives the name as the file spells it. False for a line that has too few fields.
bool ReadBracketLine(const Fields& fields, CGpsPoint& stop, std::string_view& name,
                     ConversionContext& context) {
  const FieldNumbers& numbers = fields[1].starts_with(']') ? kOneBar : kTwoBars;
  if (fields.size() <= numbers.latitude) return false;
  name = fields[0].size() < 2 ? fields[numbers.name] : fields[0].substr(1);
  ReadPosition(fields, numbers, stop);
  if (stop.IsNull()) context.Note(ConversionNote::kPointWithoutPosition);
  return true;
}

// The same for the oldest shape. Fields that aren't there are empty.
void ReadPlainLine(const Fields& fields, CGpsPoint& stop, std::string_view& name,
                   ConversionContext& context) {
  const FieldNumbers& numbers = fields.size() < kPlainFieldCount ? kShortPlain : kPlain;
  name = FieldAt(fields, numbers.name);
  ReadPosition(fields, numbers, stop);
  if (stop.IsNull()) {
    std::string address(FieldAt(fields, numbers.name - 1));
    address.append(" ").append(name);
    LookUp(address, stop, context);
  }
}

void WriteStops(ByteSink& sink, const CGpsPointArray& list, const LineFrame& frame) {
  for (const CGpsPoint& point : list.points) {
    sink.Write(frame.start);
    sink.Narrow(point.name);
    sink.Write(frame.behindName);
    sink.Fixed(point.longitude, kDecimals);
    sink.Put('|');
    sink.Fixed(point.latitude, kDecimals);
    sink.Write(frame.end);
  }
}

}  // namespace

uint32_t ParseNavigonRte(std::string_view bytes, PointLists& lists, ConversionContext& context) {
  auto& route = AddList<CGpsRoute>(lists);
  const DetectedEncoding detected = DetectEncoding(bytes);
  const bool isUtf8 = detected.encoding == kEncodingUtf8;
  if (isUtf8) context.TellEncoding(detected.encoding);

  ConversionLines lines(bytes.substr(detected.skipped), context);
  Fields fields;
  for (std::string_view line; lines.Next(line);) {
    SplitFirstFields(line, '|', 16, fields);
    if (fields.size() < 2) {
      if (!line.empty()) context.Note(ConversionNote::kLinePassedOver);
      continue;
    }
    CGpsPoint& stop = route.points.emplace_back();
    std::string_view name;
    if (!fields[0].starts_with('[')) {
      ReadPlainLine(fields, stop, name, context);
    } else if (!ReadBracketLine(fields, stop, name, context)) {
      context.Note(ConversionNote::kLinePassedOver);
      route.points.pop_back();
      continue;
    }
    // Dropped at once: a file of bars alone would hold millions of them.
    if (stop.IsNull())
      route.points.pop_back();
    else
      stop.name = isUtf8 ? std::string(name) : WidenToUtf8(name);
  }
  return kStatusSuccess;
}

void WriteNavigonMn5Body(ByteSink& sink, const CGpsPointArray& list) {
  WriteStops(sink, list, kMn5Frame);
}

void WriteNavigonMn6Body(ByteSink& sink, const CGpsPointArray& list) {
  WriteStops(sink, list, kMn6Frame);
}

void WriteBeckerBody(ByteSink& sink, const CGpsPointArray& list) {
  WriteStops(sink, list, kBeckerFrame);
}
