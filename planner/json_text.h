#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "io/byte_sink.h"

/// JSON text for the page, written forward. Numbers read back as the same double; what is no
/// number is null.
class JsonText {
 public:
  JsonText& BeginObject() { return Begin('{', '}'); }
  JsonText& BeginArray() { return Begin('[', ']'); }
  /// Ends the array or object that was begun last.
  JsonText& End();
  /// The name of the value that follows, in an object.
  JsonText& Key(std::string_view name);
  JsonText& Text(std::string_view text);
  JsonText& Number(double number);
  JsonText& Boolean(bool value);
  JsonText& Null();

  /// All text so far.
  const std::string& Result() { return m_sink.Bytes(); }

 private:
  JsonText& Begin(char open, char close);
  void Separate();

  StringSink m_sink;
  std::vector<char> m_ends;
  bool m_needsComma = false;
};
