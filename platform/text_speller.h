#pragma once

#include <string>
#include <string_view>

/// Spells text in other letters. Texts are UTF-8.
class TextSpeller {
 public:
  virtual ~TextSpeller() = default;

  /// With letters and their accents put together into one character each.
  virtual std::string Compose(std::string_view text) const = 0;
  /// Other alphabets in Latin letters, which may have accents.
  virtual std::string InLatin(std::string_view text) const = 0;
  /// Latin letters without accents, and quotes and dashes as ASCII has them.
  virtual std::string InAscii(std::string_view text) const = 0;
};

/// The speller, which is loaded at its first use and stays; null when that part of the program is
/// not installed.
const TextSpeller* LoadTextSpeller();
