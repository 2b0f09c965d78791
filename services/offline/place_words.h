#pragma once

#include <string>
#include <string_view>

// The index of the towns knows every name twice: word by word, and as one long word, so that a
// whole name and the beginning of one are found by a single look. Accents and case are the index's
// own business.

/// What stands between the words of a long word; the index takes it for a letter.
inline constexpr std::string_view kWordJoint = "\xEE\x80\x80";

/// The words of a text as one. Blanks, hyphens, apostrophes and the like are between words.
inline std::string LongWord(std::string_view text) {
  std::string word;
  bool isBetween = false;
  const auto add = [&](std::string_view letter) {
    if (isBetween && !word.empty()) word += kWordJoint;
    isBetween = false;
    word += letter;
  };
  for (size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    const bool isAsciiLetter = (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
                               (byte >= 'a' && byte <= 'z');
    const std::string_view three = text.substr(i, 3);
    if (three >= "\xE2\x80\x90" && three <= "\xE2\x80\x9F" && three.size() == 3) {
      // Dashes and typographic quotes.
      isBetween = true;
      i += 2;
    } else if (byte < 0x80 && !isAsciiLetter) {
      isBetween = true;
    } else {
      add(text.substr(i, 1));
    }
  }
  return word;
}
