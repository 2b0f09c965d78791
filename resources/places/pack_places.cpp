// Packs the towns of places.tsv.gz, unpacked on standard input, into the SQLite file that the
// program searches:
//
//   pack_places TARGET
//
// Rows are numbered by falling population, so that the first rows of any answer are those of the
// largest towns.

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <iostream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "platform/sqlite_database.h"
#include "services/offline/place_words.h"

namespace {

constexpr const char* kSchema =
    "PRAGMA journal_mode = OFF;"
    "PRAGMA synchronous = OFF;"
    "BEGIN;"
    "CREATE TABLE region (id INTEGER PRIMARY KEY, name TEXT, country TEXT, country_code TEXT);"
    "CREATE TABLE place (id INTEGER PRIMARY KEY, name TEXT, spelling TEXT, region INTEGER,"
    "  population INTEGER, latitude INTEGER, longitude INTEGER);"
    // A long word each: the name, the spelling; the region with its country, the country and its
    // code. Then the words of name, spelling and region. The index holds no texts, only words.
    "CREATE VIRTUAL TABLE place_words USING fts5 (whole, words, area, content='',"
    "  prefix='1 2 3', tokenize='unicode61 remove_diacritics 2');"
    "CREATE VIRTUAL TABLE place_box USING rtree (id, south, north, west, east);";

struct Region {
  std::string name;
  std::string country;
  std::string countryCode;
};

struct Place {
  std::string name;
  std::string spelling;  ///< empty where it is the name
  size_t region;
  int64_t population;
  int64_t latitude;  ///< in hundred-thousandths of a degree, as in the file
  int64_t longitude;
};

struct Places {
  std::vector<Region> regions;
  std::vector<Place> places;
};

int64_t ParseField(std::string_view field) {
  int64_t value = 0;
  const char* const end = field.data() + field.size();
  const auto parsed = std::from_chars(field.data(), end, value);
  if (parsed.ec != std::errc() || parsed.ptr != end)
    throw std::runtime_error("no number: " + std::string(field));
  return value;
}

Places ReadPlaces(std::string_view text) {
  Places read;
  std::vector<std::string_view> fields;
  Region region;
  LineSplitter lines(text);
  for (std::string_view line; lines.Next(line);) {
    if (line.starts_with('#')) continue;
    SplitFields(line.substr(line.starts_with('=') || line.starts_with('-') ? 1 : 0), '\t', fields);
    if (line.starts_with('=')) {
      region.countryCode = fields.at(0);
      region.country = fields.at(1);
    } else if (line.starts_with('-')) {
      region.name = fields.at(0);
      read.regions.push_back(region);
    } else {
      read.places.push_back({std::string(fields[0]), std::string(fields.at(1)), read.regions.size(),
                             ParseField(fields.at(2)), ParseField(fields.at(3)),
                             ParseField(fields.at(4))});
    }
  }
  std::ranges::stable_sort(read.places, std::ranges::greater(), &Place::population);
  return read;
}

void Check(int result, int wanted) {
  if (result != wanted) throw std::runtime_error("SQLite error " + std::to_string(result));
}

void Run(SqliteStatement& statement) {
  Check(statement.Step(), 101);  // SQLITE_DONE
  statement.Reset();
}

void Write(const Places& read, SqliteDatabase& database) {
  Check(database.Execute(kSchema), 0);
  SqliteStatement addRegion(database, "INSERT INTO region VALUES (?, ?, ?, ?)");
  for (size_t i = 0; i < read.regions.size(); ++i) {
    addRegion.BindNumber(1, static_cast<int64_t>(i) + 1);
    addRegion.BindText(2, read.regions[i].name);
    addRegion.BindText(3, read.regions[i].country);
    addRegion.BindText(4, read.regions[i].countryCode);
    Run(addRegion);
  }
  SqliteStatement addPlace(database, "INSERT INTO place VALUES (?, ?, ?, ?, ?, ?, ?)");
  SqliteStatement addWords(
      database, "INSERT INTO place_words (rowid, whole, words, area) VALUES (?, ?, ?, ?)");
  SqliteStatement addBox(database, "INSERT INTO place_box VALUES (?, ?, ?, ?, ?)");
  int64_t id = 0;
  for (const Place& place : read.places) {
    const Region& region = read.regions.at(place.region - 1);
    const std::string whole = LongWord(place.name) + " " + LongWord(place.spelling);
    const std::string words = place.name + " " + place.spelling;
    const std::string area = LongWord(region.name + " " + region.country) + " " +
                             LongWord(region.country) + " " + region.countryCode + " " +
                             region.name;
    ++id;
    addPlace.BindNumber(1, id);
    addPlace.BindText(2, place.name);
    addPlace.BindText(3, place.spelling);
    addPlace.BindNumber(4, static_cast<int64_t>(place.region));
    addPlace.BindNumber(5, place.population);
    addPlace.BindNumber(6, place.latitude);
    addPlace.BindNumber(7, place.longitude);
    Run(addPlace);
    addWords.BindNumber(1, id);
    addWords.BindText(2, whole);
    addWords.BindText(3, words);
    addWords.BindText(4, area);
    Run(addWords);
    addBox.BindNumber(1, id);
    for (const int parameter : {2, 3})
      addBox.BindReal(parameter, static_cast<double>(place.latitude) / 1e5);
    for (const int parameter : {4, 5})
      addBox.BindReal(parameter, static_cast<double>(place.longitude) / 1e5);
    Run(addBox);
  }
  Check(database.Execute("INSERT INTO place_words (place_words) VALUES ('optimize'); COMMIT;"
                         "VACUUM;"),
        0);
}

}  // namespace

int main(int argumentCount, char** arguments) {
  if (argumentCount != 2) return 2;
  try {
    const std::string text{std::istreambuf_iterator<char>(std::cin), {}};
    std::remove(arguments[1]);
    SqliteDatabase database;
    Check(database.Open(arguments[1], SqliteDatabase::Mode::kCreate), 0);
    Write(ReadPlaces(text), database);
  } catch (const std::exception& error) {
    std::cerr << "pack_places: " << error.what() << '\n';
    std::remove(arguments[1]);
    return 1;
  }
}
