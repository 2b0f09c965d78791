#include "core/text.h"

#include <algorithm>
#include <stdexcept>

#include "platform/unicode.h"

namespace {

constexpr char32_t kReplacement = 0xFFFD;

template <typename OnInvalid>
WideString DecodeUtf8Text(std::string_view text, OnInvalid onInvalid) {
  WideString wide;
  wide.reserve(text.size());
  for (size_t i = 0; i < text.size();) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if (byte < 0x80) {
      wide.push_back(byte);
      ++i;
      continue;
    }
    const DecodedCodePoint decoded = DecodeUtf8(text, i);
    AppendUtf16(wide, decoded.valid ? decoded.codePoint : onInvalid());
    i += decoded.length;
  }
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

bool IsAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(),
                     [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

template <typename Char>
std::basic_string<Char> LoweredAscii(std::basic_string_view<Char> text) {
  std::basic_string<Char> lower(text);
  for (Char& c : lower) {
    if (c >= Char{'A'} && c <= Char{'Z'}) c = static_cast<Char>(c - 'A' + 'a');
  }
  return lower;
}

template <typename Char>
void Split(std::basic_string_view<Char> text, Char separator,
           std::vector<std::basic_string_view<Char>>& fields) {
  fields.clear();
  size_t start = 0;
  for (;;) {
    const size_t end = text.find(separator, start);
    if (end == text.npos) break;
    fields.push_back(text.substr(start, end - start));
    start = end + 1;
  }
  fields.push_back(text.substr(start));
}

uint8_t ByteAt(std::string_view bytes, size_t index) {
  return index < bytes.size() ? static_cast<uint8_t>(bytes[index]) : uint8_t{0};
}

// Calls `append` with every character of UTF-16 or UTF-32 text; a cut last unit is dropped.
template <typename Append>
void DecodeUnits(std::string_view bytes, size_t width, bool bigEndian, Append append) {
  WideString pending;  // UTF-16 is gathered first, since pairs of units make a character
  for (size_t i = 0; i + width <= bytes.size(); i += width) {
    uint32_t unit = 0;
    for (size_t j = 0; j < width; ++j)
      unit |= uint32_t{ByteAt(bytes, i + j)} << (8 * (bigEndian ? width - 1 - j : j));
    if (width == 2) {
      pending.push_back(static_cast<char16_t>(unit));
    } else {
      const bool valid = unit <= 0x10FFFF && !(unit >= 0xD800 && unit <= 0xDFFF);
      append(valid ? char32_t{unit} : kReplacement);
    }
  }
  for (size_t i = 0; i < pending.size();) {
    const DecodedCodePoint decoded = DecodeUtf16(pending, i);
    append(decoded.valid ? decoded.codePoint : kReplacement);
    i += decoded.length;
  }
}

bool IsBigEndian(EFileEncoding encoding) {
  return encoding == kEncodingUtf16Be || encoding == kEncodingUtf32Be;
}

size_t UnitWidth(EFileEncoding encoding) {
  return encoding == kEncodingUtf16Be || encoding == kEncodingUtf16Le ? 2 : 4;
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
  if (IsAscii(text)) {
    output.append(text);
    return;
  }
  for (size_t i = 0; i < text.size();) {
    const DecodedCodePoint decoded = DecodeUtf8(text, i);
    i += decoded.length;
    if (decoded.valid && decoded.codePoint <= 0xFF) {
      output.push_back(static_cast<char>(decoded.codePoint));
    } else {
      // Two units of UTF-16, two question marks.
      output.append(decoded.valid && decoded.codePoint > 0xFFFF ? 2 : 1, '?');
    }
  }
}

std::string WidenToUtf8(std::string_view text) {
  if (IsAscii(text)) return std::string(text);
  std::string utf8;
  utf8.reserve(text.size());
  for (const char c : text) AppendUtf8(utf8, static_cast<unsigned char>(c));
  return utf8;
}

bool IsValidUtf8(std::string_view text) {
  for (size_t i = 0; i < text.size();) {
    const DecodedCodePoint decoded = DecodeUtf8(text, i);
    if (!decoded.valid) return false;
    i += decoded.length;
  }
  return true;
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
  DecodeUnits(bytes, UnitWidth(detected.encoding), IsBigEndian(detected.encoding),
              [&wide](char32_t codePoint) { AppendUtf16(wide, codePoint); });
  return wide;
}

std::string DecodeTextFileToUtf8(std::string_view bytes) {
  const DetectedEncoding detected = DetectEncoding(bytes);
  bytes.remove_prefix(detected.skipped);
  if (detected.encoding == kEncodingNarrow) return WidenToUtf8(bytes);
  std::string utf8;
  if (detected.encoding == kEncodingUtf8) {
    utf8.reserve(bytes.size());
    for (size_t i = 0; i < bytes.size();) {
      const DecodedCodePoint decoded = DecodeUtf8(bytes, i);
      AppendUtf8(utf8, decoded.valid ? decoded.codePoint : kReplacement);
      i += decoded.length;
    }
    return utf8;
  }
  DecodeUnits(bytes, UnitWidth(detected.encoding), IsBigEndian(detected.encoding),
              [&utf8](char32_t codePoint) { AppendUtf8(utf8, codePoint); });
  return utf8;
}

void SplitFields(std::string_view text, char separator, std::vector<std::string_view>& fields) {
  Split(text, separator, fields);
}

void SplitFields(std::u16string_view text, char16_t separator,
                 std::vector<std::u16string_view>& fields) {
  Split(text, separator, fields);
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
  return dot == path.npos ? std::u16string_view() : path.substr(dot + 1);
}

std::u16string_view FileTitleOfPath(std::u16string_view path) {
  const std::u16string_view name = FileNameOfPath(path);
  return name.substr(0, name.rfind(u'.'));
}
