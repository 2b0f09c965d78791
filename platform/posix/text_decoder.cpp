#include "platform/text_decoder.h"

#include <array>
#include <cerrno>

#include <iconv.h>

namespace {

constexpr std::string_view kReplacement = "\uFFFD";

}  // namespace

TextDecoder::~TextDecoder() {
  if (m_converter) iconv_close(m_converter);
}

bool TextDecoder::Open(const std::string& encoding) {
  if (m_converter) iconv_close(m_converter);
  m_rest.clear();
  // A name with a slash asks the library for more than an encoding.
  const bool isName = !encoding.empty() && encoding.find('/') == std::string::npos;
  m_converter = isName ? iconv_open("UTF-8", encoding.c_str()) : nullptr;
  // NOLINTNEXTLINE(performance-no-int-to-ptr): that is how the library says no.
  if (m_converter == iconv_t(-1)) m_converter = nullptr;
  return m_converter != nullptr;
}

void TextDecoder::Decode(std::string_view bytes, std::string& text) {
  m_rest.append(bytes);
  char* input = m_rest.data();
  size_t left = m_rest.size();
  std::array<char, 8192> output;
  while (left > 0) {
    char* end = output.data();
    size_t room = output.size();
    const size_t result = iconv(m_converter, &input, &left, &end, &room);
    const int error = errno;
    text.append(output.data(), end);
    if (result != size_t(-1) || error == E2BIG) continue;
    if (error == EINVAL) break;
    text += kReplacement;
    ++input;
    --left;
  }
  m_rest.erase(0, m_rest.size() - left);
}

void TextDecoder::Finish(std::string& text) {
  if (!m_rest.empty()) text += kReplacement;
  m_rest.clear();
}
