#include "formats/text/csv_columns.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string>
#include <vector>

#include "base/text.h"

namespace {

// What a column can hold, in the order of CCsvLayout::Columns.
enum CsvContent : size_t { kLatitude, kLongitude, kElevation, kName, kComment, kContentCount };

struct ColumnTitle {
  std::u16string_view title;
  CsvContent content;
};

// In lower case. The first of several columns with titles for one content counts.
constexpr ColumnTitle kTitles[] = {
    {u"latitude", kLatitude},
    {u"lat", kLatitude},
    {u"lat.", kLatitude},
    {u"y", kLatitude},
    {u"breitengrad", kLatitude},
    {u"breite", kLatitude},
    {u"breedtegraad", kLatitude},
    {u"breedte", kLatitude},
    {u"longitude", kLongitude},
    {u"lon", kLongitude},
    {u"lon.", kLongitude},
    {u"long", kLongitude},
    {u"long.", kLongitude},
    {u"lng", kLongitude},
    {u"x", kLongitude},
    {u"längengrad", kLongitude},
    {u"laengengrad", kLongitude},
    {u"länge", kLongitude},
    {u"laenge", kLongitude},
    {u"lengtegraad", kLongitude},
    {u"lengte", kLongitude},
    {u"elevation", kElevation},
    {u"ele", kElevation},
    {u"altitude", kElevation},
    {u"alt", kElevation},
    {u"height", kElevation},
    {u"élévation", kElevation},
    {u"hauteur", kElevation},
    {u"höhe", kElevation},
    {u"hoehe", kElevation},
    {u"hoogte", kElevation},
    {u"name", kName},
    {u"title", kName},
    {u"label", kName},
    {u"stop", kName},
    {u"place", kName},
    {u"nom", kName},
    {u"titre", kName},
    {u"étape", kName},
    {u"lieu", kName},
    {u"bezeichnung", kName},
    {u"titel", kName},
    {u"ort", kName},
    {u"naam", kName},
    {u"plaats", kName},
    {u"comment", kComment},
    {u"comments", kComment},
    {u"cmt", kComment},
    {u"description", kComment},
    {u"desc", kComment},
    {u"note", kComment},
    {u"notes", kComment},
    {u"remark", kComment},
    {u"commentaire", kComment},
    {u"remarque", kComment},
    {u"kommentar", kComment},
    {u"beschreibung", kComment},
    {u"bemerkung", kComment},
    {u"opmerking", kComment},
    {u"omschrijving", kComment},
    {u"beschrijving", kComment},
    {u"commentaar", kComment},
};

constexpr char kSeparators[] = {';', '\t', '|', ','};
constexpr char kQuote = '"';
constexpr std::string_view kTrimmed = "\" \t\r";

// So many lines below the first are looked at.
constexpr size_t kMostLines = 100;
// And so much of each.
constexpr size_t kLongestLine = size_t{1} << 16;

constexpr double kHighestLatitude = 90.0;
constexpr double kHighestLongitude = 180.0;

// The fields of one line, without their quotes.
using Fields = std::vector<std::string_view>;

Fields SplitLine(std::string_view line, char separator) {
  Fields fields;
  bool isQuoted = false;
  size_t start = 0;
  for (size_t i = 0; i <= line.size(); ++i) {
    if (i < line.size() && line[i] == kQuote) isQuoted = !isQuoted;
    if (i < line.size() && (isQuoted || line[i] != separator)) continue;
    if (fields.size() == kMostCsvColumns) break;
    fields.push_back(Trim(line.substr(start, i - start), kTrimmed));
    start = i + 1;
  }
  return fields;
}

// The first lines that are not empty.
std::vector<std::string_view> FirstLines(std::string_view text) {
  std::vector<std::string_view> lines;
  LineSplitter splitter(text);
  for (std::string_view line; lines.size() <= kMostLines && splitter.Next(line);) {
    line = line.substr(0, kLongestLine);
    if (!Trim(line, kTrimmed).empty()) lines.push_back(line);
  }
  return lines;
}

// A title as the table has it: in lower case, without the unit in brackets behind it.
WideString PlainTitle(std::string_view field) {
  WideString title = Utf8ToWideLossy(IsValidUtf8(field) ? std::string(field) : WidenToUtf8(field));
  title.resize(std::min(title.find_first_of(u"(["), title.size()));
  for (char16_t& c : title) {
    if ((c >= u'A' && c <= u'Z') || (c >= u'\u00C0' && c <= u'\u00DE'))
      c = static_cast<char16_t>(c + 32);
  }
  while (title.ends_with(u' ') || title.ends_with(u'_')) title.pop_back();
  return title;
}

uint32_t& ColumnOf(CCsvLayout& layout, size_t content) {
  uint32_t* const columns[] = {&layout.latitudeColumn, &layout.longitudeColumn,
                               &layout.elevationColumn, &layout.nameColumn, &layout.commentColumn};
  return *columns[content];
}

CCsvLayout EmptyLayout(char separator) {
  CCsvLayout layout;
  layout.preset = kManualCsvPreset;
  for (size_t content = 0; content < kContentCount; ++content) ColumnOf(layout, content) = 0;
  layout.decimalSeparator = ".";
  layout.columnSeparator = std::string(1, separator);
  return layout;
}

// The layout of a line of titles; columns that have none are 0.
CCsvLayout LayoutOfTitles(std::string_view line, char separator) {
  CCsvLayout layout = EmptyLayout(separator);
  uint32_t number = 0;
  for (const std::string_view field : SplitLine(line, separator)) {
    ++number;
    const WideString title = PlainTitle(field);
    for (const ColumnTitle& known : kTitles) {
      uint32_t& column = ColumnOf(layout, known.content);
      if (known.title == title && column == 0) column = number;
    }
  }
  return layout;
}

// A field that is a real number from its first character to its last.
bool ParseField(std::string_view field, char decimal, double& value, bool& isFraction) {
  std::string number(field);
  std::replace(number.begin(), number.end(), decimal, '.');
  isFraction = number.find('.') != std::string::npos;
  if (decimal != '.' && field.find('.') != std::string_view::npos) return false;
  const char* start = number.data();
  const char* const end = start + number.size();
  if (start != end && *start == '+') ++start;
  const auto parsed = std::from_chars(start, end, value);
  return parsed.ec == std::errc() && parsed.ptr == end && std::isfinite(value);
}

/// What stands in one column of all lines.
struct ColumnContent {
  bool isNumber = true;  ///< in every line
  bool hasFraction = false;
  bool hasText = false;
  double largest = 0.0;  ///< without sign
  std::vector<double> values;

