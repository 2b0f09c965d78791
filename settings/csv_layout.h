#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/locale.h"
#include "settings/storage.h"

/// The preset that leaves all fields to the user; the ones before it fill them.
inline constexpr uint32_t kManualCsvPreset = 4;

/// Most characters of a separator.
inline constexpr size_t kLongestCsvSeparator = 4;

/// Most columns that are written, and the highest column of a layout given as text. Windows offer
/// fewer.
inline constexpr uint32_t kMostCsvColumns = 1000;

/// Which column of a CSV file holds what. Columns count from 1, and 0 stands for none; separators
/// are 8-bit text of up to four characters. A new layout is the preset "Default".
class CCsvLayout {
 public:
  uint32_t preset = 0;
  uint32_t latitudeColumn = 2;
  uint32_t longitudeColumn = 1;
  uint32_t elevationColumn = 0;
  uint32_t nameColumn = 3;
  uint32_t commentColumn = 0;
  bool useLocale = false;  ///< take the separators from the user's regional settings
  std::string decimalSeparator = ".";
  std::string columnSeparator = ",";  ///< on reading, each of its characters separates

  /// Latitude, longitude, elevation, name, comment.
  std::array<uint32_t, 5> Columns() const {
    return {latitudeColumn, longitudeColumn, elevationColumn, nameColumn, commentColumn};
  }

  bool operator==(const CCsvLayout&) const = default;
};

/// A named layout.
struct CsvPreset {
  uint32_t textId;        ///< its label
  std::string_view name;  ///< the same in English, for command lines
  CCsvLayout layout;
};

/// All presets in their order; the last one is "Manual", whose layout has no meaning.
std::span<const CsvPreset> CsvPresets();

/// The stored form, 33 bytes; separators are cut to four characters.
std::string EncodeCsvLayout(const CCsvLayout& layout);

/// The layout of 33 bytes; none for any other number of them.
std::optional<CCsvLayout> DecodeCsvLayout(std::string_view bytes);

/// The separators of a layout: its own, or with `useLocale` those of `locale`, cut to four 8-bit
/// characters. A mark that 8 bits cannot hold becomes "." or ",".
NumberSeparators CsvSeparators(const CCsvLayout& layout,
                               const NumberSeparators& locale = LocaleSeparators());

/// Reading and writing have a layout each.
enum class CsvUse { kRead, kWrite };

/// The stored layout; the preset "Default" when there is none, or none that can be read.
CCsvLayout LoadCsvLayout(const storage::Storage& storage, CsvUse use);

/// Throws storage::Exception.
void StoreCsvLayout(storage::Storage& storage, CsvUse use, const CCsvLayout& layout);

/// Stores both layouts or, after a storage::Exception, neither; one that is not given stays as it
/// is.
void StoreCsvLayouts(storage::Storage& storage, const std::optional<CCsvLayout>& read,
                     const std::optional<CCsvLayout>& write);
