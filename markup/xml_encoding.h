#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/text_decoder.h"

/// Puts up to `size` of a document's next bytes at `data`. Returns how many, 0 only at the end;
/// nothing when they cannot be read.
using XmlSource = std::function<std::optional<size_t>(char* data, size_t size)>;

/// The encoding from which a document has to be converted for Expat, told by its first bytes: a
/// mark, the width of its first character, or the name that it declares. Empty for what Expat reads
/// itself, for what the system does not know, and for windows-1252, which is read byte by byte.
std::string ForeignEncoding(std::string_view start);

/// A document's bytes, as UTF-8 where its encoding is foreign to Expat and known to the system.
class DecodedXmlSource {
 public:
  /// Looks at the document's first bytes.
  explicit DecodedXmlSource(XmlSource source);

  /// Whether the bytes are converted, so that the document's declaration no longer counts.
  bool IsConverted() const { return m_isConverted; }
  /// As XmlSource.
  std::optional<size_t> Read(char* data, size_t size);

 private:
  const XmlSource m_source;
  TextDecoder m_decoder;
  std::string m_piece;  ///< as it was read
  std::string m_text;   ///< to be handed on
  size_t m_taken = 0;   ///< of it
  bool m_isConverted = false;
};
