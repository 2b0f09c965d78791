#pragma once

#include <string>
#include <string_view>

/// Turns text of an encoding that the system knows by name into UTF-8, piece by piece.
class TextDecoder {
 public:
  TextDecoder() = default;
  ~TextDecoder();
  TextDecoder(const TextDecoder&) = delete;
  TextDecoder& operator=(const TextDecoder&) = delete;

  /// Begins a text. False when the system does not know the encoding; the names are those of the
  /// IANA, without regard to case.
  bool Open(const std::string& encoding);

  /// Appends the UTF-8 of the next bytes to `text`. A character that is cut at their end waits for
  /// the next piece; a byte that starts none comes out as U+FFFD.
  void Decode(std::string_view bytes, std::string& text);
  /// Ends the text: a character that is still cut comes out as U+FFFD.
  void Finish(std::string& text);

 private:
  void* m_converter = nullptr;
  std::string m_rest;  ///< of the last piece: the start of a character
};
