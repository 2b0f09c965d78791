#include "platform/path_text.h"

#include "base/unicode.h"

namespace {

// Where undecodable bytes go: a range of lone surrogates, which no valid text contains.
constexpr char16_t kByteSurrogates = 0xDC00;

}  // namespace

std::string PathBytes(const WideString& path) {
  std::string bytes;
  for (size_t i = 0; i < path.size();) {
    const DecodedCodePoint decoded = DecodeUtf16(path, i);
    if (!decoded.valid && path[i] >= kByteSurrogates + 0x80 && path[i] <= kByteSurrogates + 0xFF) {
      bytes.push_back(static_cast<char>(path[i] - kByteSurrogates));
    } else {
      AppendUtf8(bytes, decoded.valid ? decoded.codePoint : U'\uFFFD');
    }
    i += decoded.length;
  }
  return bytes;
}

WideString WidePath(std::string_view bytes) {
  WideString path;
  for (size_t i = 0; i < bytes.size();) {
    const DecodedCodePoint decoded = DecodeUtf8(bytes, i);
    if (decoded.valid) {
      AppendUtf16(path, decoded.codePoint);
    } else {
      path.push_back(static_cast<char16_t>(kByteSurrogates + static_cast<unsigned char>(bytes[i])));
    }
    i += decoded.length;
  }
  return path;
}
