#include "conversion/content_search.h"

#include <algorithm>
#include <exception>
#include <string>
#include <vector>

#include "base/numbers.h"
#include "base/text.h"
#include "platform/folder.h"

namespace {

using std::string_view_literals::operator""sv;

struct Mark {
  std::string_view bytes;
  const char16_t* key;
};

// What whole files begin with.
constexpr Mark kMarks[] = {
    {"MsRcf\0"sv, u"gdb"},
    {"MsRcd\0"sv, u"mps"},
    {"OziExplorer Route File Version"sv, u"rte"},
    {"H1,OziExplorer CE Route2 File Version"sv, u"rt2"},
    {"OziExplorer Track Point File Version"sv, u"plt"},
    {"OziExplorer Waypoint File Version"sv, u"wpt"},
    {"$PMGNWPL,"sv, u"upt"},
    {"$PMGNRTE,"sv, u"upt"},
    {"-|-|16|-|-|"sv, u"rte"},
    {"[CLIENT]"sv, u"bcr"},
    {"[TOUR]"sv, u"tour"},
    {"Data Version="sv, u"trp"},
    {"\xFF\xFE"
     "D\0a\0t\0a\0 \0V\0e\0r\0s\0i\0o\0n\0"sv,
     u"trp"},
    {"\xFF\xFF\0\0\1\0\0\0\0\0\0\0"sv, u"route"},
    {"\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"sv, u"axe"},
    {"PK\3\4"sv, u"kmz"},
};

// The outermost elements of XML files that no other format has.
constexpr Mark kElements[] = {
    {"gpx"sv, u"gpx"},
    {"kml"sv, u"kml"},
    {"osm"sv, u"osm"},
    {"lmx"sv, u"lmx"},
};

constexpr std::string_view kBlanks = " \t\r\n";

// The name of the outermost element without its prefix; empty where none begins.
std::string_view OutermostElement(std::string_view bytes) {
  for (;;) {
    bytes.remove_prefix(std::min(bytes.find_first_not_of(kBlanks), bytes.size()));
    if (!bytes.starts_with('<')) return {};
    const bool isComment = bytes.starts_with("<!--");
    if (!isComment && !bytes.starts_with("<?") && !bytes.starts_with("<!")) break;
    const std::string_view end = isComment ? "-->"sv : ">"sv;
    const size_t found = bytes.find(end);
    if (found == std::string_view::npos) return {};
    bytes.remove_prefix(found + end.size());
  }
  std::string_view name = bytes.substr(1, bytes.find_first_of(" \t\r\n/>", 1) - 1);
  const size_t colon = name.find(':');
  return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

WideString KeyOfMark(std::string_view bytes) {
  for (const Mark& mark : kMarks) {
    if (bytes.starts_with(mark.bytes)) return mark.key;
  }
  const std::string_view element = OutermostElement(bytes.substr(DetectEncoding(bytes).skipped));
  for (const Mark& mark : kElements) {
    if (element == mark.bytes) return mark.key;
  }
  return {};
}

// Whether a reader takes the bytes, all of them.
bool Takes(FormatParseFn parse, std::string_view bytes, ConversionContext& trial) {
  PointLists lists;
  trial.Renew();
  trial.Begin(ConversionProgress::Stage::kReading, bytes.size());
  try {
    if (parse(bytes, lists, trial) != kStatusSuccess || trial.IsCancelled()) return false;
  } catch (const std::exception&) {
    return false;
  }
  return trial.notes.Count(ConversionNote::kLinePassedOver) == 0 &&
         std::any_of(lists.begin(), lists.end(),
                     [](const auto& list) { return !list->points.empty(); });
}

// Some readers take nearly every text. Two of them take the same tables of numbers, in another
// order of the columns; the third wants no lines at all.
int Leniency(const CItineraryFormat& row) {
  const std::u16string_view extension = row.extension;
  if (extension == u"trl") return 2;
  return extension == u"csv" || extension == u"tk" ? 1 : 0;
}

// The reader that the bytes are for, of those that take them; null when that is not clear.
const CItineraryFormat* TheOne(const std::vector<const CItineraryFormat*>& takers) {
  const CItineraryFormat* found = nullptr;
  bool isClear = true;
  for (const CItineraryFormat* row : takers) {
    const int before = found ? Leniency(*found) : Leniency(*row) + 1;
    if (Leniency(*row) > before) continue;
    isClear = Leniency(*row) < before;
    found = row;
  }
  return isClear ? found : nullptr;
}

WideString KeyOf(const CItineraryFormat& row) {
  return row.textId == 0 ? row.extension
                         : row.extension + (u":" + WidenAscii(std::to_string(row.textId)));
}

}  // namespace

bool HasNoExtension(std::u16string_view path) {
  return NameIn(path).find(u'.') == std::u16string_view::npos;
}

WideString KeyOfContent(const FormatTable& table, std::string_view bytes,
                        const ConversionContext& context) {
  WideString key = KeyOfMark(bytes);
  if (!key.empty()) return key;
  // It asks no service, and is cancelled with the conversion.
  ConversionContext trial = context.ForReadingBack();
  trial.csvLayouts.forReading = context.csvLayouts.forReading;
  trial.csvLayouts.findsForReading = context.csvLayouts.findsForReading;
  std::vector<FormatParseFn> tried;
  std::vector<const CItineraryFormat*> takers;
  for (const CItineraryFormat& row : table) {
    const FormatParseFn parse = row.facts.parse;
    if (!parse || std::find(tried.begin(), tried.end(), parse) != tried.end()) continue;
    tried.push_back(parse);
    if (Takes(parse, bytes, trial)) takers.push_back(&row);
  }
  const CItineraryFormat* const row = TheOne(takers);
  return row ? KeyOf(*row) : WideString();
}
