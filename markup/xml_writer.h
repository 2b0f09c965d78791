#pragma once

#include <string>
#include <string_view>

#include "io/byte_sink.h"

/// An open element of a document. Attributes come first, then text, CDATA or children; the end tag
/// is written when the object goes out of scope, so that elements nest as scopes do. Names are
/// written as they stand.
///
/// A moved-from element has no name and writes nothing more. While an exception is on its way the
/// document is given up, and its open elements write nothing either; otherwise what the sink throws
/// comes out of the destructor.
class CXmlElement {
 public:
  CXmlElement(CXmlElement&& other) noexcept;
  ~CXmlElement() noexcept(false);

  /// Writes ` name="value"` with the value escaped. Throws std::invalid_argument, "Not empty", once
  /// the start tag is finished.
  CXmlElement& Attribute(std::string_view name, std::string_view value) &;
  CXmlElement Attribute(std::string_view name, std::string_view value) &&;

  /// The same with a number as "%.*f", which holds nothing to escape.
  CXmlElement& NumberAttribute(std::string_view name, double value, int decimals) &;
  CXmlElement NumberAttribute(std::string_view name, double value, int decimals) &&;

  /// Opens an element inside this one.
  CXmlElement Child(std::string_view name);

  /// Writes text, escaped. Even an empty text finishes the start tag, and the element then has an
  /// end tag of its own.
  void Text(std::string_view value);
  /// The same with a number as "%.*f".
  void NumberText(double value, int decimals);

  /// Writes text as a CDATA section as it stands, and nothing for an empty one. Throws
  /// std::invalid_argument, "Not empty", once the start tag is finished.
  void Cdata(std::string_view value);

 private:
  friend class CXmlWriter;

  /// Begins the start tag. `tagOpen` belongs to the document.
  CXmlElement(ByteSink& sink, bool& tagOpen, std::string_view name);

  void RequireOpenTag() const;
  void FinishStartTag();
  void OpenAttribute(std::string_view name);

  ByteSink& m_sink;
  bool& m_tagOpen;
  std::string m_name;
};

/// A document, written forward only and without any white space of its own. It must live as long
/// as its elements.
class CXmlWriter {
 public:
  explicit CXmlWriter(ByteSink& sink) : m_sink(sink) {}
  CXmlWriter(const CXmlWriter&) = delete;
  CXmlWriter& operator=(const CXmlWriter&) = delete;

  // These three stand outside of elements; their texts are not escaped.
  void Declaration(std::string_view encoding, std::string_view version);
  void Doctype(std::string_view text);
  void Comment(std::string_view text);

  /// Opens an element.
  CXmlElement Element(std::string_view name);

 private:
  ByteSink& m_sink;
  bool m_tagOpen = false;  ///< the last start tag still lacks its ">"
};
