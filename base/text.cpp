#include "base/text.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <stdexcept>

#include "base/unicode.h"

namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr size_t kAllFields = std::numeric_limits<size_t>::max();

// Where the ASCII characters that stand at `start` end. Most text is nothing else, so it is taken
// in runs, eight bytes at a look.
size_t EndOfAscii(std::string_view text, size_t start) {
  constexpr uint64_t kHighBits = 0x8080808080808080;
  size_t end = start;
  for (uint64_t eight = 0; text.size() - end >= sizeof eight; end += sizeof eight) {
    std::memcpy(&eight, text.data() + end, sizeof eight);
    if ((eight & kHighBits) != 0) break;
  }
  while (end < text.size() && static_cast<unsigned char>(text[end]) < 0x80) ++end;
  return end;
}

// Hands UTF-8 text on in runs of ASCII and single characters, or bytes that start none, between.
template <typename OnAscii, typename OnCharacter>
void WalkUtf8(std::string_view text, OnAscii onAscii, OnCharacter onCharacter) {
  for (size_t i = 0; i < text.size();) {
    const size_t end = EndOfAscii(text, i);
    if (end > i) onAscii(text.substr(i, end - i));
    if (end == text.size()) return;
    const DecodedCodePoint decoded = DecodeUtf8(text, end);
    onCharacter(decoded);
    i = end + decoded.length;
  }
}

template <typename OnInvalid>
WideString DecodeUtf8Text(std::string_view text, OnInvalid onInvalid) {
  WideString wide;
  wide.reserve(text.size());
  WalkUtf8(
      text, [&](std::string_view ascii) { wide.append(ascii.begin(), ascii.end()); },
      [&](const DecodedCodePoint& decoded) {
        AppendUtf16(wide, decoded.valid ? decoded.codePoint : onInvalid());
      });
  return wide;
}

template <typename OnInvalid>
std::string EncodeUtf8Text(std::u16string_view text, OnInvalid onInvalid) {
  std::string narrow;
  narrow.reserve(text.size());
  for (size_t i = 0; i < text.size();) {
    const DecodedCodePoint decoded = DecodeUtf16(text, i);
    AppendUtf8(narrow, decoded.valid ? decoded.codePoint : onInvalid());
    i += decoded.length;
  }
  return narrow;
}

char32_t ThrowNoText() { throw std::range_error("the text is not valid in its encoding"); }
char32_t Replace() { return kReplacement; }

template <typename Char>
std::basic_string<Char> LoweredAscii(std::basic_string_view<Char> text) {
  std::basic_string<Char> lower(text);
  for (Char& c : lower) {
    if (c >= Char{'A'} && c <= Char{'Z'}) c = static_cast<Char>(c - 'A' + 'a');
  }
  return lower;
}

template <typename Char>
void Split(std::basic_string_view<Char> text, Char separator, size_t limit,
           std::vector<std::basic_string_view<Char>>& fields) {
  fields.clear();
  size_t start = 0;
  while (fields.size() < limit) {
    const size_t end = text.find(separator, start);
    if (end == text.npos) {
      fields.push_back(text.substr(start));
      return;
    }
    fields.push_back(text.substr(start, end - start));
    start = end + 1;
  }
}

uint8_t ByteAt(std::string_view bytes, size_t index) {
  return index < bytes.size() ? static_cast<uint8_t>(bytes[index]) : uint8_t{0};
}

template <size_t width>
uint32_t UnitAt(std::string_view bytes, size_t position, bool bigEndian) {
  uint32_t unit = 0;
  for (size_t i = 0; i < width; ++i) {
    const auto byte = static_cast<uint8_t>(bytes[position + i]);
    unit |= uint32_t{byte} << (8 * (bigEndian ? width - 1 - i : i));
  }
  return unit;
}

// Call `append` with every character of UTF-16 or UTF-32 text; a cut last unit is dropped.
template <typename Append>
void DecodeUtf16Units(std::string_view bytes, bool bigEndian, Append append) {
  for (size_t i = 0; i + 2 <= bytes.size(); i += 2) {
    const uint32_t unit = UnitAt<2>(bytes, i, bigEndian);
    if (unit < 0xD800 || unit > 0xDFFF) {
      append(char32_t{unit});
      continue;
    }
    const uint32_t next = i + 4 <= bytes.size() ? UnitAt<2>(bytes, i + 2, bigEndian) : 0;
    const bool isPair = unit < 0xDC00 && next >= 0xDC00 && next <= 0xDFFF;
    append(isPair ? char32_t{0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00)} : kReplacement);
    if (isPair) i += 2;
  }
}

