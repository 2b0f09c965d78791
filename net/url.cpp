#include "net/url.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <stdexcept>

namespace {

constexpr std::string_view kUriCharacters = ",/?:@&=+$#-_.!~*'()";
constexpr std::string_view kHexDigits = "0123456789ABCDEF";
constexpr std::string_view kSpace = " \t\n\v\f\r";
constexpr std::string_view kPlainScheme = "http://";
constexpr std::string_view kSecureScheme = "https://";
constexpr std::string_view kBase64Alphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

bool IsLetterOrDigit(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

// -1 for all other characters.
int HexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

void AppendEscaped(std::string& output, char c) {
  const auto byte = static_cast<unsigned char>(c);
  output += '%';
  if (byte >= 0x10) output += kHexDigits[byte >> 4];
  output += kHexDigits[byte & 0xF];
}

// The number that a stream reads from these one or two characters in hexadecimal, its low byte.
char EscapedByte(std::string_view digits) {
  const size_t start = digits.find_first_not_of(kSpace);
  if (start == std::string_view::npos) return 0;
  digits.remove_prefix(start);
  const bool isNegative = digits[0] == '-';
  if (isNegative || digits[0] == '+') digits.remove_prefix(1);
  int value = 0;
  for (const char c : digits) {
    const int digit = HexValue(c);
    if (digit < 0) break;
    value = value * 16 + digit;
  }
  return static_cast<char>(isNegative ? -value : value);
}

uint16_t PortOf(std::string_view text) {
  const size_t start = text.find_first_not_of(kSpace);
  if (start != std::string_view::npos) text.remove_prefix(start);
  if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error == std::errc::invalid_argument) throw std::invalid_argument("invalid stoi argument");
  if (error == std::errc::result_out_of_range) {
    throw std::out_of_range("stoi argument out of range");
  }
  return static_cast<uint16_t>(value & 0xFFFF);
}

constexpr int8_t kNoLetter = -1;

constexpr std::array<int8_t, 256> MakeBase64Values() {
  std::array<int8_t, 256> values{};
  values.fill(kNoLetter);
  for (size_t i = 0; i < kBase64Alphabet.size(); ++i) {
    values[static_cast<unsigned char>(kBase64Alphabet[i])] = static_cast<int8_t>(i);
  }
  return values;
}
constexpr std::array<int8_t, 256> kBase64Values = MakeBase64Values();

// Of the value of a character outside the alphabet the low bits count, and they are all set.
unsigned Base64Bits(char c) {
  return static_cast<unsigned>(kBase64Values[static_cast<unsigned char>(c)]) & 0xFF;
}

}  // namespace

std::string UrlEscape(std::string_view text, std::string_view keep) {
  std::string escaped;
  escaped.reserve(text.size());
  for (const char c : text) {
    if (IsLetterOrDigit(c) || keep.find(c) != std::string_view::npos) {
      escaped += c;
    } else {
      AppendEscaped(escaped, c);
    }
  }
  return escaped;
}

std::string UrlEscapeUri(std::string_view text) { return UrlEscape(text, kUriCharacters); }

std::string UrlEscapeOnce(std::string_view text) {
  std::string escaped;
  escaped.reserve(text.size());
  while (!text.empty()) {
    const bool isEscape =
        text.size() >= 3 && text[0] == '%' && HexValue(text[1]) >= 0 && HexValue(text[2]) >= 0;
    if (isEscape) {
      escaped += text.substr(0, 3);
      text.remove_prefix(3);
    } else {
      escaped += UrlEscapeUri(text.substr(0, 1));
      text.remove_prefix(1);
    }
  }
  return escaped;
}

std::string UrlUnescape(std::string_view text) {
  std::string plain;
  plain.reserve(text.size());
  while (!text.empty()) {
    if (text[0] == '%') {
      const std::string_view digits = text.substr(1, 2);
      plain += EscapedByte(digits);
      text.remove_prefix(1 + digits.size());
    } else {
      plain += text[0];
      text.remove_prefix(1);
    }
  }
  return plain;
}

void SplitUrl(std::string_view url, std::string& host, std::string& path, uint16_t& port,
              bool& secure) {
  port = 80;
  secure = false;
  if (const size_t plain = url.find(kPlainScheme); plain != std::string_view::npos) {
    url.remove_prefix(plain + kPlainScheme.size());
  } else if (const size_t safe = url.find(kSecureScheme); safe != std::string_view::npos) {
    url.remove_prefix(safe + kSecureScheme.size());
    port = 443;
    secure = true;
  }
  const size_t slash = url.find('/');
  if (slash != std::string_view::npos) path = url.substr(slash + 1);
  const std::string_view authority = url.substr(0, slash);
  const size_t colon = authority.find(':');
  host = authority.substr(0, colon);
  if (colon != std::string_view::npos) port = PortOf(authority.substr(colon + 1));
}

bool IsHostName(std::string_view host) {
  return !host.empty() && std::all_of(host.begin(), host.end(), [](char c) {
    return IsLetterOrDigit(c) || c == '-' || c == '.' || c == '_';
  });
}

void Base64Encode(std::string_view in, std::string& out) {
  out.reserve(out.size() + (in.size() + 2) / 3 * 4);
  for (; !in.empty(); in.remove_prefix(std::min<size_t>(in.size(), 3))) {
    const auto byte = [in](size_t i) {
      return i < in.size() ? static_cast<unsigned>(static_cast<unsigned char>(in[i])) : 0U;
    };
    const unsigned bits = byte(0) << 16 | byte(1) << 8 | byte(2);
    out += kBase64Alphabet[bits >> 18];
    out += kBase64Alphabet[bits >> 12 & 63];
    out += in.size() > 1 ? kBase64Alphabet[bits >> 6 & 63] : '=';
    out += in.size() > 2 ? kBase64Alphabet[bits & 63] : '=';
  }
}

std::string Base64Decode(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size() / 4 * 3 + 3);
  for (; !text.empty(); text.remove_prefix(std::min<size_t>(text.size(), 4))) {
    const unsigned a = Base64Bits(text[0]);
    const unsigned b = text.size() > 1 ? Base64Bits(text[1]) : 0;
    bytes += static_cast<char>((a << 2 | (b >> 4 & 3)) & 0xFF);
    if (text.size() < 3) continue;
    if (text[2] == '=') break;
    const unsigned c = Base64Bits(text[2]);
    bytes += static_cast<char>((b << 4 | (c >> 2 & 0xF)) & 0xFF);
    if (text.size() < 4) continue;
    if (text[3] == '=') break;
    bytes += static_cast<char>((c << 6 | Base64Bits(text[3])) & 0xFF);
  }
  return bytes;
}
