#include "formats/text/csv.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "base/localized_text.h"
#include "base/numbers.h"
#include "base/status.h"
#include "base/text.h"
#include "base/text_ids.h"
#include "conversion/conversion_lines.h"
#include "conversion/format_frame.h"
#include "formats/text/csv_columns.h"
#include "platform/text_encoder.h"

namespace {

// What a column can hold, in the order of CCsvLayout::Columns.
enum CsvContent : size_t { kLatitude, kLongitude, kElevation, kName, kComment, kContentCount };

// Labels of the header line, in the same order.
constexpr std::array<uint32_t, kContentCount> kLabelTexts = {
    kTextLatitude, kTextLongitude, kTextElevation, kTextName, kTextComment};

constexpr int kDecimals = 6;
constexpr char kQuote = '"';

// What belongs to a field's quotes and line end rather than to its text.
constexpr std::string_view kTrimmedLeft = "\" ";
constexpr std::string_view kTrimmedRight = "\" \r";

std::string ReplaceEvery(std::string_view text, std::string_view from, std::string_view to) {
  std::string replaced;
  size_t start = 0;
  for (;;) {
    const size_t found = text.find(from, start);
    if (found == std::string_view::npos) break;
    replaced.append(text.substr(start, found - start)).append(to);
    start = found + from.size();
  }
  return replaced.append(text.substr(start));
}

// Finds quotes and column separators in the bytes of a text. In UTF-8 a separator above U+007F is
// a pair of bytes, whose first one never stands inside another character.
class SeparatorFinder {
 public:
  SeparatorFinder(std::string_view separators, bool isUtf8) : m_isUtf8(isUtf8) {
    for (const char separator : separators) {
      const std::string bytes = isUtf8 ? WidenToUtf8({&separator, 1}) : std::string(1, separator);
      m_isFirst[Index(bytes[0])] = true;
      if (bytes.size() == 2) m_pairs.push_back(bytes);
    }
    m_isFirst[Index(kQuote)] = true;
  }

  // The next significant character from `position` on: its offset, the size of the line if there
  // is none, and in `length` how many bytes it takes.
  size_t Find(std::string_view line, size_t position, size_t& length) const {
    for (; position < line.size(); ++position) {
      if (!m_isFirst[Index(line[position])]) continue;
      length = LengthAt(line, position);
      if (length != 0) break;
    }
    return position;
  }

 private:
  static size_t Index(char byte) { return static_cast<unsigned char>(byte); }

  size_t LengthAt(std::string_view line, size_t position) const {
    if (!m_isUtf8 || Index(line[position]) < 0x80) return 1;
    const std::string_view pair = line.substr(position, 2);
    return std::find(m_pairs.begin(), m_pairs.end(), pair) == m_pairs.end() ? 0 : 2;
  }

  bool m_isUtf8;
  std::array<bool, 256> m_isFirst{};
  std::vector<std::string> m_pairs;
};

// Turns the lines of a text into points, without keeping more of a line than the fields in use.
class LineReader {
 public:
  LineReader(const CCsvLayout& layout, bool isUtf8, CGpsPointArray& route,
             ConversionContext& context)
      : LineReader(layout.Columns(), CsvSeparators(layout), isUtf8, route, context) {}

  void Read(std::string_view line) {
    Split(line);
    CGpsCoordinate position;
    const bool hasLatitude = TakeNumber(kLatitude, position.latitude);
    const bool hasLongitude = TakeNumber(kLongitude, position.longitude);
    if (!position.IsValid()) {
      NoteDropped(line, hasLatitude || hasLongitude);
      return;
    }
    CGpsPoint& point = m_route.points.emplace_back();
    point.latitude = position.latitude;
    point.longitude = position.longitude;
    TakeNumber(kElevation, point.altitude);
    TakeText(kName, point.name);
    TakeText(kComment, point.comment);
    if (m_hasMore) m_context.Note(ConversionNote::kDetail);
  }

 private:
  LineReader(const std::array<uint32_t, kContentCount>& columns, const NumberSeparators& separators,
             bool isUtf8, CGpsPointArray& route, ConversionContext& context)
      : m_columns(columns),
        m_lastColumn(*std::max_element(columns.begin(), columns.end())),
        m_isUtf8(isUtf8),
        m_decimal(isUtf8 ? WidenToUtf8(separators.decimal) : separators.decimal),
        m_finder(separators.list, isUtf8),
        m_route(route),
        m_context(context) {}

