#include "services/links/google_link.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

#include "base/numbers.h"
#include "base/text.h"
#include "markup/json.h"
#include "services/links/link_text.h"

namespace {

constexpr std::string_view kDirectionsMark = "/maps/dir/";
constexpr std::string_view kPlaceMark = "/maps/place/";
constexpr std::string_view kDataMark = "data=";
constexpr std::string_view kAlternativesMark = "am=";

bool AreLetters(std::string_view text, size_t least, size_t most) {
  return text.size() >= least && text.size() <= most &&
         std::all_of(text.begin(), text.end(), [](char c) { return c >= 'a' && c <= 'z'; });
}

// "com", "de", "co.uk", "com.au": what stands behind the name of the site.
bool IsCountryEnding(std::string_view ending) {
  const size_t dot = ending.find('.');
  if (dot == std::string_view::npos) return AreLetters(ending, 2, 3);
  return AreLetters(ending.substr(0, dot), 2, 3) && AreLetters(ending.substr(dot + 1), 2, 2);
}

LinkStop StopOf(std::string_view text) {
  LinkStop stop;
  text = Trim(text, " ");
  stop.position = ParseLinkPosition(text);
  if (stop.position) return stop;
  const size_t at = text.rfind('@');
  if (at != std::string_view::npos) stop.position = ParseLinkPosition(text.substr(at + 1));
  stop.name = stop.position ? TrimRight(text.substr(0, at), " ") : text;
  return stop;
}

bool IsEmpty(const LinkStop& stop) { return stop.name.empty() && !stop.position; }

/// One token of a "data=" block: the number of a field, its type, and its value.
struct DataToken {
  std::string_view kind;  ///< such as "1d" or "2m"
  std::string_view value;
};

std::vector<DataToken> DataTokens(std::string_view data) {
  std::vector<std::string_view> texts;
  SplitFields(data, '!', texts);
  std::vector<DataToken> tokens;
  for (const std::string_view text : texts) {
    const size_t digits = std::min(text.find_first_not_of("0123456789"), text.size());
    if (digits == 0 || digits == text.size()) continue;
    tokens.push_back({text.substr(0, digits + 1), text.substr(digits + 1)});
  }
  return tokens;
}

uint32_t TravelModeOf(std::string_view value) {
  if (value == "0") return kCar;
  if (value == "1") return kBicycle;
  if (value == "2") return kPedestrian;
  return kAnyMode;
}

/// The positions that a "data=" block holds.
struct DataPositions {
  std::vector<CGpsCoordinate> stops;    ///< of stops, in their order
  std::optional<CGpsCoordinate> place;  ///< of the one place that the link shows
};

DataPositions ReadData(std::string_view data, MapLink& link) {
  DataPositions positions;
  const std::vector<DataToken> tokens = DataTokens(data);
  for (size_t i = 0; i < tokens.size(); ++i) {
    const auto [kind, value] = tokens[i];
    const bool hasTwoMore = i + 2 < tokens.size();
    if (kind == "3e") link.travelMode = TravelModeOf(value);
    if (kind == "1b" && value == "1") link.avoidsMotorways = true;
    if (kind == "2b" && value == "1") link.avoidsTolls = true;
    // Longitude stands in front of latitude here, and behind it for a place.
    if (kind == "2m" && value == "2" && hasTwoMore && tokens[i + 1].kind == "1d" &&
        tokens[i + 2].kind == "2d") {
      const std::string text(tokens[i + 2].value);
      if (const auto position = ParseLinkPosition(text + "," + std::string(tokens[i + 1].value)))
        positions.stops.push_back(*position);
    }
    if (kind == "3d" && i + 1 < tokens.size() && tokens[i + 1].kind == "4d" && !positions.place) {
      positions.place =
          ParseLinkPosition(std::string(value) + "," + std::string(tokens[i + 1].value));
    }
  }
  return positions;
}

// The tokens behind a mark, an exclamation mark in front of each, which some senders escape.
std::string TokenText(std::string_view segment, std::string_view mark) {
  segment.remove_prefix(mark.size());
  return segment.find('!') == std::string_view::npos ? LinkText(segment) : std::string(segment);
}

void ReadPath(std::string_view path, bool isPlace, MapLink& link) {
  std::string flags;
  std::string data;
  for (const std::string_view segment : PathSegments(path)) {
    if (segment.starts_with(kDataMark)) {
      data = TokenText(segment, kDataMark);
      break;
    }
    if (segment.starts_with(kAlternativesMark)) {
      flags = TokenText(segment, kAlternativesMark);
      continue;
    }
    // The view.
    if (segment.starts_with('@')) continue;
    LinkStop stop = StopOf(LinkText(segment));
    if (!IsEmpty(stop)) link.stops.push_back(std::move(stop));
  }

  const DataPositions positions = ReadData(flags + "!" + data, link);
  auto next = positions.stops.begin();
  for (LinkStop& stop : link.stops) {
    if (stop.position) continue;
    if (isPlace) {
      stop.position = positions.place;
    } else if (next != positions.stops.end()) {
      stop.position = *next++;
    }
  }
}

void AddStops(std::string_view texts, std::string_view separator, std::vector<LinkStop>& stops) {
  for (;;) {
    const size_t end = texts.find(separator);
    stops.push_back(StopOf(texts.substr(0, end)));
    if (end == std::string_view::npos) return;
    texts.remove_prefix(end + separator.size());
  }
}

uint32_t TravelModeOfWord(std::string_view word) {
  if (word == "driving") return kCar;
  if (word == "bicycling") return kBicycle;
  if (word == "walking") return kPedestrian;
  return kAnyMode;
}

bool HasWord(std::string_view words, std::string_view word) {
  std::vector<std::string_view> fields;
  SplitFields(words, ',', fields);
  return std::find(fields.begin(), fields.end(), word) != fields.end();
}

// The form that programs are asked to make.
void ReadApiQuery(const LinkQuery& query, MapLink& link) {
  link.stops.push_back(StopOf(ValueOf(query, "origin")));
  if (const std::string_view between = ValueOf(query, "waypoints"); !between.empty())
    AddStops(between, "|", link.stops);
  link.stops.push_back(StopOf(ValueOf(query, "destination")));
  link.stops.push_back(StopOf(ValueOf(query, "query")));
  link.travelMode = TravelModeOfWord(ValueOf(query, "travelmode"));
  link.avoidsMotorways = HasWord(ValueOf(query, "avoid"), "highways");
  link.avoidsTolls = HasWord(ValueOf(query, "avoid"), "tolls");
}

bool ParseMillionths(std::string_view text, double& degrees) {
  if (text.find_first_not_of("-0123456789") != std::string_view::npos || text.empty()) return false;
  degrees = static_cast<double>(ParseWhole(text)) / 1e6;
  return true;
}

// Latitude and longitude of one stop after the other. What newer pages write there has another
// form and is passed over.
void ReadGeocode(std::string_view geocode, std::vector<LinkStop>& stops) {
  std::vector<std::string_view> numbers;
  SplitFields(geocode, ',', numbers);
  for (size_t i = 0; i < stops.size() && 2 * i + 1 < numbers.size(); ++i) {
    CGpsCoordinate position;
    if (!ParseMillionths(numbers[2 * i], position.latitude) ||
        !ParseMillionths(numbers[2 * i + 1], position.longitude) || stops[i].position) {
      continue;
    }
    stops[i].position = position;
  }
}

void ReadClassicQuery(const LinkQuery& query, MapLink& link) {
  const std::string_view start = ValueOf(query, "saddr");
  const std::string_view others = ValueOf(query, "daddr");
  if (start.empty() && others.empty()) {
    std::string_view place = ValueOf(query, "q");
    if (place.starts_with("loc:")) place.remove_prefix(4);
    link.stops.push_back(StopOf(place));
  } else {
    // An empty start has its place among the positions, a missing one has none.
    if (query.contains("saddr")) link.stops.push_back(StopOf(start));
    AddStops(others, " to:", link.stops);
  }
  ReadGeocode(ValueOf(query, "geocode"), link.stops);
  const std::string_view mode = ValueOf(query, "dirflg");
  if (mode.find('w') != std::string_view::npos) link.travelMode = kPedestrian;
  if (mode.find('b') != std::string_view::npos) link.travelMode = kBicycle;
  link.avoidsMotorways = mode.find('h') != std::string_view::npos;
  link.avoidsTolls = mode.find('t') != std::string_view::npos;
}

// Groups of a "data=" block say how many tokens stand in them, groups and theirs included.
std::string DataBlock(size_t stops, const LinkOptions& options) {
  std::string flags;
  if (options.avoidsMotorways) flags += "!1b1";
  if (options.avoidsTolls) flags += "!2b1";
  const size_t flagCount = flags.size() / 4;
  if (flagCount > 0) flags = "!2m" + std::to_string(flagCount) + flags;
  const char* mode = "!3e0";
  if (options.travelMode == kBicycle) mode = "!3e1";
  if (options.travelMode == kPedestrian) mode = "!3e2";

  const size_t tokens = stops + (flagCount > 0 ? 1 + flagCount : 0) + 1;
  std::string data = fmt::format("data=!4m{}!4m{}", tokens + 1, tokens);
  for (size_t i = 0; i < stops; ++i) data += "!1m0";
  return data + flags + mode;
}

const CJsonValue* Member(const CJsonValue* value, std::string_view key) {
  return value && value->type == kJsonObject ? value->object.Find(key) : nullptr;
}

std::string TextOf(const CJsonValue* value) {
  return value && value->type == kJsonString ? MendUtf8(value->text) : std::string();
}

std::optional<CGpsCoordinate> PositionOf(const CJsonValue* value) {
  const CJsonValue* const latitude = Member(value, "lat");
  const CJsonValue* const longitude = Member(value, "lng");
  if (!latitude || !longitude || latitude->type != kJsonNumber || longitude->type != kJsonNumber)
    return std::nullopt;
  CGpsCoordinate position;
  position.latitude = latitude->number;
  position.longitude = longitude->number;
  return position;
}

}  // namespace

