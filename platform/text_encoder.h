#pragma once

#include <string>
#include <string_view>

/// Turns UTF-8 into text of an encoding that the system knows by name.
class TextEncoder {
 public:
  TextEncoder() = default;
  ~TextEncoder();
  TextEncoder(const TextEncoder&) = delete;
  TextEncoder& operator=(const TextEncoder&) = delete;

  /// False when the system does not know the encoding; the names are those of the IANA, without
  /// regard to case.
  bool Open(const std::string& encoding);

  /// The bytes of a text; "?" for a character that the encoding lacks, and for a byte that starts
  /// none.
  std::string Encode(std::string_view utf8);
  /// Whether the encoding has one character, given in UTF-8.
  bool Holds(std::string_view character);

 private:
  /// Appends the bytes of as much of the text as can be had. Returns how much that is.
  size_t Append(std::string_view utf8, std::string& bytes);

  void* m_converter = nullptr;
};