  // Finds the fields of the columns in use; a missing one is empty. Separators inside quotes don't
  // count, that is behind an odd number of quotes since the field's start.
  void Split(std::string_view line) {
    m_fields.fill({});
    m_hasMore = false;
    size_t start = 0;
    for (uint64_t column = 1; column <= m_lastColumn; ++column) {
      bool isQuoted = false;
      size_t length = 0;
      size_t end = m_finder.Find(line, start, length);
      for (; end < line.size(); end = m_finder.Find(line, end + length, length)) {
        if (line[end] == kQuote) {
          isQuoted = !isQuoted;
        } else if (!isQuoted) {
          break;
        }
      }
      const std::string_view field = line.substr(start, end - start);
      bool isUsed = false;
      for (size_t content = 0; content < kContentCount; ++content) {
        if (m_columns[content] != column) continue;
        m_fields[content] = field;
        isUsed = true;
      }
      m_hasMore = m_hasMore || (!isUsed && HasText(field));
      if (end >= line.size()) return;
      start = end + length;
    }
    // Of the columns behind, one with a text is enough to know.
    for (size_t length = 0; start < line.size() && !m_hasMore; start += length) {
      const size_t end = m_finder.Find(line, start, length);
      m_hasMore = HasText(line.substr(start, end - start));
      start = end;
    }
  }

  static bool HasText(std::string_view field) {
    return field.find_first_not_of(kTrimmedRight) != std::string_view::npos;
  }

  std::string_view FieldOf(CsvContent content) const {
    return TrimRight(TrimLeft(m_fields[content], kTrimmedLeft), kTrimmedRight);
  }

  // False when the field does not begin with a number; `value` is left alone then.
  bool TakeNumber(CsvContent content, double& value) const {
    const std::string_view field = FieldOf(content);
    const bool isPlain =
        m_decimal == "." || m_decimal.empty() || field.find(m_decimal) == std::string_view::npos;
    return TryParseReal(isPlain ? field : ReplaceEvery(field, m_decimal, "."), value);
  }

  void TakeText(CsvContent content, std::string& text) const {
    const std::string_view field = FieldOf(content);
    text = m_isUtf8 ? MendUtf8(field) : WidenToUtf8(field);
  }

  // Tells of a line that gave no point, unless it is empty or may be the header.
  void NoteDropped(std::string_view line, bool hasPosition) {
    const bool isFirst = m_route.points.empty() && !m_hadData;
    size_t length = 0;
    bool isEmpty = true;
    for (size_t i = 0; i < line.size() && isEmpty; i += length == 0 ? 1 : length) {
      const bool isTrimmed = kTrimmedRight.find(line[i]) != std::string_view::npos;
      length = 0;
      if (!isTrimmed) isEmpty = m_finder.Find(line.substr(i, 2), 0, length) == 0;
    }
    if (isEmpty) return;
    m_hadData = true;
    if (hasPosition) {
      m_context.Note(ConversionNote::kPointWithoutPosition);
    } else if (!isFirst) {
      m_context.Note(ConversionNote::kLinePassedOver);
    }
  }

  std::array<uint32_t, kContentCount> m_columns;
  uint32_t m_lastColumn;
  bool m_isUtf8;
  std::string m_decimal;
  SeparatorFinder m_finder;
  CGpsPointArray& m_route;
  ConversionContext& m_context;
  std::array<std::string_view, kContentCount> m_fields{};
  bool m_hasMore = false;  // the line has text in a column that the layout doesn't use
  bool m_hadData = false;  // a line with data has been dropped
};

bool CanWrite(const CCsvLayout& layout) {
  const auto columns = layout.Columns();
  return *std::max_element(columns.begin(), columns.end()) <= kMostCsvColumns;
}

// The lines of a file: one cell a column.
class LineWriter {
 public:
  LineWriter(ByteSink& sink, const CCsvLayout& layout)
      : m_sink(sink), m_separators(CsvSeparators(layout)) {
    const auto columns = layout.Columns();
    m_cells.resize(*std::max_element(columns.begin(), columns.end()), kContentCount);
    // Of two contents in one column the later one stands.
    for (size_t content = 0; content < kContentCount; ++content) {
      if (columns[content] != 0) m_cells[columns[content] - 1] = static_cast<CsvContent>(content);
    }
  }

  // The labels stand in UTF-8 in a file whose other texts are 8-bit: programs know them like this.
  // With an encoding told for the run they are in that.
  void WriteHeader(const std::string& encoding) {
    TextEncoder encoder;
    const bool isEncoded = !encoding.empty() && encoder.Open(encoding);
    WriteLine([&](CsvContent content) {
      const std::string_view label = LoadTextUtf8(kLabelTexts[content]);
      m_sink.Write(isEncoded ? encoder.Encode(label) : label);
    });
  }

  void WritePoint(const CGpsPoint& point) {
    WriteLine([this, &point](CsvContent content) {
      if (content == kLatitude) WriteNumber(point.latitude);
      if (content == kLongitude) WriteNumber(point.longitude);
      if (content == kElevation) WriteNumber(point.altitude);
      if (content == kName) WriteText(point.name);
      if (content == kComment) WriteText(point.comment);
    });
  }

