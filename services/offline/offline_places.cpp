#include "services/offline/offline_places.h"

#include <algorithm>
#include <cmath>

#include <sqlite3.h>

#include "base/text.h"
#include "model/sphere_vector.h"
#include "platform/path_text.h"
#include "platform/program_data.h"
#include "services/offline/place_words.h"

namespace {

// What is longer is no address.
constexpr size_t kLongestText = 1000;
constexpr size_t kMostWords = 12;
constexpr size_t kMostParts = 8;

bool HasDigit(std::string_view word) {
  return word.find_first_of("0123456789") != std::string_view::npos;
}

// The words of one part of an address, without numbers of houses and postal codes.
std::vector<std::string_view> Words(std::string_view part) {
  std::vector<std::string_view> words;
  SplitFields(part, ' ', words);
  std::erase_if(words, [](std::string_view word) { return word.empty() || HasDigit(word); });
  if (words.size() > kMostWords) words.resize(kMostWords);
  return words;
}

std::string Joined(const std::vector<std::string_view>& words, size_t first, size_t count) {
  std::string text;
  for (size_t i = first; i < first + count; ++i) {
    if (!text.empty()) text += ' ';
    text += words[i];
  }
  return text;
}

/// The parts of an address between its commas, without empty ones.
std::vector<std::vector<std::string_view>> Parts(std::string_view text) {
  std::vector<std::string_view> fields;
  SplitFields(text, ',', fields);
  std::vector<std::vector<std::string_view>> parts;
  for (const std::string_view field : fields) {
    std::vector<std::string_view> words = Words(field);
    if (!words.empty() && parts.size() < kMostParts) parts.push_back(std::move(words));
  }
  return parts;
}

// A phrase of the index's query language.
std::string Phrase(std::string_view words) {
  std::string phrase = "\"";
  for (const char c : words) phrase += c == '"' ? std::string("\"\"") : std::string(1, c);
  return phrase + '"';
}

// A region or country, or the beginning of one.
std::string Area(std::string_view words) { return "{area} : " + Phrase(LongWord(words)) + "*"; }

// The arc on the earth that a chord of so many metres stands for.
double ArcDegrees(uint32_t chord) {
  const double half = std::min(chord / (2.0 * kEarthRadius), 1.0);
  return 2.0 * std::asin(half) * kDegreesPerRadian;
}

// How far to the east and west places can lie that are not farther away than so many degrees.
double LongitudeDegrees(double degrees, double latitude) {
  if (std::abs(latitude) + degrees >= 90.0) return 180.0;
  return kDegreesPerRadian *
         std::asin(std::sin(degrees / kDegreesPerRadian) / std::cos(latitude / kDegreesPerRadian));
}

}  // namespace

std::string OfflinePlace::Label() const {
  std::string label = name;
  if (!region.empty() && region != name) label += ", " + region;
  return label + ", " + country;
}

CGpsNamedPoint OfflinePlace::ToPoint() const {
  CGpsNamedPoint point;
  point.latitude = position.latitude;
  point.longitude = position.longitude;
  point.name = Label();
  return point;
}

OfflinePlaces::OfflinePlaces() {
  const WideString path = ProgramDataFile("places.db");
  if (path.empty()) return;
  if (m_database.Open(PathBytes(path), SqliteDatabase::Mode::kReadOnly) != SQLITE_OK)
    m_database.Close();
}

void OfflinePlaces::AddMatches(const std::string& match, size_t limit, std::vector<int64_t>& ids) {
  if (ids.size() >= limit) return;
  SqliteStatement query(
      m_database, "SELECT rowid FROM place_words WHERE place_words MATCH ? ORDER BY rowid LIMIT ?");
  query.BindText(1, match);
  // Those that are there already come again.
  query.BindNumber(2, static_cast<int64_t>(limit + ids.size()));
  while (ids.size() < limit && query.Step() == SQLITE_ROW) {
    const int64_t id = query.Number(0);
    if (std::find(ids.begin(), ids.end(), id) == ids.end()) ids.push_back(id);
  }
}

void OfflinePlaces::AddNamed(std::string_view name, std::string_view area, bool isWhole,
                             size_t limit, std::vector<int64_t>& ids) {
  const std::string behind = area.empty() ? "" : " AND " + std::string(area);
  const std::string whole = "{whole} : " + Phrase(LongWord(name));
  AddMatches(whole + behind, limit, ids);
  if (isWhole) return;
  AddMatches(whole + "*" + behind, limit, ids);
  std::string words;
  for (const std::string_view word : Words(name)) {
    if (!words.empty()) words += " AND ";
    words += "{words} : " + Phrase(word) + "*";
  }
  AddMatches(words + behind, limit, ids);
}

