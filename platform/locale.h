#pragma once

#include <cstdint>
#include <string>

/// The user's regional habits for lists of numbers.
struct NumberSeparators {
  std::string decimal;  ///< between whole and fraction
  std::string list;     ///< between the values of a list
};

/// Primary language identifier of the user's locale, the low ten bits of a Windows language id; 0
/// for a language that is not the program's.
uint32_t PrimaryLanguage();

/// Separators of the user's locale. The platform has no list separator of its own: it is ";" where
/// the decimal mark is a comma, otherwise ",".
NumberSeparators LocaleSeparators();
