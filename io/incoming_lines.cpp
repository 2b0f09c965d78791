#include "io/incoming_lines.h"

#include <utility>

namespace {

constexpr size_t kPiece = size_t{1} << 16;

}  // namespace

IncomingLines::IncomingLines(Source source) : m_source(std::move(source)) {}

std::string_view IncomingLines::Peek(size_t count) {
  while (m_arrived.size() - m_taken < count && Fill()) {
  }
  return std::string_view(m_arrived).substr(m_taken);
}

void IncomingLines::Skip(size_t count) { m_taken += count; }

bool IncomingLines::Next(std::string_view& line) {
  while (!m_lines.Next(line)) {
    // Up to the last end of a line; what has no end yet waits for more, or for the end of all.
    m_arrived.erase(0, m_taken);
    m_taken = 0;
    size_t end = m_arrived.rfind('\n');
    while (end == std::string::npos) {
      const size_t searched = m_arrived.size();
      if (!Fill()) break;
      const size_t found = std::string_view(m_arrived).substr(searched).rfind('\n');
      if (found != std::string::npos) end = searched + found;
    }
    m_taken = end == std::string::npos ? m_arrived.size() : end + 1;
    if (m_taken == 0) return false;
    m_lines = LineSplitter(std::string_view(m_arrived).substr(0, m_taken));
  }
  return true;
}

// One piece more. False at the end.
bool IncomingLines::Fill() {
  if (m_isAtEnd) return false;
  const size_t size = m_arrived.size();
  m_arrived.resize(size + kPiece);
  const size_t count = m_source(m_arrived.data() + size, kPiece).value_or(0);
  m_arrived.resize(size + count);
  m_isAtEnd = count == 0;
  return !m_isAtEnd;
}
