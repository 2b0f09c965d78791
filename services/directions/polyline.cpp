#include "services/directions/polyline.h"

#include <array>
#include <cmath>

#include "services/directions/route_reply.h"

namespace {

// Undoes the way in which both kinds of polylines put the sign into the lowest bit.
int64_t WithSign(uint64_t value) {
  const auto half = static_cast<int64_t>(value >> 1);
  return (value & 1) != 0 ? ~half : half;
}

// Adds groups of five bits, low group first, up to the one that says it is the last.
template <typename NextGroup>
bool GatherGroups(NextGroup nextGroup, unsigned mostBits, uint64_t& value) {
  constexpr unsigned kGroupBits = 5;
  constexpr unsigned kMore = 32;
  value = 0;
  unsigned bits = 0;
  unsigned group = kMore;
  while (group >= kMore && bits < mostBits) {
    if (!nextGroup(group)) return false;
    if (bits < 64) value |= static_cast<uint64_t>(group % kMore) << bits;
    bits += kGroupBits;
  }
  return true;
}

// Sums that damaged text makes may leave the range; wrapping around is as good as anything.
int64_t WrappingSum(int64_t first, int64_t second) {
  return static_cast<int64_t>(static_cast<uint64_t>(first) + static_cast<uint64_t>(second));
}

constexpr uint8_t kNoValue = 0xFF;

// The value of each character of the URL-safe Base64 alphabet.
constexpr std::array<uint8_t, 256> MakeValues() {
  constexpr std::string_view kAlphabet =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_";
  std::array<uint8_t, 256> values{};
  values.fill(kNoValue);
  for (size_t i = 0; i < kAlphabet.size(); ++i)
    values[static_cast<unsigned char>(kAlphabet[i])] = static_cast<uint8_t>(i);
  return values;
}
constexpr std::array<uint8_t, 256> kValues = MakeValues();

/// Takes the numbers of a flexible polyline: groups of six bits in the URL-safe Base64 alphabet.
class FlexibleNumbers {
 public:
  explicit FlexibleNumbers(std::string_view text) : m_rest(text) {}

  bool NextUnsigned(uint64_t& value) {
    const auto nextGroup = [this](unsigned& group) {
      if (m_rest.empty()) return false;
      group = kValues[static_cast<unsigned char>(m_rest[0])];
      m_rest.remove_prefix(1);
      return group != kNoValue;
    };
    return GatherGroups(nextGroup, kNoLimit, value);
  }

  bool Next(int64_t& number) {
    uint64_t value = 0;
    if (!NextUnsigned(value)) return false;
    number = WithSign(value);
    return true;
  }

 private:
  static constexpr unsigned kNoLimit = ~0U;
  std::string_view m_rest;
};

}  // namespace

bool PolylineNumbers::Next(int64_t& number) {
  const auto nextGroup = [this](unsigned& group) {
    constexpr unsigned kOffset = 63;
    if (m_rest.empty()) return false;
    const auto byte = static_cast<unsigned char>(m_rest[0]);
    m_rest.remove_prefix(1);
    group = byte - kOffset;
    return byte >= kOffset && group < 64;
  };
  uint64_t value = 0;
  if (!GatherGroups(nextGroup, m_mostBits, value)) return false;
  number = WithSign(value);
  return true;
}

void DecodePolyline(std::string_view text, PolylinePrecision precision, CGpsPointList& points,
                    PointAllowance& allowance) {
  const double scale = precision == PolylinePrecision::kSix ? 1'000'000.0 : 100'000.0;
  PolylineNumbers numbers(text);
  int64_t latitude = 0;
  int64_t longitude = 0;
  int64_t byLatitude = 0;
  int64_t byLongitude = 0;
  while (numbers.Next(byLatitude) && numbers.Next(byLongitude)) {
    latitude = WrappingSum(latitude, byLatitude);
    longitude = WrappingSum(longitude, byLongitude);
    allowance.TakeOrThrow();
    AppendPoint(points, static_cast<double>(latitude) / scale,
                static_cast<double>(longitude) / scale);
  }
}

void DecodeFlexiblePolyline(std::string_view text, CGpsPointList& points,
                            PointAllowance& allowance) {
  constexpr uint64_t kVersion = 1;
  // What the third number of a point is.
  constexpr uint64_t kNothing = 0;
  constexpr uint64_t kAltitude = 2;
  constexpr uint64_t kElevation = 3;

  FlexibleNumbers numbers(text);
  uint64_t version = 0;
  uint64_t header = 0;
  if (!numbers.NextUnsigned(version) || version != kVersion || !numbers.NextUnsigned(header))
    return;
  const double scale = std::pow(10.0, static_cast<double>(header & 15));
  const uint64_t thirdKind = header >> 4 & 7;
  const double thirdScale = std::pow(10.0, static_cast<double>(header >> 7 & 15));

  int64_t latitude = 0;
  int64_t longitude = 0;
  int64_t third = 0;
  int64_t by = 0;
  while (numbers.Next(by)) {
    latitude = WrappingSum(latitude, by);
    if (!numbers.Next(by)) return;
    longitude = WrappingSum(longitude, by);
    double altitude = 0.0;
    if (thirdKind != kNothing) {
      if (!numbers.Next(by)) return;
      third = WrappingSum(third, by);
      if (thirdKind == kAltitude || thirdKind == kElevation)
        altitude = static_cast<double>(third) / thirdScale;
    }
    allowance.TakeOrThrow();
    AppendPoint(points, static_cast<double>(latitude) / scale,
                static_cast<double>(longitude) / scale)
        .altitude = altitude;
  }
}