  bool CanBeAngle() const { return isNumber && hasFraction && largest <= kHighestLongitude; }
};

std::vector<ColumnContent> ContentOf(const std::vector<std::string_view>& lines, size_t first,
                                     char separator, char decimal) {
  std::vector<ColumnContent> columns;
  for (size_t i = first; i < lines.size(); ++i) {
    const Fields fields = SplitLine(lines[i], separator);
    if (i == first) columns.resize(fields.size());
    for (size_t column = 0; column < columns.size(); ++column) {
      ColumnContent& content = columns[column];
      const std::string_view field = column < fields.size() ? fields[column] : std::string_view();
      double value = 0.0;
      bool isFraction = false;
      const bool isNumber = ParseField(field, decimal, value, isFraction);
      content.isNumber = content.isNumber && isNumber;
      content.hasFraction = content.hasFraction || isFraction;
      content.hasText = content.hasText || (!isNumber && !field.empty());
      content.largest = std::max(content.largest, std::abs(value));
      content.values.push_back(value);
    }
  }
  return columns;
}

bool IsInEurope(double latitude, double longitude) {
  return latitude > 34 && latitude < 72 && longitude > -25 && longitude < 45;
}

// Whether of two columns of angles the first one is the latitude.
bool IsLatitudeFirst(const ColumnContent& first, const ColumnContent& second) {
  if (first.largest > kHighestLatitude || second.largest > kHighestLatitude)
    return first.largest <= kHighestLatitude;
  size_t latitudeFirst = 0;
  size_t longitudeFirst = 0;
  for (size_t i = 0; i < first.values.size(); ++i) {
    if (IsInEurope(first.values[i], second.values[i])) ++latitudeFirst;
    if (IsInEurope(second.values[i], first.values[i])) ++longitudeFirst;
  }
  return latitudeFirst > longitudeFirst;
}

// Fills in what the titles have left open. False without two columns of angles side by side.
bool AddByContent(const std::vector<ColumnContent>& columns, CCsvLayout& layout) {
  size_t pair = 0;
  const auto isPair = [&columns](size_t i) {
    return columns[i].CanBeAngle() && columns[i + 1].CanBeAngle() &&
           std::min(columns[i].largest, columns[i + 1].largest) <= kHighestLatitude;
  };
  while (pair + 1 < columns.size() && !isPair(pair)) ++pair;
  if (pair + 1 >= columns.size()) return false;
  const bool isLatitudeFirst = IsLatitudeFirst(columns[pair], columns[pair + 1]);
  const auto number = static_cast<uint32_t>(pair + 1);
  layout.latitudeColumn = isLatitudeFirst ? number : number + 1;
  layout.longitudeColumn = isLatitudeFirst ? number + 1 : number;
  const bool isTitled = layout.nameColumn != 0 || layout.commentColumn != 0;
  for (size_t i = 0; i < columns.size() && !isTitled; ++i) {
    if (!columns[i].hasText) continue;
    uint32_t& column = layout.nameColumn == 0 ? layout.nameColumn : layout.commentColumn;
    if (column == 0) column = static_cast<uint32_t>(i + 1);
  }
  return true;
}

// Whether the numbers of a column have a comma where the fraction begins.
bool HasDecimalComma(const std::vector<std::string_view>& lines, const CCsvLayout& layout) {
  const char separator = layout.columnSeparator[0];
  if (separator == ',') return false;
  for (size_t i = 1; i < lines.size(); ++i) {
    const Fields fields = SplitLine(lines[i], separator);
    for (const uint32_t column : {layout.latitudeColumn, layout.longitudeColumn}) {
      double value = 0.0;
      bool isFraction = false;
      if (column <= fields.size() && ParseField(fields[column - 1], ',', value, isFraction) &&
          isFraction) {
        return true;
      }
    }
  }
  return false;
}

}  // namespace

