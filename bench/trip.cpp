#include "bench/trip.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <string>
#include <string_view>

namespace {

constexpr double kTurn = 6.283185307179586;

struct City {
  double latitude;
  double longitude;
};

constexpr City kCities[] = {
    {48.85661, 2.35222},   // Paris
    {50.85034, 4.35171},   // Bruxelles
    {52.37022, 4.89517},   // Amsterdam
    {50.93753, 6.96028},   // Köln
    {53.55108, 9.99368},   // Hamburg
    {55.67610, 12.56834},  // København
    {59.32932, 18.06858},  // Stockholm
    {60.16986, 24.93838},  // Helsinki
    {52.22968, 21.01223},  // Warszawa
    {50.07554, 14.43780},  // Praha
    {48.20817, 16.37382},  // Wien
    {47.49791, 19.04023},  // Budapest
    {45.81501, 15.98192},  // Zagreb
    {41.90278, 12.49637},  // Roma
    {45.46420, 9.18998},   // Milano
    {43.29648, 5.36978},   // Marseille
    {41.38506, 2.17340},   // Barcelona
    {40.41678, -3.70379},  // Madrid
    {38.72225, -9.13934},  // Lisboa
    {43.26301, -2.93499},  // Bilbao
    {44.83779, -0.57918},  // Bordeaux
    {51.50735, -0.12776},  // London
    {53.34981, -6.26031},  // Dublin
    {55.95325, -3.18827},  // Edinburgh
};

// One word in nine has a letter beyond ASCII, all of them below U+0100.
constexpr std::u16string_view kWords[] = {
    u"Market", u"Square",  u"Station", u"North",  u"Garden", u"Bridge",    u"Harbour", u"Café",
    u"Rue",    u"de",      u"la",      u"Gare",   u"Place",  u"Nationale", u"Moulin",  u"Château",
    u"Haupt",  u"Bahnhof", u"Markt",   u"Wald",   u"Berg",   u"See",       u"Kirche",  u"Straße",
    u"Plaza",  u"Mayor",   u"Puente",  u"Camino", u"Norte",  u"Sierra",    u"Playa",   u"Málaga",
    u"Via",    u"Roma",    u"Ponte",   u"Torre",  u"Porto",  u"Campo",     u"Villa",   u"Città",
    u"Dorp",   u"Kerk",    u"Haven",   u"Molen",  u"Brug",   u"Plein",     u"Weg",     u"Zuidoost",
    u"Strand", u"Torget",  u"Hamn",    u"Skog",   u"Fjell",  u"Vik",       u"Bro",     u"Malmö",
    u"Exit",   u"A4",      u"E19",     u"N7",     u"Km",     u"Motel",     u"Garage",  u"Köln",
};

void AppendUtf8(std::string& text, char16_t letter) {
  if (letter < 0x80) {
    text.push_back(static_cast<char>(letter));
  } else {
    text.push_back(static_cast<char>(0xC0 | letter >> 6));
    text.push_back(static_cast<char>(0x80 | (letter & 0x3F)));
  }
}

// Draws that come out the same everywhere: the library's distributions may differ.
class Dice {
 public:
  explicit Dice(uint64_t seed) : m_generator(seed) {}

  size_t Below(size_t bound) { return static_cast<size_t>(m_generator() % bound); }
  /// From 0 up to, not including, 1.
  double Fraction() { return static_cast<double>(m_generator() >> 11) * 0x1p-53; }

 private:
  std::mt19937_64 m_generator;
};

// Words with blanks between them, cut at `length` characters.
std::string MakeWords(Dice& dice, size_t length) {
  std::string text;
  for (size_t written = 0; written < length;) {
    if (written > 0 && written + 1 < length) {
      text.push_back(' ');
      ++written;
    }
    for (const char16_t letter : kWords[dice.Below(std::size(kWords))]) {
      if (written == length) break;
      AppendUtf8(text, letter);
      ++written;
    }
  }
  return text;
}

}  // namespace

CGpsRoute MakeTrip(const TripOptions& options) {
  Dice dice(options.seed);
  CGpsRoute trip;
  trip.name = "Trip of " + std::to_string(options.points) + " points";

  // Legs of up to 2000 points: the way bends to one side and every point lies a little off it.
  constexpr size_t kLongestLeg = 2000;
  size_t city = dice.Below(std::size(kCities));
  while (trip.Count() < options.points) {
    const City from = kCities[city];
    city = (city + 1 + dice.Below(std::size(kCities) - 1)) % std::size(kCities);
    const City to = kCities[city];
    const size_t steps = std::min(kLongestLeg, options.points - trip.Count());
    const double bend = (dice.Fraction() - 0.5) * 0.8;
    const double height = 100.0 + 1500.0 * dice.Fraction();

    for (size_t i = 0; i < steps; ++i) {
      const double way = static_cast<double>(i) / kLongestLeg;
      const double aside = bend * std::sin(kTurn / 2 * way);
      CGpsPoint& point = trip.points.emplace_back();
      point.latitude = from.latitude + (to.latitude - from.latitude) * way + aside +
                       (dice.Fraction() - 0.5) * 0.002;
      point.longitude = from.longitude + (to.longitude - from.longitude) * way - aside +
                        (dice.Fraction() - 0.5) * 0.002;
      const size_t range = options.longestName - options.shortestName + 1;
      point.name = MakeWords(dice, options.shortestName + dice.Below(range));
      if (options.altitude)
        point.altitude = std::round(height * std::sin(kTurn / 2 * way) * 10) / 10;
      if (options.comment) point.comment = MakeWords(dice, 20 + dice.Below(40));
    }
  }
  return trip;
}
