// Picks the largest towns of places.tsv, unpacked on standard input, for the map page, and packs
// them on standard output as src/towns.ts reads them.

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"

namespace {

/// Enough for a name every few centimetres at any zoom; more would make the page slow to load.
constexpr size_t kTowns = 12000;
constexpr int64_t kUnitsPerDegree = 512;
constexpr int64_t kFileUnitsPerDegree = 100000;

struct Town {
  std::string_view name;
  int64_t population;
  int64_t latitude;  ///< in the units of the page
  int64_t longitude;
};

int64_t ParseWhole(std::string_view field) {
  int64_t value = 0;
  const char* const end = field.data() + field.size();
  if (std::from_chars(field.data(), end, value).ptr != end)
    throw std::runtime_error("no number: " + std::string(field));
  return value;
}

int64_t PageUnits(std::string_view field) {
  return ParseWhole(field) * kUnitsPerDegree / kFileUnitsPerDegree;
}

std::vector<Town> ReadTowns(std::string_view text) {
  std::vector<Town> towns;
  std::vector<std::string_view> fields;
  LineSplitter lines(text);
  for (std::string_view line; lines.Next(line);) {
    if (line.starts_with('#') || line.starts_with('=') || line.starts_with('-')) continue;
    SplitFields(line, '\t', fields);
    towns.push_back(
        {fields.at(0), ParseWhole(fields.at(2)), PageUnits(fields.at(3)), PageUnits(fields.at(4))});
  }
  std::ranges::stable_sort(towns, std::ranges::greater(), &Town::population);
  if (towns.size() > kTowns) towns.resize(kTowns);
  return towns;
}

// Seven bits a byte, the lowest first.
void PutWhole(std::string& bytes, uint64_t value) {
  for (; value > 127; value >>= 7) bytes.push_back(static_cast<char>((value & 127) | 128));
  bytes.push_back(static_cast<char>(value));
}

// The sign is the lowest bit.
void PutSigned(std::string& bytes, int64_t value) {
  PutWhole(bytes,
           value < 0 ? static_cast<uint64_t>(-value) * 2 - 1 : static_cast<uint64_t>(value) * 2);
}

std::string PackTowns(const std::vector<Town>& towns) {
  std::string bytes;
  PutWhole(bytes, towns.size());
  for (const Town& town : towns) {
    PutWhole(bytes, town.name.size());
    bytes.append(town.name);
    PutSigned(bytes, town.longitude);
    PutSigned(bytes, town.latitude);
    PutWhole(bytes, static_cast<uint64_t>(town.population / 1000));
  }
  return bytes;
}

}  // namespace

int main() try {
  const std::string text(std::istreambuf_iterator<char>(std::cin), {});
  const std::string bytes = PackTowns(ReadTowns(text));
  std::cout.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush();
  return std::cout ? 0 : 1;
} catch (const std::exception& failure) {
  std::fprintf(stderr, "pack_towns: %s\n", failure.what());
  return 1;
}
