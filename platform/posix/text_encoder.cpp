#include "platform/text_encoder.h"

#include <array>
#include <cerrno>

#include <iconv.h>

#include "base/unicode.h"

TextEncoder::~TextEncoder() {
  if (m_converter) iconv_close(m_converter);
}

bool TextEncoder::Open(const std::string& encoding) {
  if (m_converter) iconv_close(m_converter);
  // A name with a slash asks the library for more than an encoding.
  const bool isName = !encoding.empty() && encoding.find('/') == std::string::npos;
  m_converter = isName ? iconv_open(encoding.c_str(), "UTF-8") : nullptr;
  // NOLINTNEXTLINE(performance-no-int-to-ptr): that is how the library says no.
  if (m_converter == iconv_t(-1)) m_converter = nullptr;
  return m_converter != nullptr;
}

size_t TextEncoder::Append(std::string_view utf8, std::string& bytes) {
  // The library takes a pointer to what it only reads.
  char* input = const_cast<char*>(utf8.data());
  size_t left = utf8.size();
  std::array<char, 1024> output;
  for (;;) {
    char* end = output.data();
    size_t room = output.size();
    // Without input, what an encoding with shifts needs at the end of a text.
    const bool isEnd = left == 0;
    const size_t result =
        iconv(m_converter, isEnd ? nullptr : &input, isEnd ? nullptr : &left, &end, &room);
    const bool isFull = result == size_t(-1) && errno == E2BIG;
    bytes.append(output.data(), end);
    if (isEnd ? !isFull : !isFull && left > 0) break;
  }
  return utf8.size() - left;
}

std::string TextEncoder::Encode(std::string_view utf8) {
  std::string bytes;
  while (!utf8.empty()) {
    utf8.remove_prefix(Append(utf8, bytes));
    if (utf8.empty()) break;
    bytes += '?';
    utf8.remove_prefix(DecodeUtf8(utf8, 0).length);
  }
  return bytes;
}

bool TextEncoder::Holds(std::string_view character) {
  std::string bytes;
  return Append(character, bytes) == character.size();
}
