#include "formats/text/igo.h"

#include <string>
#include <vector>

#include "base/numbers.h"
#include "base/text.h"
#include "conversion/conversion_lines.h"

namespace {

constexpr std::string_view kUtf16Mark = "\xFF\xFE";

// Fields of a line, counted from 0: a running number, the group, then these.
constexpr size_t kNameField = 2;
constexpr size_t kLatitudeField = 4;
constexpr size_t kLongitudeField = 5;
constexpr size_t kLeastFieldCount = 6;
constexpr size_t kCommentField80 = 13;
constexpr size_t kCommentField83 = 14;
constexpr size_t kFieldCount83 = 17;

constexpr std::string_view kGroup = "|Corvane Map|";
constexpr std::string_view kBehindName = "||";
constexpr int kDecimals = 6;

// What stands between position and comment, and behind the comment.
struct LineFrame {
  std::string_view beforeComment;
  std::string_view end;
};

constexpr LineFrame kFrame80 = {"||||||||", "|\r\n"};
constexpr LineFrame kFrame83 = {"|||||||||", "||\r\n"};

void WritePois(ByteSink& sink, const CGpsPointArray& list, const LineFrame& frame) {
  sink.Write(kUtf16Mark);
  std::string line;
  size_t number = 0;
  for (const CGpsPoint& point : list.points) {
    line = std::to_string(++number);
    line.append(kGroup).append(point.name).append(kBehindName);
    AppendFixed(line, point.latitude, kDecimals);
    line.push_back('|');
    AppendFixed(line, point.longitude, kDecimals);
    line.append(frame.beforeComment).append(point.comment).append(frame.end);
    sink.Utf16(line);
  }
}

}  // namespace

uint32_t ParseUpoi(std::string_view bytes, PointLists& lists, ConversionContext& context) {
  auto& route = AddList<CGpsRoute>(lists);
  const std::string text = DecodeTextFileToUtf8(bytes);
  context.TellEncoding(DetectEncoding(bytes).encoding);
  ConversionLines lines(text, context);
  std::vector<std::string_view> fields;
  for (std::string_view line; lines.Next(line);) {
    SplitFirstFields(line, '|', 17, fields);
    if (fields.size() < kLeastFieldCount) {
      if (!line.empty()) context.Note(ConversionNote::kLinePassedOver);
      continue;
    }
    CGpsPoint& point = route.points.emplace_back();
    point.name = fields[kNameField];
    point.latitude = ParseReal(fields[kLatitudeField]);
    point.longitude = ParseReal(fields[kLongitudeField]);
    const size_t comment = fields.size() < kFieldCount83 ? kCommentField80 : kCommentField83;
    if (comment < fields.size()) point.comment = fields[comment];
    for (size_t field = kLongitudeField + 1; field < fields.size(); ++field) {
      if (field != comment && !fields[field].empty()) context.Note(ConversionNote::kDetail);
    }
  }
  return kStatusSuccess;
}

void WriteUpoi80Body(ByteSink& sink, const CGpsPointArray& list) {
  WritePois(sink, list, kFrame80);
}

void WriteUpoi83Body(ByteSink& sink, const CGpsPointArray& list) {
  WritePois(sink, list, kFrame83);
}
