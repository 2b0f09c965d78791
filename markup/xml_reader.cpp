#include "markup/xml_reader.h"

#include <algorithm>
#include <cstring>
#include <istream>
#include <utility>

#include <fmt/format.h>

namespace {

// Documents are read into Expat's buffer piece by piece. A piece in which nothing came to an end is
// followed by one of twice the size: a token of many megabytes would otherwise be scanned from its
// start with every piece.
constexpr size_t kPieceSize = size_t{1} << 17;
constexpr size_t kLargestPiece = size_t{1} << 30;

// Bytes of declarations that a document may bring along. Expat limits what entities expand to, but
// not how many default attributes it has to put into each element.
constexpr size_t kMostDeclarations = size_t{1} << 14;

// Default attributes that its elements may have in all, and for each of its bytes: these
// declarations are room for a thousand in every element of four bytes.
constexpr uint64_t kSpareDefaultAttributes = 1000000;
constexpr uint64_t kDefaultAttributesPerByte = 4;

XmlSource SourceOf(std::string_view bytes) {
  return [bytes](char* data, size_t size) mutable -> std::optional<size_t> {
    const size_t count = bytes.copy(data, size);
    bytes.remove_prefix(count);
    return count;
  };
}

}  // namespace

// What Expat calls. No exception may pass through its C code: the first one is kept and ends the
// parse, and whatever Expat still reports after that is not heard.
struct CXmlReader::Callbacks {
  template <typename Call>
  static void Forward(void* data, Call&& call) {
    auto& reader = *static_cast<CXmlReader*>(data);
    if (reader.m_failure) return;
    try {
      call(reader);
    } catch (...) {
      reader.m_failure = std::current_exception();
      XML_StopParser(reader.m_parser.get(), XML_FALSE);
    }
  }

  static void StartElement(void* data, const XML_Char* name, const XML_Char** attributes) {
    Forward(data, [=](CXmlReader& reader) {
      if (reader.m_declarationSize > 0) reader.CountDefaultAttributes(attributes);
      reader.StartElement(name, attributes);
    });
  }
  static void EndElement(void* data, const XML_Char* name) {
    Forward(data, [=](CXmlReader& reader) { reader.EndElement(name); });
  }
  static void CharacterData(void* data, const XML_Char* text, int length) {
    Forward(data, [=](CXmlReader& reader) { reader.CharacterData(text, length); });
  }
  static void ProcessingInstruction(void* data, const XML_Char* target, const XML_Char* text) {
    Forward(data, [=](CXmlReader& reader) { reader.ProcessingInstruction(target, text); });
  }
  static void Comment(void* data, const XML_Char* text) {
    Forward(data, [=](CXmlReader& reader) { reader.Comment(text); });
  }
  static void StartCdataSection(void* data) {
    Forward(data, [](CXmlReader& reader) { reader.StartCdataSection(); });
  }
  static void EndCdataSection(void* data) {
    Forward(data, [](CXmlReader& reader) { reader.EndCdataSection(); });
  }
  static void Default(void* data, const XML_Char* text, int length) {
    Forward(data, [=](CXmlReader& reader) {
      if (reader.m_inDoctype) reader.CountDeclarations(static_cast<size_t>(length));
      reader.Default(text, length);
    });
  }
  static int UnknownEncoding(void* data, const XML_Char* name, XML_Encoding* encoding) {
    bool isKnown = false;
    Forward(data, [&](CXmlReader& reader) { isKnown = reader.UnknownEncoding(name, encoding); });
    return isKnown ? XML_STATUS_OK : XML_STATUS_ERROR;
  }
  static void StartNamespaceDecl(void* data, const XML_Char* prefix, const XML_Char* uri) {
    Forward(data, [=](CXmlReader& reader) { reader.StartNamespaceDecl(prefix, uri); });
  }
  static void EndNamespaceDecl(void* data, const XML_Char* prefix) {
    Forward(data, [=](CXmlReader& reader) { reader.EndNamespaceDecl(prefix); });
  }
  static void XmlDecl(void* data, const XML_Char* version, const XML_Char* encoding,
                      int standalone) {
    Forward(data, [=](CXmlReader& reader) { reader.XmlDecl(version, encoding, standalone); });
  }
  static void StartDoctypeDecl(void* data, const XML_Char* name, const XML_Char* systemId,
                               const XML_Char* publicId, int hasInternalSubset) {
    Forward(data, [=](CXmlReader& reader) {
      reader.m_inDoctype = true;
      reader.StartDoctypeDecl(name, systemId, publicId, hasInternalSubset != 0);
    });
  }
  static void EndDoctypeDecl(void* data) {
    Forward(data, [](CXmlReader& reader) {
      reader.m_inDoctype = false;
      reader.EndDoctypeDecl();
    });
  }
};