std::vector<OfflinePlace> OfflinePlaces::Find(std::string_view text, size_t limit) {
  std::vector<int64_t> ids;
  const auto parts = Parts(text);
  if (!IsOpen() || parts.empty() || text.size() > kLongestText) return {};

  // The area out of all parts behind one.
  const auto areaBehind = [&parts](size_t part) {
    std::string area;
    for (size_t i = part + 1; i < parts.size(); ++i)
      area += (area.empty() ? "" : " AND ") + Area(Joined(parts[i], 0, parts[i].size()));
    return area;
  };
  const auto whole = [&parts](size_t part) { return Joined(parts[part], 0, parts[part].size()); };

  AddNamed(whole(0), areaBehind(0), false, limit, ids);
  // A country or region without a comma in front of it.
  const std::vector<std::string_view>& words = parts.front();
  for (size_t count = words.size() - 1; ids.empty() && parts.size() == 1 && count > 0; --count) {
    AddNamed(Joined(words, 0, count), Area(Joined(words, count, words.size() - count)), true, limit,
             ids);
  }
  // A street in front of the town, then an area that the index knows under another name.
  for (size_t part = 1; ids.empty() && part < parts.size(); ++part)
    AddNamed(whole(part), areaBehind(part), true, limit, ids);
  for (size_t part = 0; ids.empty() && parts.size() > 1 && part < parts.size(); ++part)
    AddNamed(whole(part), {}, true, limit, ids);
  // A street without a comma behind it.
  for (size_t first = 1; ids.empty() && parts.size() == 1 && first < words.size(); ++first)
    AddNamed(Joined(words, first, words.size() - first), {}, true, limit, ids);
  return PlacesOf(ids);
}

std::vector<OfflinePlaces::Neighbour> OfflinePlaces::Within(const CGpsCoordinate& position,
                                                            double degrees,
                                                            std::string_view words) {
  std::string text =
      "SELECT place.id, place.latitude, place.longitude FROM place_box"
      " JOIN place ON place.id = place_box.id"
      " WHERE south <= ? AND north >= ? AND west <= ? AND east >= ?";
  if (!words.empty())
    text += " AND place.id IN (SELECT rowid FROM place_words WHERE place_words MATCH ?)";
  const std::string match = "{whole} : " + Phrase(LongWord(words)) + "*";
  const SphereVector here(position);
  const double reach = LongitudeDegrees(degrees, position.latitude);

  std::vector<Neighbour> neighbours;
  // Beyond the date line longitudes go on at the other end.
  for (const double turn : {0.0, -360.0, 360.0}) {
    const double west = position.longitude - reach + turn;
    const double east = position.longitude + reach + turn;
    if (west > 180.0 || east < -180.0) continue;
    SqliteStatement query(m_database, text);
    query.BindReal(1, position.latitude + degrees);
    query.BindReal(2, position.latitude - degrees);
    query.BindReal(3, east);
    query.BindReal(4, west);
    if (!words.empty()) query.BindText(5, match);
    while (query.Step() == SQLITE_ROW) {
      CGpsCoordinate there;
      there.latitude = static_cast<double>(query.Number(1)) / 1e5;
      there.longitude = static_cast<double>(query.Number(2)) / 1e5;
      neighbours.push_back({query.Number(0), here.ChordTo(SphereVector(there))});
    }
  }
  std::ranges::sort(neighbours, [](const Neighbour& a, const Neighbour& b) {
    return a.distance != b.distance ? a.distance < b.distance : a.id < b.id;
  });
  const auto again =
      std::unique(neighbours.begin(), neighbours.end(),
                  [](const Neighbour& a, const Neighbour& b) { return a.id == b.id; });
  neighbours.erase(again, neighbours.end());
  return neighbours;
}

std::vector<OfflinePlace> OfflinePlaces::FindNear(std::string_view text,
                                                  const CGpsCoordinate& position, uint32_t radius,
                                                  size_t limit) {
  if (!IsOpen() || text.size() > kLongestText) return {};
  const std::vector<std::string_view> words = Words(text);
  if (words.empty() && !Trim(text, " ").empty()) return {};
  std::vector<int64_t> ids;
  for (const Neighbour& neighbour :
       Within(position, ArcDegrees(radius), Joined(words, 0, words.size()))) {
    if (neighbour.distance > radius || ids.size() == limit) break;
    ids.push_back(neighbour.id);
  }
  return PlacesOf(ids);
}

std::optional<OfflinePlace> OfflinePlaces::Nearest(const CGpsCoordinate& position) {
  const bool isOnEarth =
      std::abs(position.latitude) <= 90.0 && std::abs(position.longitude) <= 180.0;
  if (!IsOpen() || !isOnEarth) return std::nullopt;
  for (double degrees = 0.1;;) {
    const std::vector<Neighbour> found = Within(position, degrees, {});
    const bool holdsAll = degrees >= 180.0;
    if (found.empty()) {
      if (holdsAll) return std::nullopt;
      degrees *= 1.5;
      continue;
    }
    // In the corners of the box lie places that are farther away than some outside.
    const double needed = ArcDegrees(found.front().distance + 1);
    if (holdsAll || needed <= degrees) return Place(found.front().id);
    degrees = needed;
  }
}

std::optional<OfflinePlace> OfflinePlaces::Place(int64_t id) {
  SqliteStatement query(
      m_database,
      "SELECT place.name, region.name, country, country_code, population, latitude, longitude"
      " FROM place JOIN region ON region.id = place.region WHERE place.id = ?");
  query.BindNumber(1, id);
  if (query.Step() != SQLITE_ROW) return std::nullopt;
  OfflinePlace place;
  place.name = query.Text(0);
  place.region = query.Text(1);
  place.country = query.Text(2);
  place.countryCode = query.Text(3);
  place.population = static_cast<uint64_t>(query.Number(4));
  place.position.latitude = static_cast<double>(query.Number(5)) / 1e5;
  place.position.longitude = static_cast<double>(query.Number(6)) / 1e5;
  return place;
}

std::vector<OfflinePlace> OfflinePlaces::PlacesOf(const std::vector<int64_t>& ids) {
  std::vector<OfflinePlace> places;
  for (const int64_t id : ids) {
    if (std::optional<OfflinePlace> place = Place(id)) places.push_back(*std::move(place));
  }
  return places;
}
