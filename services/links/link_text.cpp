#include "services/links/link_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "base/numbers.h"
#include "base/text.h"
#include "net/url.h"

namespace {

constexpr std::string_view kBlanks = " \t\r\n";

bool IsControl(char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }

std::string WithoutControls(std::string text) {
  std::replace_if(text.begin(), text.end(), IsControl, ' ');
  return text;
}

// A decimal number that takes the whole text, within the limits of an angle.
std::optional<double> ParseAngle(std::string_view text, double largest) {
  text = Trim(text, kBlanks);
  if (text.starts_with('+')) text.remove_prefix(1);
  double angle = 0;
  const char* const end = text.data() + text.size();
  const auto parsed = std::from_chars(text.data(), end, angle);
  if (parsed.ec != std::errc() || parsed.ptr != end) return std::nullopt;
  if (!(std::abs(angle) <= largest)) return std::nullopt;
  return angle;
}

}  // namespace

LinkPieces SplitLink(std::string_view link) {
  link = Trim(link, kBlanks);
  if (const size_t scheme = link.find("://"); scheme < link.find_first_of("/?#"))
    link.remove_prefix(scheme + 3);

  LinkPieces pieces;
  const size_t hostEnd = std::min(link.find_first_of("/?#"), link.size());
  std::string_view host = link.substr(0, hostEnd);
  host = host.substr(host.rfind('@') + 1);
  pieces.host = ToLowerAscii(host.substr(0, host.find(':')));
  link.remove_prefix(hostEnd);

  if (const size_t start = link.find('#'); start != std::string_view::npos) {
    pieces.fragment = link.substr(start + 1);
    link = link.substr(0, start);
  }
  if (const size_t start = link.find('?'); start != std::string_view::npos) {
    pieces.query = link.substr(start + 1);
    link = link.substr(0, start);
  }
  pieces.path = link;
  return pieces;
}

std::vector<std::string_view> PathSegments(std::string_view path) {
  std::vector<std::string_view> segments;
  if (path.starts_with('/')) path.remove_prefix(1);
  SplitFields(path, '/', segments);
  return segments;
}

std::string LinkText(std::string_view piece) {
  std::string text;
  for (size_t i = 0; i < piece.size(); ++i) {
    const char* const digits = piece.data() + i + 1;
    unsigned value = 0;
    if (piece[i] == '%' && piece.size() - i > 2 &&
        std::from_chars(digits, digits + 2, value, 16).ptr == digits + 2) {
      text += static_cast<char>(value);
      i += 2;
    } else {
      text += piece[i] == '+' ? ' ' : piece[i];
    }
  }
  return WithoutControls(MendUtf8(text));
}

LinkQuery ParseLinkQuery(std::string_view query) {
  LinkQuery values;
  std::vector<std::string_view> fields;
  SplitFields(query, '&', fields);
  for (const std::string_view field : fields) {
    const size_t equals = std::min(field.find('='), field.size());
    values.emplace(LinkText(field.substr(0, equals)),
                   LinkText(field.substr(std::min(equals + 1, field.size()))));
  }
  return values;
}

std::string_view ValueOf(const LinkQuery& query, std::string_view key) {
  const auto found = query.find(key);
  return found == query.end() ? std::string_view() : found->second;
}

std::optional<CGpsCoordinate> ParseLinkPosition(std::string_view text) {
  const size_t comma = text.find(',');
  if (comma == std::string_view::npos) return std::nullopt;
  const std::optional<double> latitude = ParseAngle(text.substr(0, comma), 90.0);
  const std::optional<double> longitude = ParseAngle(text.substr(comma + 1), 180.0);
  if (!latitude || !longitude) return std::nullopt;
  CGpsCoordinate position;
  position.latitude = *latitude;
  position.longitude = *longitude;
  return position;
}

std::string LinkPosition(const CGpsCoordinate& position) {
  std::string text = ToFixedString(position.latitude, 6);
  text += ',';
  AppendFixed(text, position.longitude, 6);
  return text;
}

std::string LinkValue(std::string_view text, std::string_view keep) {
  return UrlEscape(WithoutControls(std::string(text)), keep);
}