bool IsGoogleMapsHost(std::string_view host) {
  for (const std::string_view site : {"maps.google.", "www.google.", "google."}) {
    if (host.starts_with(site)) return IsCountryEnding(host.substr(site.size()));
  }
  return false;
}

bool IsShortGoogleLink(std::string_view link) {
  const LinkPieces pieces = SplitLink(link);
  return pieces.host == "maps.app.goo.gl" ||
         (pieces.host == "goo.gl" && pieces.path.starts_with("/maps/"));
}

MapLink ParseGoogleLink(std::string_view text) {
  const LinkPieces pieces = SplitLink(text);
  const LinkQuery query = ParseLinkQuery(pieces.query);
  MapLink link;
  link.language = ValueOf(query, "hl");
  link.isSavedMap = query.contains("msid");
  const size_t directions = pieces.path.find(kDirectionsMark);
  const size_t place = pieces.path.find(kPlaceMark);
  if (directions != std::string_view::npos) {
    ReadPath(pieces.path.substr(directions + kDirectionsMark.size()), false, link);
  } else if (place != std::string_view::npos) {
    ReadPath(pieces.path.substr(place + kPlaceMark.size()), true, link);
  }
  if (ValueOf(query, "api") == "1") {
    ReadApiQuery(query, link);
  } else if (link.stops.empty()) {
    ReadClassicQuery(query, link);
  }
  std::erase_if(link.stops, IsEmpty);
  return link;
}