 private:
  template <typename WriteCell>
  void WriteLine(WriteCell writeCell) {
    bool isFirst = true;
    for (const CsvContent content : m_cells) {
      if (!isFirst) m_sink.Write(m_separators.list);
      isFirst = false;
      if (content != kContentCount) writeCell(content);
    }
    m_sink.Write("\r\n");
  }

  void WriteNumber(double value) {
    if (m_separators.decimal == ".") {
      m_sink.Fixed(value, kDecimals);
    } else {
      m_sink.Write(ReplaceEvery(ToFixedString(value, kDecimals), ".", m_separators.decimal));
    }
  }

  // Quotes inside stay as they are: readers of this format don't know doubled ones.
  void WriteText(std::string_view utf8) {
    m_sink.Put(kQuote);
    m_sink.Narrow(utf8);
    m_sink.Put(kQuote);
  }

  ByteSink& m_sink;
  NumberSeparators m_separators;
  std::vector<CsvContent> m_cells;
};

// The layout of a text that is UTF-8 or 8-bit: the one given, unless it is to be found. What its
// header tells otherwise is kept for the report. False when none is found.
bool ChooseLayout(std::string_view text, CCsvLayout& layout, CsvLayouts& layouts) {
  if (!layouts.findsForReading) {
    const std::optional<CCsvLayout> told = CsvLayoutOfHeader(text);
    if (told && Contradicts(*told, layout)) layouts.contradicting = told;
    return true;
  }
  layouts.found = FindCsvLayout(text);
  layouts.isNotFound = !layouts.found;
  if (layouts.found) layout = *layouts.found;
  return !layouts.isNotFound;
}

}  // namespace

uint32_t ReadCsv(const WideString& path, PointLists& lists, bool silent) {
  ContextInPlace context;
  CCsvLayout layout;
  if (const uint32_t status = context->csvLayouts.Choose(CsvUse::kRead, silent, layout))
    return status;
  return ReadFileWith(
      path, context,
      [&](std::string_view bytes) { return ParseCsvTable(bytes, lists, layout, context); },
      TellPlatformError);
}

uint32_t ParseCsv(std::string_view bytes, PointLists& lists, ConversionContext& context) {
  CCsvLayout layout;
  context.csvLayouts.Choose(CsvUse::kRead, /*silent=*/true, layout);
  return ParseCsvTable(bytes, lists, layout, context);
}

uint32_t ParseCsvTable(std::string_view bytes, PointLists& lists, const CCsvLayout& layout,
                       ConversionContext& context) {
  const DetectedEncoding detected = DetectEncoding(bytes);
  context.TellEncoding(detected.encoding);
  std::string decoded;
  std::string_view text = bytes.substr(detected.skipped);
  if (detected.encoding != kEncodingNarrow && detected.encoding != kEncodingUtf8) {
    decoded = DecodeTextFileToUtf8(bytes);
    text = decoded;
  }
  CCsvLayout chosen = layout;
  if (!ChooseLayout(text, chosen, context.csvLayouts)) return kStatusBadFormat;
  LineReader reader(chosen, detected.encoding != kEncodingNarrow, AddList<CGpsRoute>(lists),
                    context);
  ConversionLines lines(text, context);
  for (std::string_view line; lines.Next(line);) reader.Read(line);
  return kStatusSuccess;
}

uint32_t WriteCsv(const WideString& path, const CGpsPointArray& list, uint32_t, bool silent) {
  ContextInPlace context;
  CCsvLayout layout;
  if (const uint32_t status = context->csvLayouts.Choose(CsvUse::kWrite, silent, layout))
    return status;
  if (!CanWrite(layout)) return kStatusInvalidParameter;
  return WriteFileWith(
      path, context, [&](ByteSink& sink) { WriteCsvTable(sink, list, layout, context->encoding); },
      TellPlatformError);
}

uint32_t EmitCsv(ByteSink& sink, const CGpsPointArray& list, uint32_t, ConversionContext& context) {
  CCsvLayout layout;
  context.csvLayouts.Choose(CsvUse::kWrite, /*silent=*/true, layout);
  if (!CanWrite(layout)) return kStatusInvalidParameter;
  WriteCsvTable(sink, list, layout, context.encoding);
  return kStatusSuccess;
}

void WriteCsvBody(ByteSink& sink, const CGpsPointArray& list, const CCsvLayout& layout) {
  WriteCsvTable(sink, list, layout, std::string());
}

void WriteCsvTable(ByteSink& sink, const CGpsPointArray& list, const CCsvLayout& layout,
                   const std::string& encoding) {
  LineWriter writer(sink, layout);
  writer.WriteHeader(encoding);
  for (const CGpsPoint& point : list.points) writer.WritePoint(point);
}
