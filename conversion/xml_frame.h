#pragma once

#include <string_view>

#include "base/wide_string.h"
#include "conversion/conversion_context.h"
#include "conversion/format_table.h"
#include "markup/xml_reader.h"

// The frame of XML formats. Files are read piece by piece.

/// Parses a document with `reader`. 0, or 1 for one that is not well-formed; where and why is in
/// the context.
uint32_t ParseXmlBytes(CXmlReader& reader, std::string_view bytes, ConversionContext& context);

/// The same for bytes from anywhere; 1 also when they cannot be read to their end.
uint32_t ParseXmlSource(CXmlReader& reader, ConversionContext& context, const XmlSource& source);

/// The same for the file at `path`, or for what comes in its place; 1 also when it cannot be
/// opened.
uint32_t ReadXmlFile(CXmlReader& reader, const WideString& path, ConversionContext& context);

/// The reader and the inner function of a format that `Reader` reads: a CXmlReader that is made
/// from lists and context.
template <typename Reader>
uint32_t ReadXmlFileOf(const WideString& path, PointLists& lists, bool) {
  ContextInPlace context;
  Reader reader(lists, *context);
  return ReadXmlFile(reader, path, *context);
}
template <typename Reader>
uint32_t ParseXmlOf(std::string_view bytes, PointLists& lists, ConversionContext& context) {
  Reader reader(lists, context);
  return ParseXmlBytes(reader, bytes, context);
}
