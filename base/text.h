#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/wide_string.h"

// Three forms of text: wide (UTF-16: paths, everything shown), narrow UTF-8 (names and comments of
// points, XML, JSON) and narrow 8-bit (older file formats; one byte is the character U+0000 to
// U+00FF of that value).

/// UTF-8 to wide. Throws std::range_error for text that is no UTF-8.
WideString Utf8ToWide(std::string_view text);

/// Wide to UTF-8. Throws std::range_error for an unpaired surrogate.
std::string WideToUtf8(std::u16string_view text);

/// As `Utf8ToWide`, with U+FFFD for every byte that starts no character.
WideString Utf8ToWideLossy(std::string_view text);

/// As `WideToUtf8`, with U+FFFD for every unpaired surrogate.
std::string WideToUtf8Lossy(std::u16string_view text);

/// Widens each byte to the character of the same value; for numbers and keys.
WideString WidenAscii(std::string_view text);

/// Narrows wide text to 8 bits. A unit above U+00FF becomes "?", so that a character outside the
/// BMP becomes "??".
std::string NarrowForFile(std::u16string_view text);

/// Narrows UTF-8 text to 8 bits as `NarrowForFile` does. A byte that starts no character
/// becomes "?".
std::string NarrowUtf8(std::string_view text);

/// Appends what `NarrowUtf8` gives to `output`.
void AppendNarrowUtf8(std::string& output, std::string_view text);

/// 8-bit text to UTF-8. Never fails.
std::string WidenToUtf8(std::string_view text);

/// The text with U+FFFD for every byte that starts no character, and so valid UTF-8.
std::string MendUtf8(std::string_view text);

/// True when `text` is valid UTF-8 throughout.
bool IsValidUtf8(std::string_view text);

/// Encoding of a text file.
enum EFileEncoding : uint32_t {
  kEncodingNarrow = 0,  ///< no mark, 8-bit text
  kEncodingUtf8 = 1,    ///< UTF-8 with mark
  kEncodingUtf16Be = 2,
  kEncodingUtf16Le = 3,
  kEncodingUtf32Be = 4,
  kEncodingUtf32Le = 5,
};

/// What `DetectEncoding` found.
struct DetectedEncoding {
  EFileEncoding encoding;
  size_t skipped;  ///< bytes to skip; the guesses skip as many as the mark would take
};

/// Tells the encoding of a file from its first four bytes: a mark, or else a guess from where the
/// zero bytes stand. Missing bytes of a shorter file count as 0.
DetectedEncoding DetectEncoding(std::string_view bytes);

/// The whole of a text file as wide text: encoding by `DetectEncoding`, its mark skipped. 8-bit
/// text is widened byte by byte; what cannot be decoded becomes U+FFFD, a cut last unit is dropped.
WideString DecodeTextFile(std::string_view bytes);

/// As `DecodeTextFile`, in UTF-8.
std::string DecodeTextFileToUtf8(std::string_view bytes);

/// UTF-16 little-endian to UTF-8, with U+FFFD for every unpaired surrogate. An odd last byte is
/// dropped.
std::string Utf16LeToUtf8(std::string_view bytes);

/// Takes lines off the front of a text. A line ends at LF; a CR right before it belongs to the
/// end. The last line needs no end.
template <typename Char>
class BasicLineSplitter {
 public:
  using View = std::basic_string_view<Char>;

  explicit BasicLineSplitter(View text) : m_text(text) {}

  /// Gives the next line without its end. False when no text is left.
  bool Next(View& line) {
    if (m_position >= m_text.size()) return false;
    const size_t end = m_text.find(Char{'\n'}, m_position);
    const size_t stop = end == View::npos ? m_text.size() : end;
    line = m_text.substr(m_position, stop - m_position);
    if (end != View::npos && !line.empty() && line.back() == Char{'\r'}) line.remove_suffix(1);
    m_position = end == View::npos ? m_text.size() : end + 1;
    return true;
  }

  /// Offset of the first character behind the line given last.
  size_t Position() const { return m_position; }

 private:
  View m_text;
  size_t m_position = 0;
};

using LineSplitter = BasicLineSplitter<char>;
using WideLineSplitter = BasicLineSplitter<char16_t>;

/// Splits `text` at every `separator` into `fields`, which is emptied first. Empty fields count,
/// and so does the rest behind the last separator.
void SplitFields(std::string_view text, char separator, std::vector<std::string_view>& fields);
void SplitFields(std::u16string_view text, char16_t separator,
                 std::vector<std::u16string_view>& fields);

/// As `SplitFields`, but gives at most `limit` fields and leaves the rest of the text out, for
/// lines of which only the first fields count, whatever their length.
void SplitFirstFields(std::string_view text, char separator, size_t limit,
                      std::vector<std::string_view>& fields);

/// `text` without the given characters at its start, at its end, or at both.
std::string_view TrimLeft(std::string_view text, std::string_view characters);
std::string_view TrimRight(std::string_view text, std::string_view characters);
std::string_view Trim(std::string_view text, std::string_view characters);

/// Lower case of the letters A to Z; all else stays.
std::string ToLowerAscii(std::string_view text);
WideString ToLowerAscii(std::u16string_view text);

/// Equality without regard to the case of A to Z.
bool EqualsIgnoringCase(std::u16string_view first, std::u16string_view second);

/// Parts of a path. A folder ends at the last "/" or "\"; an extension begins at the last ".".
std::u16string_view FileNameOfPath(std::u16string_view path);
/// The text behind the last "." of the whole path, without the dot; empty when there is none.
std::u16string_view ExtensionOfPath(std::u16string_view path);
/// The file name without folder and without its last extension.
std::u16string_view FileTitleOfPath(std::u16string_view path);
