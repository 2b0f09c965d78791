#include "formats/text/mireo.h"

#include <algorithm>
#include <string>

#include "base/numbers.h"
#include "base/text.h"
#include "conversion/conversion_lines.h"

namespace {

constexpr std::u16string_view kFileNameStart = u"Route ";

// What begins a word that has a value. The list's name stands in a comment line.
constexpr char kComment = '#';
constexpr std::string_view kName = "NAME=";
constexpr std::string_view kStreet = "STREET=";
constexpr std::string_view kPosition = "PT=";

constexpr int kDecimals = 5;

// Takes the first word off a line. Blanks inside double quotes belong to the word.
bool TakeWord(std::string_view& line, std::string_view& word) {
  line = TrimLeft(line, " ");
  bool isQuoted = false;
  size_t end = 0;
  for (; end < line.size() && (isQuoted || line[end] != ' '); ++end) {
    if (line[end] == '"') isQuoted = !isQuoted;
  }
  word = line.substr(0, end);
  line.remove_prefix(end);
  return !word.empty();
}

// Without the outer quotes. Quotes further inside belong to the text.
std::string_view Unquoted(std::string_view text) {
  if (text.starts_with('"')) text.remove_prefix(1);
  if (text.ends_with('"')) text.remove_suffix(1);
  return text;
}

bool TakeValue(std::string_view word, std::string_view key, std::string_view& value) {
  if (!word.starts_with(key)) return false;
  value = Unquoted(word.substr(key.size()));
  return true;
}

// Longitude, blanks, latitude.
void ReadPosition(std::string_view text, CGpsPoint& point) {
  text = TrimLeft(text, " ");
  const size_t blank = std::min(text.find(' '), text.size());
  point.longitude = ParseReal(text.substr(0, blank));
  point.latitude = ParseReal(text.substr(blank));
}

WideString WithFileNameStart(const WideString& path) {
  const std::u16string_view fileName = FileNameOfPath(path);
  WideString started = path;
  if (!fileName.starts_with(kFileNameStart))
    started.insert(path.size() - fileName.size(), kFileNameStart);
  return started;
}

}  // namespace

uint32_t ParseMireo(std::string_view bytes, PointLists& lists, ConversionContext& context) {
  auto& route = AddList<CGpsRoute>(lists);
  const DetectedEncoding detected = DetectEncoding(bytes);
  if (detected.encoding == kEncodingUtf8) context.TellEncoding(detected.encoding);
  const auto toUtf8 = [&detected](std::string_view text) {
    return detected.encoding == kEncodingUtf8 ? std::string(text) : WidenToUtf8(text);
  };

  ConversionLines lines(bytes.substr(detected.skipped), context);
  for (std::string_view line; lines.Next(line);) {
    const bool isComment = line.starts_with(kComment);
    if (isComment) line.remove_prefix(1);
    CGpsPoint point;
    bool hasWords = false, hasName = false, hasPosition = false;
    for (std::string_view word, value; TakeWord(line, word);) {
      hasWords = true;
      if (TakeValue(word, kName, value)) {
        route.name = toUtf8(value);
        hasName = true;
      } else if (isComment) {
        continue;
      } else if (TakeValue(word, kStreet, value)) {
        point.name = toUtf8(value);
      } else if (TakeValue(word, kPosition, value)) {
        ReadPosition(value, point);
        hasPosition = true;
      }
    }
    if (hasPosition)
      route.points.push_back(std::move(point));
    else if (hasWords && !hasName && !isComment)
      context.Note(ConversionNote::kLinePassedOver);
  }
  return kStatusSuccess;
}

uint32_t WriteMireoTxt(const WideString& path, const CGpsPointArray& list, uint32_t, bool) {
  return kWriterOf<WriteMireoTxtBody>(WithFileNameStart(path), list, 0, true);
}

void WriteMireoTxtBody(ByteSink& sink, const CGpsPointArray& list) {
  for (const CGpsPoint& point : list.points) {
    sink.Write("STREET=\"");
    sink.Narrow(point.name);
    sink.Write("\" PT=\"");
    sink.Fixed(point.longitude, kDecimals);
    sink.Put(' ');
    sink.Fixed(point.latitude, kDecimals);
    sink.Write("\"\n");
  }
}

void WriteMireoRtBody(ByteSink& sink, const CGpsPointArray& list) {
  sink.Printf("#NAME=\"%s\"\n", NarrowUtf8(list.name));
  WriteMireoTxtBody(sink, list);
}