template <typename Append>
void DecodeUtf32Units(std::string_view bytes, bool bigEndian, Append append) {
  for (size_t i = 0; i + 4 <= bytes.size(); i += 4) {
    const uint32_t unit = UnitAt<4>(bytes, i, bigEndian);
    const bool isValid = unit <= 0x10FFFF && !(unit >= 0xD800 && unit <= 0xDFFF);
    append(isValid ? char32_t{unit} : kReplacement);
  }
}

template <typename Append>
void DecodeUnits(std::string_view bytes, EFileEncoding encoding, Append append) {
  const bool bigEndian = encoding == kEncodingUtf16Be || encoding == kEncodingUtf32Be;
  if (encoding == kEncodingUtf16Be || encoding == kEncodingUtf16Le)
    DecodeUtf16Units(bytes, bigEndian, append);
  else
    DecodeUtf32Units(bytes, bigEndian, append);
}

}  // namespace

WideString Utf8ToWide(std::string_view text) { return DecodeUtf8Text(text, ThrowNoText); }
std::string WideToUtf8(std::u16string_view text) { return EncodeUtf8Text(text, ThrowNoText); }
WideString Utf8ToWideLossy(std::string_view text) { return DecodeUtf8Text(text, Replace); }
std::string WideToUtf8Lossy(std::u16string_view text) { return EncodeUtf8Text(text, Replace); }

WideString WidenAscii(std::string_view text) {
  WideString wide;
  wide.reserve(text.size());
  for (const char c : text) wide.push_back(static_cast<unsigned char>(c));
  return wide;
}

std::string NarrowForFile(std::u16string_view text) {
  std::string narrow;
  narrow.reserve(text.size());
  for (const char16_t unit : text) narrow.push_back(unit > 0xFF ? '?' : static_cast<char>(unit));
  return narrow;
}

std::string NarrowUtf8(std::string_view text) {
  std::string narrow;
  AppendNarrowUtf8(narrow, text);
  return narrow;
}

void AppendNarrowUtf8(std::string& output, std::string_view text) {
  WalkUtf8(
      text, [&](std::string_view ascii) { output.append(ascii); },
      [&](const DecodedCodePoint& decoded) {
        if (decoded.valid && decoded.codePoint <= 0xFF) {
          output.push_back(static_cast<char>(decoded.codePoint));
        } else {
          // Two units of UTF-16, two question marks.
          output.append(decoded.valid && decoded.codePoint > 0xFFFF ? 2 : 1, '?');
        }
      });
}

std::string WidenToUtf8(std::string_view text) {
  std::string utf8;
  utf8.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    const size_t end = EndOfAscii(text, i);
    utf8.append(text, i, end - i);
    if (end == text.size()) break;
    AppendUtf8(utf8, static_cast<unsigned char>(text[end]));
    i = end;
  }
  return utf8;
}

bool IsValidUtf8(std::string_view text) {
  for (size_t i = EndOfAscii(text, 0); i < text.size(); i = EndOfAscii(text, i)) {
    const DecodedCodePoint decoded = DecodeUtf8(text, i);
    if (!decoded.valid) return false;
    i += decoded.length;
  }
  return true;
}

std::string MendUtf8(std::string_view text) {
  if (IsValidUtf8(text)) return std::string(text);  // as nearly all text is: copied in one piece
  std::string utf8;
  utf8.reserve(text.size());
  WalkUtf8(
      text, [&](std::string_view ascii) { utf8.append(ascii); },
      [&](const DecodedCodePoint& decoded) {
        AppendUtf8(utf8, decoded.valid ? decoded.codePoint : kReplacement);
      });
  return utf8;
}