std::vector<LinkStop> ParseSavedMap(std::string_view script) {
  constexpr std::string_view kCall = "loadVPage(";
  std::vector<LinkStop> stops;
  const size_t call = script.find(kCall);
  if (call == std::string_view::npos) return stops;
  CJsonDocument document;
  // A script that is cut still holds the markers in front of the cut.
  static_cast<void>(document.Parse(script.substr(call + kCall.size())));
  const CJsonValue* const overlays = Member(Member(&document, "ms_map"), "kmlOverlays");
  const CJsonValue* const markers = Member(overlays, "markers");
  if (!markers || markers->type != kJsonArray) return stops;
  for (const auto& marker : markers->array) {
    LinkStop stop{TextOf(Member(marker.get(), "name")),
                  TextOf(Member(marker.get(), "description")),
                  PositionOf(Member(marker.get(), "latlng")),
                  {}};
    if (stop.position) stops.push_back(std::move(stop));
  }
  return stops;
}

std::string GoogleLink(LinkPoints points, const LinkOptions& options, const std::string& site,
                       const std::string& language) {
  std::string link = site + "/maps/dir";
  for (const CGpsNamedPoint* point : points) link += "/" + LinkPosition(*point);
  link += '/';
  if (options.wantsAlternatives) link += "am=t/";
  link += DataBlock(points.size(), options);
  if (!language.empty()) link += "?hl=" + LinkValue(language);
  return link;
}
