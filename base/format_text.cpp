#include "base/format_text.h"

#include <algorithm>

#include "base/text_ids.h"
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

std::string LocalNumber(std::string number) {
  const size_t point = number.find('.');
  if (point != std::string::npos) number.replace(point, 1, LoadTextUtf8(kTextDecimalSign));
  return number;
}

std::string GroupedNumber(std::string number) {
  constexpr size_t kGroup = 3;
  const std::string_view separator = LoadTextUtf8(kTextThousandsSeparator);
  for (size_t end = number.size(); end > kGroup; end -= kGroup)
    number.insert(end - kGroup, separator);
  return number;
}

// Up to the next placeholder or choice.
void TextFilling::TakeLiteral() {
  size_t end = 0;
  while (end < m_rest.size() && m_rest[end] != '{') {
    if (m_rest[end] == '%') {
      if (m_rest.compare(end, 2, "%%") != 0) break;
      m_rest.erase(end, 1);
    }
    ++end;
  }
  m_text.append(m_rest, 0, end);
  m_rest.erase(0, end);
}

std::string TextFilling::NextPlaceholder(bool isOne, bool isNone) {
  TakeLiteral();
  if (m_rest.starts_with('{')) {
    const size_t middle = std::min(m_rest.find('~'), m_rest.size());
    const size_t end = std::min(m_rest.find('}'), m_rest.size());
    // Nothing counts as one in French.
    const bool isSingular = isOne || (isNone && CurrentLanguage() == Language::kFrench);
    const std::string chosen =
        isSingular ? m_rest.substr(1, middle - 1) : m_rest.substr(middle + 1, end - middle - 1);
    m_rest.replace(0, end + 1, chosen);
    TakeLiteral();
  }
  const size_t letter = m_rest.find_first_not_of("-+ '0123456789.", 1);
  const size_t size = std::min(letter, m_rest.size() - 1) + 1;
  std::string placeholder = m_rest.substr(0, size);
  m_rest.erase(0, size);
  return placeholder;
}

std::string TextFilling::Finish() {
  TakeLiteral();
  return m_text + m_rest;
}
