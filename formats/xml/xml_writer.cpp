#include "formats/xml/xml_writer.h"

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

void WriteEscaped(ByteSink& sink, std::string_view text) {
  size_t written = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    const std::string_view escape = Escape(text[i]);
    if (escape.empty()) continue;
    sink.Write(text.substr(written, i - written));
    sink.Write(escape);
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

CXmlElement::~CXmlElement() {
  if (m_name.empty()) return;
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
  RequireOpenTag();
  m_sink.Put(' ');
  m_sink.Write(name);
  m_sink.Write("=\"");
  WriteEscaped(m_sink, value);
  m_sink.Put('"');
  return *this;
}

CXmlElement CXmlElement::Attribute(std::string_view name, std::string_view value) && {
  return std::move(Attribute(name, value));
}

CXmlElement CXmlElement::Child(std::string_view name) { return {m_sink, m_tagOpen, name}; }

void CXmlElement::Text(std::string_view value) {
  if (m_tagOpen) m_sink.Put('>');
  m_tagOpen = false;
  WriteEscaped(m_sink, value);
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