DetectedEncoding DetectEncoding(std::string_view bytes) {
  const uint8_t first = ByteAt(bytes, 0);
  const uint8_t second = ByteAt(bytes, 1);
  const uint8_t third = ByteAt(bytes, 2);
  const uint8_t fourth = ByteAt(bytes, 3);
  const auto found = [&bytes](EFileEncoding encoding) {
    constexpr size_t kMarkSizes[] = {0, 3, 2, 2, 4, 4};
    return DetectedEncoding{encoding, std::min(kMarkSizes[encoding], bytes.size())};
  };

  if (first == 0 && second == 0 && third == 0xFE && fourth == 0xFF) return found(kEncodingUtf32Be);
  if (first == 0xFF && second == 0xFE && third == 0 && fourth == 0) return found(kEncodingUtf32Le);
  if (first == 0xFE && second == 0xFF) return found(kEncodingUtf16Be);
  if (first == 0xFF && second == 0xFE) return found(kEncodingUtf16Le);
  if (first == 0xEF && second == 0xBB && third == 0xBF) return found(kEncodingUtf8);

  // No mark: guess from the zero bytes that Latin text leaves in wide encodings.
  if (first == 0 && second == 0 && third == 0) return found(kEncodingUtf32Be);
  if (first != 0 && second == 0 && third == 0 && fourth == 0) return found(kEncodingUtf32Le);
  if (first == 0 && third == 0) return found(kEncodingUtf16Be);
  if (second != 0 || fourth != 0) return found(kEncodingNarrow);
  return found(kEncodingUtf16Le);
}

WideString DecodeTextFile(std::string_view bytes) {
  const DetectedEncoding detected = DetectEncoding(bytes);
  bytes.remove_prefix(detected.skipped);
  if (detected.encoding == kEncodingNarrow) return WidenAscii(bytes);
  if (detected.encoding == kEncodingUtf8) return Utf8ToWideLossy(bytes);
  WideString wide;
  DecodeUnits(bytes, detected.encoding,
              [&wide](char32_t codePoint) { AppendUtf16(wide, codePoint); });
  return wide;
}

std::string Utf16LeToUtf8(std::string_view bytes) {
  std::string utf8;
  DecodeUtf16Units(bytes, false, [&utf8](char32_t codePoint) { AppendUtf8(utf8, codePoint); });
  return utf8;
}

std::string DecodeTextFileToUtf8(std::string_view bytes) {
  const DetectedEncoding detected = DetectEncoding(bytes);
  bytes.remove_prefix(detected.skipped);
  if (detected.encoding == kEncodingNarrow) return WidenToUtf8(bytes);
  if (detected.encoding == kEncodingUtf8) return MendUtf8(bytes);
  std::string utf8;
  DecodeUnits(bytes, detected.encoding,
              [&utf8](char32_t codePoint) { AppendUtf8(utf8, codePoint); });
  return utf8;
}

void SplitFields(std::string_view text, char separator, std::vector<std::string_view>& fields) {
  Split(text, separator, kAllFields, fields);
}

void SplitFields(std::u16string_view text, char16_t separator,
                 std::vector<std::u16string_view>& fields) {
  Split(text, separator, kAllFields, fields);
}

void SplitFirstFields(std::string_view text, char separator, size_t limit,
                      std::vector<std::string_view>& fields) {
  Split(text, separator, limit, fields);
}

std::string_view TrimLeft(std::string_view text, std::string_view characters) {
  text.remove_prefix(std::min(text.find_first_not_of(characters), text.size()));
  return text;
}

std::string_view TrimRight(std::string_view text, std::string_view characters) {
  return text.substr(0, text.find_last_not_of(characters) + 1);
}

std::string_view Trim(std::string_view text, std::string_view characters) {
  return TrimLeft(TrimRight(text, characters), characters);
}

std::string ToLowerAscii(std::string_view text) { return LoweredAscii(text); }
WideString ToLowerAscii(std::u16string_view text) { return LoweredAscii(text); }

bool EqualsIgnoringCase(std::u16string_view first, std::u16string_view second) {
  return first.size() == second.size() && LoweredAscii(first) == LoweredAscii(second);
}

std::u16string_view FileNameOfPath(std::u16string_view path) {
  return path.substr(path.find_last_of(u"/\\") + 1);
}

std::u16string_view ExtensionOfPath(std::u16string_view path) {
  const size_t dot = path.rfind(u'.');
  return dot == std::u16string_view::npos ? std::u16string_view() : path.substr(dot + 1);
}

std::u16string_view FileTitleOfPath(std::u16string_view path) {
  const std::u16string_view name = FileNameOfPath(path);
  return name.substr(0, name.rfind(u'.'));
}