CXmlReader::CXmlReader(Encodings encodings)
    : m_parser(XML_ParserCreate("UTF-8")), m_encodings(encodings) {
  if (!m_parser) throw XML_ERROR_NONE;
}

void CXmlReader::StartElement(const XML_Char*, const XML_Char**) { m_text.clear(); }

void CXmlReader::CharacterData(const XML_Char* text, int length) {
  m_text.append(text, static_cast<size_t>(length));
}

void CXmlReader::ProcessingInstruction(const XML_Char*, const XML_Char*) {}
void CXmlReader::Comment(const XML_Char*) {}
void CXmlReader::StartCdataSection() {}
void CXmlReader::EndCdataSection() {}
void CXmlReader::Default(const XML_Char*, int) {}

bool CXmlReader::UnknownEncoding(const XML_Char*, XML_Encoding* encoding) {
  if (!encoding) return true;
  for (int i = 0; i < 256; ++i) encoding->map[i] = i;
  return true;
}

void CXmlReader::StartNamespaceDecl(const XML_Char*, const XML_Char*) {}
void CXmlReader::EndNamespaceDecl(const XML_Char*) {}
void CXmlReader::XmlDecl(const XML_Char*, const XML_Char*, int) {}
void CXmlReader::StartDoctypeDecl(const XML_Char*, const XML_Char*, const XML_Char*, bool) {}
void CXmlReader::EndDoctypeDecl() {}

bool CXmlReader::ParseStream(std::istream& stream) {
  return ParseSource([&stream](char* data, size_t size) -> std::optional<size_t> {
    stream.read(data, static_cast<std::streamsize>(size));
    if (stream.bad()) return std::nullopt;
    return static_cast<size_t>(stream.gcount());
  });
}

bool CXmlReader::ParseFile(SequentialFile& file) {
  return ParseSource([&file](char* data, size_t size) { return file.Read(data, size); });
}

void CXmlReader::ParseBytes(std::string_view bytes) { ParseSource(SourceOf(bytes)); }

bool CXmlReader::ParseSource(const XmlSource& source) {
  if (m_encodings == Encodings::kExpats) return Parse(source, ParseFrom::kFirstTag);
  DecodedXmlSource decoded(source);
  Prepare();
  // Goes before what the document declares.
  if (decoded.IsConverted()) XML_SetEncoding(m_parser.get(), "UTF-8");
  return Parse([&decoded](char* data, size_t size) { return decoded.Read(data, size); },
               ParseFrom::kFirstTag);
}

void CXmlReader::ParseBuffer(const char* data, size_t length) {
  Parse(SourceOf({data, length}), ParseFrom::kFirstByte);
}

int CXmlReader::ErrorCode() const { return XML_GetErrorCode(m_parser.get()); }

void CXmlReader::Watch(std::function<bool(uint64_t bytesDone)> goesOn) {
  m_goesOn = std::move(goesOn);
}

XmlFault CXmlReader::FaultOf(XML_Error error) const {
  const XML_LChar* const text = XML_ErrorString(error);
  return {XML_GetCurrentLineNumber(m_parser.get()),
          uint64_t{XML_GetCurrentColumnNumber(m_parser.get())} + 1, text ? text : "no parser"};
}

std::string CXmlReader::DescribeError(XML_Error error) const {
  const XmlFault fault = FaultOf(error);
  return fmt::format("line {}, column {}: {}", fault.line, fault.column - 1, fault.text);
}

