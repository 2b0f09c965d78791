#include "markup/xml_encoding.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "base/text.h"

namespace {

using std::string_view_literals::operator""sv;

// As far as a declaration is looked for.
constexpr size_t kLookAhead = 1024;
constexpr size_t kPieceSize = size_t{1} << 16;

// What Expat knows, and windows-1252: devices declare it for bytes that they never look at, and so
// it is read byte by byte.
constexpr std::string_view kLeftToExpat[] = {"utf-8"sv,      "utf8"sv,         "us-ascii"sv,
                                             "iso-8859-1"sv, "utf-16"sv,       "utf-16le"sv,
                                             "utf-16be"sv,   "windows-1252"sv, "cp1252"sv};

constexpr std::string_view kDeclaration = "<?xml";

// The name in the XML declaration at the start of `start`; empty when there is none.
std::string_view DeclaredEncoding(std::string_view start) {
  start.remove_prefix(std::min(start.find('<'), start.size()));
  if (!start.starts_with(kDeclaration)) return {};
  start = start.substr(0, start.find("?>"));
  constexpr std::string_view kAttribute = "encoding";
  const size_t place = start.find(kAttribute);
  if (place == std::string_view::npos) return {};
  const std::string_view value = TrimLeft(start.substr(place + kAttribute.size()), " \t\r\n=");
  if (value.empty() || (value[0] != '"' && value[0] != '\'')) return {};
  const size_t end = value.find(value[0], 1);
  return end == std::string_view::npos ? std::string_view() : value.substr(1, end - 1);
}

// Whether text of an encoding has the letters of the declaration where ASCII has them. What cannot
// be read like this was declared in vain.
bool ExtendsAscii(const std::string& encoding) {
  TextDecoder decoder;
  if (!decoder.Open(encoding)) return false;
  std::string text;
  decoder.Decode(kDeclaration, text);
  return text == kDeclaration;
}

}  // namespace

std::string ForeignEncoding(std::string_view start) {
  if (start.starts_with("\xFE\xFF"sv) || start.starts_with("\0<"sv)) return "utf-16be";
  const std::string declared = ToLowerAscii(DeclaredEncoding(start));
  if (std::find(std::begin(kLeftToExpat), std::end(kLeftToExpat), declared) !=
      std::end(kLeftToExpat))
    return {};
  // As everybody else writes it, with the characters of its largest maker.
  const std::string encoding = declared == "shift_jis" ? "cp932" : declared;
  return ExtendsAscii(encoding) ? encoding : std::string();
}

DecodedXmlSource::DecodedXmlSource(XmlSource source) : m_source(std::move(source)) {
  std::string start(kLookAhead, '\0');
  size_t filled = 0;
  while (filled < start.size()) {
    // A failure comes up again when the bytes are asked for.
    const size_t count = m_source(&start[filled], start.size() - filled).value_or(0);
    if (count == 0) break;
    filled += count;
  }
  start.resize(filled);
  const std::string encoding = ForeignEncoding(start);
  m_isConverted = !encoding.empty() && m_decoder.Open(encoding);
  if (m_isConverted)
    m_decoder.Decode(start, m_text);
  else
    m_text = std::move(start);
}

std::optional<size_t> DecodedXmlSource::Read(char* data, size_t size) {
  while (m_taken == m_text.size()) {
    if (!m_isConverted) return m_source(data, size);
    m_text.clear();
    m_taken = 0;
    m_piece.resize(kPieceSize);
    const std::optional<size_t> count = m_source(m_piece.data(), m_piece.size());
    if (!count) return std::nullopt;
    m_decoder.Decode({m_piece.data(), *count}, m_text);
    if (*count > 0) continue;
    m_decoder.Finish(m_text);
    if (m_text.empty()) return 0;
  }
  const size_t count = m_text.copy(data, size, m_taken);
  m_taken += count;
  return count;
}