std::optional<CCsvLayout> CsvLayoutOfHeader(std::string_view text) {
  const std::vector<std::string_view> lines = FirstLines(text);
  if (lines.empty()) return std::nullopt;
  for (const char separator : kSeparators) {
    CCsvLayout layout = LayoutOfTitles(lines[0], separator);
    if (layout.latitudeColumn == 0 || layout.longitudeColumn == 0) continue;
    if (HasDecimalComma(lines, layout)) layout.decimalSeparator = ",";
    return layout;
  }
  return std::nullopt;
}

std::optional<CCsvLayout> FindCsvLayout(std::string_view text) {
  if (auto layout = CsvLayoutOfHeader(text)) return layout;
  const std::vector<std::string_view> lines = FirstLines(text);
  // The first line may have titles that nobody knows.
  for (const size_t first : {size_t{0}, size_t{1}}) {
    if (first >= lines.size()) break;
    for (const char separator : kSeparators) {
      for (const char decimal : {'.', ','}) {
        if (decimal == separator) continue;
        CCsvLayout layout =
            first == 0 ? EmptyLayout(separator) : LayoutOfTitles(lines[0], separator);
        layout.decimalSeparator = std::string(1, decimal);
        if (AddByContent(ContentOf(lines, first, separator, decimal), layout)) return layout;
      }
    }
  }
  return std::nullopt;
}

bool Contradicts(const CCsvLayout& header, const CCsvLayout& layout) {
  const NumberSeparators separators = CsvSeparators(layout);
  if (separators.list.find(header.columnSeparator) == std::string::npos) return true;
  if (header.decimalSeparator == "," && separators.decimal != ",") return true;
  const auto told = header.Columns();
  const auto used = layout.Columns();
  for (size_t content = 0; content < kContentCount; ++content) {
    if (used[content] == 0) continue;
    const bool isPosition = content == kLatitude || content == kLongitude;
    if (isPosition && used[content] != told[content]) return true;
    for (size_t other = 0; other < kContentCount; ++other) {
      if (other != content && told[other] == used[content]) return true;
    }
  }
  return false;
}