// The reset drops the encoding given at creation: from here on the document's own declaration
// decides. It also refuses a null parser.
void CXmlReader::Prepare() {
  if (m_initialised) return;
  auto* const parser = m_parser.get();
  if (!XML_ParserReset(parser, nullptr)) throw XML_ERROR_NONE;
  XML_SetUserData(parser, this);
  XML_SetElementHandler(parser, Callbacks::StartElement, Callbacks::EndElement);
  XML_SetCharacterDataHandler(parser, Callbacks::CharacterData);
  XML_SetProcessingInstructionHandler(parser, Callbacks::ProcessingInstruction);
  XML_SetCommentHandler(parser, Callbacks::Comment);
  XML_SetCdataSectionHandler(parser, Callbacks::StartCdataSection, Callbacks::EndCdataSection);
  XML_SetUnknownEncodingHandler(parser, Callbacks::UnknownEncoding, this);
  XML_SetNamespaceDeclHandler(parser, Callbacks::StartNamespaceDecl, Callbacks::EndNamespaceDecl);
  XML_SetXmlDeclHandler(parser, Callbacks::XmlDecl);
  XML_SetDoctypeDeclHandler(parser, Callbacks::StartDoctypeDecl, Callbacks::EndDoctypeDecl);
  XML_SetDefaultHandler(parser, Callbacks::Default);
  m_inDoctype = false;
  m_declarationSize = 0;
  m_defaultAttributes = 0;
  m_initialised = true;
}

void CXmlReader::CountDeclarations(size_t size) {
  m_declarationSize += size;
  if (m_declarationSize > kMostDeclarations) throw XML_ERROR_AMPLIFICATION_LIMIT_BREACH;
}

// Those that stand in the tag itself come first.
void CXmlReader::CountDefaultAttributes(const XML_Char** attributes) {
  attributes += XML_GetSpecifiedAttributeCount(m_parser.get());
  for (; *attributes; attributes += 2) ++m_defaultAttributes;
  const auto bytes = static_cast<uint64_t>(XML_GetCurrentByteIndex(m_parser.get()));
  if (m_defaultAttributes > kSpareDefaultAttributes + kDefaultAttributesPerByte * bytes)
    throw XML_ERROR_AMPLIFICATION_LIMIT_BREACH;
}

bool CXmlReader::Parse(const XmlSource& source, ParseFrom start) {
  Prepare();
  auto* const parser = m_parser.get();
  size_t pieceSize = kPieceSize;
  XML_Index position = -1;
  bool hasStarted = start == ParseFrom::kFirstByte;
  uint64_t bytesDone = 0;
  for (bool isAtEnd = false; !isAtEnd;) {
    if (m_goesOn && !m_goesOn(bytesDone)) throw XML_ERROR_ABORTED;
    auto* const buffer = static_cast<char*>(XML_GetBuffer(parser, static_cast<int>(pieceSize)));
    if (!buffer) throw XML_GetErrorCode(parser);
    const std::optional<size_t> count = source(buffer, pieceSize);
    if (!count) {
      m_initialised = false;
      return false;
    }
    isAtEnd = *count == 0;
    bytesDone += *count;
    std::string_view piece(buffer, *count);
    if (!hasStarted) {
      piece.remove_prefix(std::min(piece.find('<'), piece.size()));
      hasStarted = !piece.empty();
      if (!hasStarted && !isAtEnd) continue;
      std::memmove(buffer, piece.data(), piece.size());
    }

    const XML_Status status = XML_ParseBuffer(parser, static_cast<int>(piece.size()), isAtEnd);
    if (m_failure) std::rethrow_exception(std::exchange(m_failure, nullptr));
    if (status != XML_STATUS_OK) throw XML_GetErrorCode(parser);
    const XML_Index newPosition = XML_GetCurrentByteIndex(parser);
    if (newPosition == position) pieceSize = std::min(2 * pieceSize, kLargestPiece);
    position = newPosition;
  }
  m_initialised = false;
  return true;
}
