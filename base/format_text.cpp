#include "base/format_text.h"

#include "base/unicode.h"

std::string Printable(std::string_view text) {
  std::string shown;
  for (size_t i = 0; i < text.size();) {
    const DecodedCodePoint decoded = DecodeUtf8(text, i);
    const bool isControl =
        decoded.codePoint < 0x20 || (decoded.codePoint >= 0x7F && decoded.codePoint < 0xA0);
    shown.append(decoded.valid && !isControl ? text.substr(i, decoded.length) : "\uFFFD");
    i += decoded.length;
  }
  return shown;
}
