#include "conversion/xml_fault_text.h"

#include <algorithm>
#include <iterator>

#include "base/text_ids.h"

namespace {

struct FaultText {
  XML_Error error;
  uint32_t textId;
};

constexpr FaultText kFaultTexts[] = {
    {XML_ERROR_NO_ELEMENTS, kTextXmlEndsEarly},
    {XML_ERROR_UNCLOSED_TOKEN, kTextXmlEndsInTag},
    {XML_ERROR_PARTIAL_CHAR, kTextXmlEndsInTag},
    {XML_ERROR_TAG_MISMATCH, kTextXmlTagMismatch},
    {XML_ERROR_DUPLICATE_ATTRIBUTE, kTextXmlAttributeTwice},
    {XML_ERROR_JUNK_AFTER_DOC_ELEMENT, kTextXmlGoesOn},
    {XML_ERROR_UNDEFINED_ENTITY, kTextXmlUnknownEntity},
    {XML_ERROR_BAD_CHAR_REF, kTextXmlWrongReference},
    {XML_ERROR_UNKNOWN_ENCODING, kTextXmlUnknownEncoding},
    {XML_ERROR_INCORRECT_ENCODING, kTextXmlUnknownEncoding},
    {XML_ERROR_MISPLACED_XML_PI, kTextXmlLateDeclaration},
    {XML_ERROR_UNCLOSED_CDATA_SECTION, kTextXmlOpenSection},
    {XML_ERROR_UNBOUND_PREFIX, kTextXmlUnknownPrefix},
    {XML_ERROR_AMPLIFICATION_LIMIT_BREACH, kTextXmlGrowsTooMuch},
};

}  // namespace

uint32_t XmlFaultText(XML_Error error) {
  const auto* const found =
      std::find_if(std::begin(kFaultTexts), std::end(kFaultTexts),
                   [error](const FaultText& row) { return row.error == error; });
  return found == std::end(kFaultTexts) ? kTextXmlWrongCharacter : found->textId;
}
