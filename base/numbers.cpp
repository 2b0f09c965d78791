#include "base/numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

#include <fmt/format.h>

namespace {

bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

std::string_view WithoutLeadingSpace(std::string_view text) {
  size_t start = 0;
  while (start < text.size() && IsSpace(text[start])) ++start;
  return text.substr(start);
}

bool HasHexMark(std::string_view text) {
  return text.size() >= 2 && text[0] == '0' && text[1] == 'x';
}

// Sign and digits of a whole number, clamped to 64 bits.
struct Magnitude {
  bool negative = false;
  uint64_t value = 0;
};

Magnitude ParseMagnitude(std::string_view text) {
  int base = 10;
  if (HasHexMark(text)) {
    text.remove_prefix(2);
    base = 16;
  }
  text = WithoutLeadingSpace(text);
  Magnitude result;
  if (!text.empty() && (text[0] == '-' || text[0] == '+')) {
    result.negative = text[0] == '-';
    text.remove_prefix(1);
  }
  // A stream that reads hexadecimal takes a prefix of its own too.
  if (base == 16 && text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X'))
    text.remove_prefix(2);
  const auto parsed = std::from_chars(text.data(), text.data() + text.size(), result.value, base);
  if (parsed.ec == std::errc::result_out_of_range)
    result.value = std::numeric_limits<uint64_t>::max();
  return result;
}

template <typename Int>
Int Clamped(const Magnitude& magnitude) {
  constexpr auto kLargest = static_cast<uint64_t>(std::numeric_limits<Int>::max());
  if (!magnitude.negative)
    return static_cast<Int>(magnitude.value > kLargest ? kLargest : magnitude.value);
  if (magnitude.value > kLargest) return std::numeric_limits<Int>::min();
  return static_cast<Int>(-static_cast<Int>(magnitude.value));
}

// Numbers are ASCII: what lies outside ends them.
std::string AsciiPrefix(std::u16string_view text) {
  std::string ascii;
  for (const char16_t unit : text) {
    if (unit > 0x7F) break;
    ascii.push_back(static_cast<char>(unit));
  }
  return ascii;
}

// Whether a number that does not fit a double is too large rather than too small: whether its first
// digit that counts stands, with the exponent, in front of the decimal point.
bool IsTooLarge(std::string_view number) {
  const size_t mark = std::min(number.find_first_of("eE"), number.size());
  const std::string_view digits = number.substr(0, mark);
  const auto point = static_cast<int64_t>(std::min(digits.find('.'), digits.size()));
  const auto first = static_cast<int64_t>(digits.find_first_of("123456789"));
  const int64_t exponent =
      mark < number.size() ? Clamped<int32_t>(ParseMagnitude(number.substr(mark + 1))) : 0;
  return point - first + exponent > 0;
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Reads digits on from `text`, and returns where they end, at the latest at `end`. What is too
// large for `digits` wraps.
const char* TakeDigits(const char* text, const char* end, uint64_t& digits) {
  for (; text != end && IsDigit(*text); ++text)
    digits = digits * 10 + static_cast<uint64_t>(*text - '0');
  return text;
}

// All exact. Not inside the functions, which would put them on the stack anew in every call.
constexpr double kPowersOfTen[] = {1,   1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                   1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

// Reads the numbers that files are full of: up to 15 digits, perhaps with a point among them. These
// digits and the power of ten below them are exact doubles, and so their quotient is what correct
// rounding gives. False for all else. The end may be null for text that ends with a zero byte.
bool ParseShortDecimal(const char* const start, const char* const end, double& value) {
  constexpr std::ptrdiff_t kMostDigits = 15;
  uint64_t digits = 0;
  const char* position = TakeDigits(start, end, digits);
  std::ptrdiff_t count = position - start;
  std::ptrdiff_t decimals = 0;
  if (count == 0) return false;
  if (position != end && *position == '.') {
    const char* const point = position++;
    position = TakeDigits(position, end, digits);
    decimals = position - point - 1;
    count += decimals;
  }
  if (count > kMostDigits) return false;
  if (position != end && (*position == 'e' || *position == 'E')) return false;
  value = static_cast<double>(static_cast<int64_t>(digits)) / kPowersOfTen[decimals];
  return true;
}

// Rounds |value| × 10^decimals to a whole number, exactly and with ties to even, for products
// below 2^52: there the error of the product is itself a double, which the fused operation gives.
bool ScaleExactly(double magnitude, int decimals, uint64_t& scaled) {
  constexpr double kLimit = 0x1p52;
  constexpr double kLargestRelativeError = 0x1p-53;
  if (decimals < 0 || decimals > 9) return false;
  const double power = kPowersOfTen[decimals];
  const double product = magnitude * power;
  if (!(product < kLimit)) return false;
  const auto whole = static_cast<int64_t>(product);
  const double excess = product - static_cast<double>(whole) - 0.5;
  bool roundsUp = excess > 0.0;
  // Only so near to a tie can the product's error turn the decision.
  if (std::abs(excess) <= product * kLargestRelativeError) {
    const double error = std::fma(magnitude, power, -product);
    const bool isTie = excess == 0.0 && error == 0.0;
    roundsUp = isTie ? (whole & 1) != 0 : excess > -error;
  }
  scaled = static_cast<uint64_t>(whole) + (roundsUp ? 1 : 0);
  return true;
}

// The digits of 0 to 99, two each.
constexpr auto kDigitPairs = [] {
  std::array<char, 200> pairs{};
  for (size_t i = 0; i < 100; ++i) {
    pairs[2 * i] = static_cast<char>('0' + i / 10);
    pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
  }
  return pairs;
}();

char* PrependDigit(char* start, uint64_t& value) {
  *--start = static_cast<char>('0' + value % 10);
  value /= 10;
  return start;
}

char* PrependPair(char* start, uint64_t& value) {
  start -= 2;
  std::memcpy(start, &kDigitPairs[2 * (value % 100)], 2);
  value /= 100;
  return start;
}

// All digits of `value` in front of `start`; "0" for 0.
char* PrependWhole(char* start, uint64_t value) {
  while (value >= 100) start = PrependPair(start, value);
  return value >= 10 ? PrependPair(start, value) : PrependDigit(start, value);
}

}  // namespace

int32_t ParseWhole(std::string_view text) { return Clamped<int32_t>(ParseMagnitude(text)); }

int32_t ParseWhole(std::u16string_view text) { return ParseWhole(AsciiPrefix(text)); }

int64_t ParseWhole64(std::string_view text) { return Clamped<int64_t>(ParseMagnitude(text)); }

uint64_t ParseId(std::string_view text) {
  const Magnitude magnitude = ParseMagnitude(text);
  return magnitude.negative ? 0 - magnitude.value : magnitude.value;
}

bool TryParseReal(std::string_view text, double& value) {
  if (HasHexMark(text)) text.remove_prefix(2);
  text = WithoutLeadingSpace(text);
  bool negative = false;
  if (!text.empty() && (text[0] == '-' || text[0] == '+')) {
    negative = text[0] == '-';
    text.remove_prefix(1);
  }
  // Streams know neither "inf" nor "nan", and no second sign.
  if (text.empty() || !(IsDigit(text[0]) || text[0] == '.')) return false;

  double magnitude = 0.0;
  if (ParseShortDecimal(text.data(), text.data() + text.size(), magnitude)) {
    value = negative ? -magnitude : magnitude;
    return true;
  }
  const auto parsed = std::from_chars(text.data(), text.data() + text.size(), magnitude);
  if (parsed.ec == std::errc::invalid_argument) return false;
  if (parsed.ec == std::errc::result_out_of_range) {
    const std::string_view number(text.data(), static_cast<size_t>(parsed.ptr - text.data()));
    magnitude = IsTooLarge(number) ? std::numeric_limits<double>::max() : 0.0;
  }
  value = negative ? -magnitude : magnitude;
  return true;
}

double ParseReal(std::string_view text) {
  double value = 0.0;
  TryParseReal(text, value);
  return value;
}

// Measures only text that needs it: Expat has just put the bytes of an attribute in their place,
// one by one, and reading many of them at once has to wait for that.
double ParseReal(const char* text) {
  double magnitude = 0.0;
  const bool negative = *text == '-';
  const char* const digits = text + (negative ? 1 : 0);
  const bool isHexMarked = text[0] == '0' && text[1] == 'x';
  if (isHexMarked || !ParseShortDecimal(digits, nullptr, magnitude))
    return ParseReal(std::string_view(text));
  return negative ? -magnitude : magnitude;
}

double ParseReal(std::u16string_view text) { return ParseReal(AsciiPrefix(text)); }

int32_t TruncateToInt32(double value) {
  if (value > -2147483649.0 && value < 2147483648.0) return static_cast<int32_t>(value);
  return std::numeric_limits<int32_t>::min();
}

uint32_t TruncateToUint32(double value) {
  return value > -1.0 && value < 4294967296.0 ? static_cast<uint32_t>(value) : 0;
}

int32_t ToFixedPoint(double degrees) {
  return TruncateToInt32(std::floor(degrees * 100000.0) + 0.5);
}

std::string_view FixedText(NumberRoom& room, double value, int decimals) {
  uint64_t scaled = 0;
  if (!std::isfinite(value)) {
    room.longer = std::signbit(value) ? "-" : "";
    room.longer += std::isnan(value) ? "nan" : "inf";
    return room.longer;
  }
  if (!ScaleExactly(std::abs(value), decimals, scaled)) {
    room.longer = fmt::format("{:.{}f}", value, decimals);
    return room.longer;
  }
  char* const end = room.digits.data() + room.digits.size();
  char* start = end;
  for (int i = 1; i < decimals; i += 2) start = PrependPair(start, scaled);
  if (decimals % 2 != 0) start = PrependDigit(start, scaled);
  if (decimals > 0) *--start = '.';
  start = PrependWhole(start, scaled);
  if (std::signbit(value)) *--start = '-';
  return {start, static_cast<size_t>(end - start)};
}

std::string_view WholeText(NumberRoom& room, int64_t value, size_t width) {
  char* const end = room.digits.data() + room.digits.size();
  const auto bits = static_cast<uint64_t>(value);
  char* start = PrependWhole(end, value < 0 ? 0 - bits : bits);
  const size_t signLength = value < 0 ? 1 : 0;
  if (width > room.digits.size()) {
    const std::string_view digits(start, static_cast<size_t>(end - start));
    room.longer.assign(signLength, '-');
    room.longer.append(width - signLength - digits.size(), '0').append(digits);
    return room.longer;
  }
  while (static_cast<size_t>(end - start) + signLength < width) *--start = '0';
  if (value < 0) *--start = '-';
  return {start, static_cast<size_t>(end - start)};
}

void AppendFixed(std::string& text, double value, int decimals) {
  NumberRoom room;
  text.append(FixedText(room, value, decimals));
}

void AppendWhole(std::string& text, int64_t value, size_t width) {
  NumberRoom room;
  text.append(WholeText(room, value, width));
}

std::string ToFixedString(double value, int decimals) {
  std::string text;
  AppendFixed(text, value, decimals);
  return text;
}
