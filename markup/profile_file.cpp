#include "markup/profile_file.h"

#include <algorithm>
#include <utility>

#include "base/text.h"

namespace {

using Entry = ProfileIndex::Entry;

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16LeMark = "\xFF\xFE";
constexpr std::string_view kUtf16BeMark = "\xFE\xFF";

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

std::string_view WithoutBlanks(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

// Less, equal or greater without regard to case. Shorter names come first: so "STATION9" stands
// before "STATION10", and numbered names are in order already.
int Compare(std::string_view first, std::string_view second) {
  if (first.size() != second.size()) return first.size() < second.size() ? -1 : 1;
  for (size_t i = 0; i < first.size(); ++i) {
    if (first[i] == second[i]) continue;
    const char a = Lower(first[i]);
    const char b = Lower(second[i]);
    if (a != b) return a < b ? -1 : 1;
  }
  return 0;
}

// Gives the name inside the brackets of a line that begins a section.
bool IsSectionStart(std::string_view line, std::string_view& name) {
  line = WithoutBlanks(line);
  if (!line.starts_with('[')) return false;
  const size_t end = line.find(']');
  if (end == std::string_view::npos) return false;
  name = WithoutBlanks(line.substr(1, end - 1));
  return true;
}

std::string_view Unquoted(std::string_view text) {
  const bool isQuoted = text.size() >= 2 && text.front() == text.back() &&
                        (text.front() == '"' || text.front() == '\'');
  return isQuoted ? text.substr(1, text.size() - 2) : text;
}

// The sections with the lines that follow each.
std::vector<Entry> SplitSections(std::string_view text) {
  std::vector<Entry> sections;
  size_t start = 0;
  LineSplitter lines(text);
  std::string_view name;
  for (std::string_view line; lines.Next(line);) {
    if (!IsSectionStart(line, name)) continue;
    if (!sections.empty()) {
      const auto end = static_cast<size_t>(line.data() - text.data());
      sections.back().text = text.substr(start, end - start);
    }
    start = lines.Position();
    sections.push_back({name, {}});
  }
  if (!sections.empty()) sections.back().text = text.substr(start);
  return sections;
}

std::vector<Entry> SplitKeys(std::string_view body) {
  std::vector<Entry> keys;
  LineSplitter lines(body);
  for (std::string_view line; lines.Next(line);) {
    const size_t equals = line.find('=');
    if (equals == std::string_view::npos) continue;
    const std::string_view key = WithoutBlanks(line.substr(0, equals));
    if (key.starts_with(';')) continue;
    keys.push_back({key, Unquoted(WithoutBlanks(line.substr(equals + 1)))});
  }
  return keys;
}

}  // namespace

ProfileIndex::ProfileIndex(std::vector<Entry> entries) : m_entries(std::move(entries)) {
  // Of equal names the one that stands first in the file comes first.
  const auto comesBefore = [](const Entry& a, const Entry& b) {
    const int order = Compare(a.name, b.name);
    return order != 0 ? order < 0 : a.name.data() < b.name.data();
  };
  if (!std::is_sorted(m_entries.begin(), m_entries.end(), comesBefore))
    std::sort(m_entries.begin(), m_entries.end(), comesBefore);
  const auto last =
      std::unique(m_entries.begin(), m_entries.end(),
                  [](const Entry& a, const Entry& b) { return Compare(a.name, b.name) == 0; });
  m_entries.erase(last, m_entries.end());
}

const Entry* ProfileIndex::Find(std::string_view name) const {
  const auto isAt = [this, name](size_t index) {
    return index < m_entries.size() && Compare(m_entries[index].name, name) == 0;
  };
  size_t index = m_next;
  if (!isAt(index)) {
    const auto found = std::lower_bound(m_entries.begin(), m_entries.end(), name,
                                        [](const Entry& entry, std::string_view wanted) {
                                          return Compare(entry.name, wanted) < 0;
                                        });
    index = static_cast<size_t>(found - m_entries.begin());
    if (!isAt(index)) return nullptr;
  }
  m_next = index + 1;
  return &m_entries[index];
}

ProfileSection::ProfileSection(std::string_view body, bool isUtf8)
    : m_keys(SplitKeys(body)), m_isUtf8(isUtf8) {}

std::string ProfileSection::GetText(std::string_view key, std::string_view defaultText) const {
  const Entry* const found = m_keys.Find(key);
  if (!found) return std::string(defaultText);
  return m_isUtf8 ? std::string(found->text) : WidenToUtf8(found->text);
}

ProfileFile::ProfileFile(std::string_view bytes, ProfileText unmarkedText) {
  if (bytes.starts_with(kUtf16LeMark) || bytes.starts_with(kUtf16BeMark)) {
    m_decoded = DecodeTextFileToUtf8(bytes);
    bytes = m_decoded;
    m_isUtf8 = true;
  } else if (bytes.starts_with(kUtf8Mark)) {
    bytes.remove_prefix(kUtf8Mark.size());
    m_isUtf8 = true;
  } else {
    m_isUtf8 = unmarkedText == ProfileText::kUtf8OrNarrow && IsValidUtf8(bytes);
  }
  m_sections = ProfileIndex(SplitSections(bytes));
}

ProfileSection ProfileFile::Section(std::string_view name) const {
  const Entry* const found = m_sections.Find(name);
  return {found ? found->text : std::string_view(), m_isUtf8};
}
