#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

#include <expat.h>

#include "base/wide_string.h"
#include "markup/xml_encoding.h"
#include "platform/sequential_file.h"

/// Where and why a document is not well-formed.
struct XmlFault {
  uint64_t line = 0;    ///< from 1
  uint64_t column = 0;  ///< from 1, in bytes
  std::string text;     ///< Expat's, in English
};

/// Base of every XML reader: a subclass overrides the callbacks and builds its lists as they come.
/// All texts are UTF-8 and end with a zero byte, except those that come with a length; names are
/// as in the document, prefix included. `attributes` holds name and value in turn and ends with a
/// null name.
///
/// A document that declares no encoding is UTF-8; one that declares an encoding unknown to Expat is
/// read byte by byte as the characters of the same values, unless the reader asks for more.
///
/// One object serves one parse: a reader that has failed fails again. An exception that leaves a
/// callback ends the parse and comes out of the parse operation.
class CXmlReader {
 public:
  virtual ~CXmlReader() = default;
  /// Clears the text buffer.
  virtual void StartElement(const XML_Char* name, const XML_Char** attributes);
  virtual void EndElement(const XML_Char* name) = 0;
  /// Appends to the text buffer. One text may come in several pieces.
  virtual void CharacterData(const XML_Char* text, int length);
  virtual void ProcessingInstruction(const XML_Char* target, const XML_Char* data);
  virtual void Comment(const XML_Char* text);
  virtual void StartCdataSection();
  virtual void EndCdataSection();
  /// What no other callback takes, among it the references to entities of the document's own: they
  /// are not expanded.
  virtual void Default(const XML_Char* text, int length);
  /// Maps each byte to the character of its value. False makes the encoding an error.
  virtual bool UnknownEncoding(const XML_Char* name, XML_Encoding* encoding);
  virtual void StartNamespaceDecl(const XML_Char* prefix, const XML_Char* uri);
  virtual void EndNamespaceDecl(const XML_Char* prefix);
  virtual void XmlDecl(const XML_Char* version, const XML_Char* encoding, int standalone);
  virtual void StartDoctypeDecl(const XML_Char* name, const XML_Char* systemId,
                                const XML_Char* publicId, bool hasInternalSubset);
  virtual void EndDoctypeDecl();

  CXmlReader(const CXmlReader&) = delete;
  CXmlReader& operator=(const CXmlReader&) = delete;

  // What stands before the first "<" of a stream or a file, such as a byte-order mark, is passed
  // over. All operations that parse throw the XML_Error of a document that is not well-formed.

  /// Parses the rest of a stream. False when it cannot be read to its end.
  bool ParseStream(std::istream& stream);
  /// As `ParseStream`, for an open file.
  bool ParseFile(SequentialFile& file);
  /// As `ParseStream`, for bytes in memory.
  void ParseBytes(std::string_view bytes);
  /// As `ParseStream`, for bytes from anywhere.
  bool ParseSource(const XmlSource& source);

  /// Parses one whole document, from its first byte on.
  void ParseBuffer(const char* data, size_t length);

  /// `goesOn` is called before each piece of a document with the bytes that were parsed so far;
  /// false ends the parse with the XML_ERROR_ABORTED.
  void Watch(std::function<bool(uint64_t bytesDone)> goesOn);

  /// Expat's number of the last error.
  int ErrorCode() const;
  XmlFault FaultOf(XML_Error error) const;
  /// The text of an error and where it lies, for the debug log.
  std::string DescribeError(XML_Error error) const;

 protected:
  /// Which encodings `ParseStream` and its like understand: those of Expat, or all that the system
  /// knows too, for formats that programs of the desktop write.
  enum class Encodings { kExpats, kSystems };

  /// Throws the XML_Error 0 when there is no memory for a parser.
  explicit CXmlReader(Encodings encodings = Encodings::kExpats);

  std::string m_text;  ///< character data since the last start tag

 private:
  struct Callbacks;
  struct Free {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
  };

  enum class ParseFrom { kFirstByte, kFirstTag };

  void Prepare();
  void CountDeclarations(size_t size);
  void CountDefaultAttributes(const XML_Char** attributes);
  /// False when the source fails.
  bool Parse(const XmlSource& source, ParseFrom start);

  std::unique_ptr<std::remove_pointer_t<XML_Parser>, Free> m_parser;
  const Encodings m_encodings;
  std::function<bool(uint64_t bytesDone)> m_goesOn;
  bool m_initialised = false;
  bool m_inDoctype = false;
  size_t m_declarationSize = 0;      ///< of the document type's declarations so far
  uint64_t m_defaultAttributes = 0;  ///< of all elements so far, from these declarations
  std::exception_ptr m_failure;      ///< left a callback during this parse
};

/// Whether a name that Expat gives is `literal`. Most are told apart by their first character,
/// which is all that this looks at then.
inline bool IsName(const XML_Char* name, std::string_view literal) {
  for (const char character : literal) {
    if (*name++ != character) return false;
  }
  return *name == '\0';
}

/// The value of an attribute; empty when the element has none of this name.
inline std::string_view AttributeValue(const XML_Char** attributes, std::string_view name) {
  for (; *attributes; attributes += 2) {
    if (IsName(attributes[0], name)) return attributes[1];
  }
  return {};
}
