#include "base/unicode.h"

namespace {

constexpr char32_t kLargest = 0x10FFFF;

bool IsContinuation(unsigned char byte) { return (byte & 0xC0) == 0x80; }
bool IsSurrogate(char32_t codePoint) { return codePoint >= 0xD800 && codePoint <= 0xDFFF; }

}  // namespace

DecodedCodePoint DecodeUtf8(std::string_view text, size_t position) {
  constexpr DecodedCodePoint kInvalid{0, 1, false};
  const auto first = static_cast<unsigned char>(text[position]);
  if (first < 0x80) return {first, 1, true};

  const uint32_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
  if (first < 0xC2 || first > 0xF4 || text.size() - position < length) return kInvalid;
  char32_t codePoint = first & (0xFF >> (length + 1));
  for (uint32_t i = 1; i < length; ++i) {
    const auto next = static_cast<unsigned char>(text[position + i]);
    if (!IsContinuation(next)) return kInvalid;
    codePoint = codePoint << 6 | (next & 0x3FU);
  }
  constexpr char32_t kSmallestOfLength[] = {0, 0, 0x80, 0x800, 0x10000};
  const bool overlong = codePoint < kSmallestOfLength[length];
  if (overlong || codePoint > kLargest || IsSurrogate(codePoint)) return kInvalid;
  return {codePoint, length, true};
}

DecodedCodePoint DecodeUtf16(std::u16string_view text, size_t position) {
  const char32_t unit = text[position];
  if (!IsSurrogate(unit)) return {unit, 1, true};
  if (unit >= 0xDC00 || position + 1 == text.size()) return {unit, 1, false};
  const char32_t low = text[position + 1];
  if (low < 0xDC00 || low > 0xDFFF) return {unit, 1, false};
  return {0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00), 2, true};
}

void AppendUtf8(std::string& text, char32_t codePoint) {
  if (codePoint < 0x80) {
    text.push_back(static_cast<char>(codePoint));
    return;
  }
  const int continuations = codePoint < 0x800 ? 1 : codePoint < 0x10000 ? 2 : 3;
  constexpr unsigned kLeads[] = {0, 0xC0, 0xE0, 0xF0};
  text.push_back(static_cast<char>(kLeads[continuations] | codePoint >> (6 * continuations)));
  for (int i = continuations - 1; i >= 0; --i)
    text.push_back(static_cast<char>(0x80 | (codePoint >> (6 * i) & 0x3F)));
}

void AppendUtf16(std::u16string& text, char32_t codePoint) {
  if (codePoint < 0x10000) {
    text.push_back(static_cast<char16_t>(codePoint));
    return;
  }
  text.push_back(static_cast<char16_t>(0xD800 + ((codePoint - 0x10000) >> 10)));
  text.push_back(static_cast<char16_t>(0xDC00 + ((codePoint - 0x10000) & 0x3FF)));
}
