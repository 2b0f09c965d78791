#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// Profile files of Windows: text of sections "[Name]" with lines "Key = Value". What a reader of
// the system's own calls would get counts: names without case, blanks around names and values cut,
// one pair of quotes around a value cut, lines that begin with ";" passed over, the first of equal
// names.

/// What a text is that the file doesn't hold, unless the caller says otherwise.
inline constexpr std::string_view kProfileError = "R_ERROR";

/// How the text of a file is read that has no mark. UTF-16 and UTF-8 with a mark are understood
/// always.
enum class ProfileText {
  kNarrow,        ///< 8 bits a character
  kUtf8OrNarrow,  ///< UTF-8 where the whole file is valid UTF-8, otherwise 8 bits a character
};

/// Names with a text each: the sections of a file, or the keys of a section. A look-up takes
/// logarithmic time, or constant time for the name behind the one found last: so numbered names
/// are walked. Look-ups of one index are made on one thread.
class ProfileIndex {
 public:
  /// A name and what belongs to it, views into the file.
  struct Entry {
    std::string_view name;
    std::string_view text;
  };

  ProfileIndex() = default;
  /// Takes the entries in the order of the file.
  explicit ProfileIndex(std::vector<Entry> entries);

  /// The entry of this name, or null.
  const Entry* Find(std::string_view name) const;
  /// One entry a name, shorter names first, names of one length in alphabetical order.
  const std::vector<Entry>& Entries() const { return m_entries; }

 private:
  std::vector<Entry> m_entries;
  mutable size_t m_next = 0;  ///< the entry behind the one found last
};

/// The keys of one section. It lives no longer than its file.
class ProfileSection {
 public:
  /// The value of `key` in UTF-8, or `defaultText`.
  std::string GetText(std::string_view key, std::string_view defaultText = kProfileError) const;
  const ProfileIndex& Keys() const { return m_keys; }

 private:
  friend class ProfileFile;
  ProfileSection(std::string_view body, bool isUtf8);

  ProfileIndex m_keys;
  bool m_isUtf8;
};

/// A whole profile file in memory.
class ProfileFile {
 public:
  /// `bytes` must live as long as this object.
  ProfileFile(std::string_view bytes, ProfileText unmarkedText);
  ProfileFile(const ProfileFile&) = delete;
  ProfileFile& operator=(const ProfileFile&) = delete;

  /// The section of this name; one without keys when there is none. Each call goes once through
  /// the section's lines.
  ProfileSection Section(std::string_view name) const;
  const ProfileIndex& Sections() const { return m_sections; }

 private:
  std::string m_decoded;  ///< the text of a UTF-16 file, otherwise empty
  ProfileIndex m_sections;
  bool m_isUtf8;
};
