#include "planner/json_text.h"

#include <cmath>

#include <fmt/format.h>

#include "markup/json_string.h"

JsonText& JsonText::Begin(char open, char close) {
  Separate();
  m_sink.Put(open);
  m_ends.push_back(close);
  m_needsComma = false;
  return *this;
}

JsonText& JsonText::End() {
  m_sink.Put(m_ends.back());
  m_ends.pop_back();
  m_needsComma = true;
  return *this;
}

void JsonText::Separate() {
  if (m_needsComma) m_sink.Write(", ");
  m_needsComma = true;
}

JsonText& JsonText::Key(std::string_view name) {
  Separate();
  WriteJsonString(m_sink, name);
  m_sink.Write(": ");
  m_needsComma = false;
  return *this;
}

JsonText& JsonText::Text(std::string_view text) {
  Separate();
  WriteJsonString(m_sink, text);
  return *this;
}

JsonText& JsonText::Number(double number) {
  Separate();
  m_sink.Write(std::isfinite(number) ? fmt::format("{}", number) : "null");
  return *this;
}

JsonText& JsonText::Null() {
  Separate();
  m_sink.Write("null");
  return *this;
}

JsonText& JsonText::Boolean(bool value) {
  Separate();
  m_sink.Write(value ? "true" : "false");
  return *this;
}
