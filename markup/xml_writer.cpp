#include "markup/xml_writer.h"

#include <array>
#include <exception>
#include <stdexcept>
#include <utility>

namespace {

std::string_view Escape(char character) {
  switch (character) {
    case '"':
      return "&quot;";
    case '&':
      return "&amp;";
    case '\'':
      return "&apos;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    default:
      return {};
  }
}

// Whether `Escape` has something for a byte.
constexpr auto kIsEscaped = [] {
  std::array<bool, 256> isEscaped{};
  for (const char character : std::string_view("\"&'<>"))
    isEscaped[static_cast<unsigned char>(character)] = true;
  return isEscaped;
}();

void WriteEscaped(ByteSink& sink, std::string_view text) {
  size_t written = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    if (!kIsEscaped[static_cast<unsigned char>(text[i])]) continue;
    sink.Write(text.substr(written, i - written));
    sink.Write(Escape(text[i]));
    written = i + 1;
  }
  sink.Write(text.substr(written));
}

}  // namespace

CXmlElement::CXmlElement(ByteSink& sink, bool& tagOpen, std::string_view name)
    : m_sink(sink), m_tagOpen(tagOpen), m_name(name) {
  if (m_tagOpen) m_sink.Put('>');
  m_tagOpen = true;
  m_sink.Put('<');
  m_sink.Write(m_name);
}

CXmlElement::CXmlElement(CXmlElement&& other) noexcept
    : m_sink(other.m_sink),
      m_tagOpen(other.m_tagOpen),
      m_name(std::exchange(other.m_name, std::string())) {}

CXmlElement::~CXmlElement() noexcept(false) {
  if (m_name.empty() || std::uncaught_exceptions() > 0) return;
  if (m_tagOpen) {
    m_sink.Write("/>");
  } else {
    m_sink.Write("</");
    m_sink.Write(m_name);
    m_sink.Put('>');
  }
  m_tagOpen = false;
}

CXmlElement& CXmlElement::Attribute(std::string_view name, std::string_view value) & {
  OpenAttribute(name);
  WriteEscaped(m_sink, value);
  m_sink.Put('"');
  return *this;
}

CXmlElement CXmlElement::Attribute(std::string_view name, std::string_view value) && {
  return std::move(Attribute(name, value));
}

CXmlElement& CXmlElement::NumberAttribute(std::string_view name, double value, int decimals) & {
  OpenAttribute(name);
  m_sink.Fixed(value, decimals);
  m_sink.Put('"');
  return *this;
}

CXmlElement CXmlElement::NumberAttribute(std::string_view name, double value, int decimals) && {
  return std::move(NumberAttribute(name, value, decimals));
}

CXmlElement CXmlElement::Child(std::string_view name) { return {m_sink, m_tagOpen, name}; }

void CXmlElement::Text(std::string_view value) {
  FinishStartTag();
  WriteEscaped(m_sink, value);
}

void CXmlElement::NumberText(double value, int decimals) {
  FinishStartTag();
  m_sink.Fixed(value, decimals);
}

void CXmlElement::Cdata(std::string_view value) {
  RequireOpenTag();
  if (value.empty()) return;
  m_tagOpen = false;
  m_sink.Write("><![CDATA[");
  m_sink.Write(value);
  m_sink.Write("]]>");
}

void CXmlElement::RequireOpenTag() const {
  if (!m_tagOpen) throw std::invalid_argument("Not empty");
}

void CXmlElement::FinishStartTag() {
  if (m_tagOpen) m_sink.Put('>');
  m_tagOpen = false;
}

void CXmlElement::OpenAttribute(std::string_view name) {
  RequireOpenTag();
  m_sink.Put(' ');
  m_sink.Write(name);
  m_sink.Write("=\"");
}

void CXmlWriter::Declaration(std::string_view encoding, std::string_view version) {
  m_sink.Write("<?xml version=\"");
  m_sink.Write(version);
  m_sink.Write("\" encoding=\"");
  m_sink.Write(encoding);
  m_sink.Write("\" standalone=\"no\"?>");
}

void CXmlWriter::Doctype(std::string_view text) {
  m_sink.Write("<!DOCTYPE ");
  m_sink.Write(text);
  m_sink.Put('>');
}

void CXmlWriter::Comment(std::string_view text) {
  m_sink.Write("<!--");
  m_sink.Write(text);
  m_sink.Write("-->");
}

CXmlElement CXmlWriter::Element(std::string_view name) { return {m_sink, m_tagOpen, name}; }
