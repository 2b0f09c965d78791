#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/point.h"
#include "platform/sqlite_database.h"

/// A town out of the file that comes with the program.
struct OfflinePlace {
  std::string name;
  std::string region;   ///< may be empty
  std::string country;  ///< in English
  std::string countryCode;
  uint64_t population = 0;  ///< 0: not known
  CGpsCoordinate position;

  /// Name, region and country with commas between them.
  std::string Label() const;
  /// The position under its label.
  CGpsNamedPoint ToPoint() const;
};

/// The towns of the world from 1,000 inhabitants on, on this machine. An object is used by one
/// thread at a time.
class OfflinePlaces {
 public:
  /// Opens the file; without it, or with one that is damaged, nothing is ever found.
  OfflinePlaces();

  bool IsOpen() const { return m_database.IsOpen(); }

  /// Towns that a text may mean, the best first: those with exactly this name, then those whose
  /// name begins like it, then those with all its words; among equals the larger. Accents and case
  /// don't count. Behind a comma may stand the region or the country; of an address, in which the
  /// town is one of several parts, the town is found.
  std::vector<OfflinePlace> Find(std::string_view text, size_t limit);

  /// Towns within `radius` metres of a position whose name begins like `text`, which may be empty;
  /// the nearest first.
  std::vector<OfflinePlace> FindNear(std::string_view text, const CGpsCoordinate& position,
                                     uint32_t radius, size_t limit);

  /// The town nearest to a position, wherever it is.
  std::optional<OfflinePlace> Nearest(const CGpsCoordinate& position);

 private:
  struct Neighbour {
    int64_t id;
    uint32_t distance;  ///< metres
  };

  std::vector<Neighbour> Within(const CGpsCoordinate& position, double degrees,
                                std::string_view words);
  void AddMatches(const std::string& match, size_t limit, std::vector<int64_t>& ids);
  void AddNamed(std::string_view name, std::string_view area, bool isWhole, size_t limit,
                std::vector<int64_t>& ids);
  std::optional<OfflinePlace> Place(int64_t id);
  std::vector<OfflinePlace> PlacesOf(const std::vector<int64_t>& ids);

  SqliteDatabase m_database;
};
