#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "base/status.h"
#include "markup/xml_reader.h"

namespace {

using std::string_literals::operator""s;

// Counts what it is given.
class CountingReader : public CXmlReader {
 public:
  void StartElement(const XML_Char* name, const XML_Char** attributes) override {
    CXmlReader::StartElement(name, attributes);
    ++elements;
    for (; *attributes; attributes += 2) attributeBytes += std::string_view(attributes[1]).size();
  }
  void EndElement(const XML_Char*) override { textBytes += m_text.size(); }

  size_t elements = 0;
  size_t attributeBytes = 0;
  size_t textBytes = 0;
};

// The error that ends a document; 0 for none.
XML_Error ErrorOf(CountingReader& reader, std::string_view document) {
  try {
    reader.ParseBytes(document);
  } catch (const XML_Error error) {
    return error;
  }
  return XML_ERROR_NONE;
}

XML_Error ErrorOf(std::string_view document) {
  CountingReader reader;
  return ErrorOf(reader, document);
}

// Entities of which each is ten times the one before: the last would take 10^20 bytes.
std::string EntityBomb(const std::string& rest) {
  std::string document = "<!DOCTYPE a [<!ENTITY e0 \"0123456789\">";
  for (int i = 1; i < 20; ++i) {
    document += "<!ENTITY e" + std::to_string(i) + " \"";
    for (int j = 0; j < 10; ++j) document += "&e" + std::to_string(i - 1) + ";";
    document += "\">";
  }
  return document + "]>" + rest;
}

TEST(HostileXml, EntityBombInAnAttributeIsAnError) {
  EXPECT_EQ(ErrorOf(EntityBomb("<a b=\"&e19;\"/>")), XML_ERROR_AMPLIFICATION_LIMIT_BREACH);
}

TEST(HostileXml, EntityBombInTextIsNotExpanded) {
  CountingReader reader;
  EXPECT_EQ(ErrorOf(reader, EntityBomb("<a>&e19;</a>")), XML_ERROR_NONE);
  EXPECT_EQ(reader.textBytes, 0u);
}

TEST(HostileXml, EntityThatHoldsItselfIsAnError) {
  EXPECT_EQ(ErrorOf("<!DOCTYPE a [<!ENTITY e \"&e;\">]><a b=\"&e;\"/>"),
            XML_ERROR_RECURSIVE_ENTITY_REF);
}

TEST(HostileXml, DeepChainOfEntitiesIsAnError) {
  std::string document = "<!DOCTYPE a [<!ENTITY e0 \"x\">";
  for (int i = 1; i < 100000; ++i)
    document += "<!ENTITY e" + std::to_string(i) + " \"&e" + std::to_string(i - 1) + ";\">";
  EXPECT_EQ(ErrorOf(document + "]><a b=\"&e99999;\"/>"), XML_ERROR_AMPLIFICATION_LIMIT_BREACH);
}

// Thousands of default attributes for each of a million elements.
TEST(HostileXml, FloodOfDefaultAttributesIsAnError) {
  std::string document = "<!DOCTYPE a [<!ATTLIST e ";
  for (int i = 0; i < 10000; ++i) document += "a" + std::to_string(i) + " CDATA ''\n";
  document += ">]><a>";
  for (int i = 0; i < 1000000; ++i) document += "<e/>";
  CountingReader reader;
  EXPECT_EQ(ErrorOf(reader, document + "</a>"), XML_ERROR_AMPLIFICATION_LIMIT_BREACH);
  EXPECT_EQ(reader.elements, 0u);
}

// A document of `elements` empty elements, each of which gets `attributes` default attributes.
std::string WithDefaults(int attributes, int elements) {
  std::string document = "<!DOCTYPE a [<!ATTLIST e";
  for (int i = 0; i < attributes; ++i) document += " a" + std::to_string(i) + " CDATA 'x'";
  document += ">]><a>";
  for (int i = 0; i < elements; ++i) document += "<e/>";
  return document + "</a>";
}

// Four for each byte are allowed, besides a million: 1000 in elements of four bytes reach that
// after 1000000 / (1000 - 16) elements and those for some 15000 bytes of declarations.
TEST(HostileXml, DefaultAttributesMayNotOutgrowTheDocument) {
  CountingReader reader;
  EXPECT_EQ(ErrorOf(reader, WithDefaults(1000, 1000000)), XML_ERROR_AMPLIFICATION_LIMIT_BREACH);
  EXPECT_GT(reader.elements, 1000u);
  EXPECT_LT(reader.elements, 1100u);
}

TEST(HostileXml, DefaultAttributesInProportionAreGiven) {
  CountingReader few;
  EXPECT_EQ(ErrorOf(few, WithDefaults(16, 100000)), XML_ERROR_NONE);
  EXPECT_EQ(few.attributeBytes, 1600000u);
  CountingReader twice;
  for (int i = 0; i < 2; ++i) EXPECT_EQ(ErrorOf(twice, WithDefaults(900, 1000)), XML_ERROR_NONE);
  EXPECT_EQ(twice.attributeBytes, 1800000u);  // each document counts for itself
}

TEST(HostileXml, DeclarationsMayTakeSixteenKilobytes) {
  const auto withEntityOf = [](size_t size) {
    return "<!DOCTYPE a [<!ENTITY e \"" + std::string(size, 'x') + "\">]><a b=\"&e;\"/>";
  };
  CountingReader reader;
  EXPECT_EQ(ErrorOf(reader, withEntityOf(16000)), XML_ERROR_NONE);
  EXPECT_EQ(reader.attributeBytes, 16000u);
  EXPECT_EQ(ErrorOf(withEntityOf(17000)), XML_ERROR_AMPLIFICATION_LIMIT_BREACH);
  // Each document counts for itself, and comments don't.
  EXPECT_EQ(ErrorOf(reader, withEntityOf(16000)), XML_ERROR_NONE);
  EXPECT_EQ(ErrorOf("<!DOCTYPE a [<!--" + std::string(20000, 'x') + "-->]><a/>"), XML_ERROR_NONE);
}

TEST(HostileXml, NothingOutsideTheDocumentIsRead) {
  CountingReader reader;
  EXPECT_EQ(ErrorOf(reader, "<!DOCTYPE a [<!ENTITY e SYSTEM \"file:///etc/passwd\">]><a>&e;</a>"),
            XML_ERROR_NONE);
  EXPECT_EQ(reader.textBytes, 0u);
  EXPECT_EQ(ErrorOf("<!DOCTYPE a [<!ENTITY e SYSTEM \"file:///etc/passwd\">]><a b=\"&e;\"/>"),
            XML_ERROR_ATTRIBUTE_EXTERNAL_ENTITY_REF);
}

TEST(HostileXml, AMillionNestedElements) {
  std::string document;
  for (int i = 0; i < 1000000; ++i) document += "<a>";
  CountingReader open;
  EXPECT_EQ(ErrorOf(open, document), XML_ERROR_NO_ELEMENTS);
  EXPECT_EQ(open.elements, 1000000u);
  for (int i = 0; i < 1000000; ++i) document += "</a>";
  CountingReader closed;
  EXPECT_EQ(ErrorOf(closed, document), XML_ERROR_NONE);
  EXPECT_EQ(closed.elements, 1000000u);
}

TEST(HostileXml, TokensOfManyMegabytes) {
  constexpr size_t kSize = 20000000;
  const std::string filler(kSize, 'x');
  CountingReader attribute;
  EXPECT_EQ(ErrorOf(attribute, "<a b=\"" + filler + "\"/>"), XML_ERROR_NONE);
  EXPECT_EQ(attribute.attributeBytes, kSize);
  EXPECT_EQ(ErrorOf("<" + filler + "/>"), XML_ERROR_NONE);
  EXPECT_EQ(ErrorOf("<!--" + filler + "--><a/>"), XML_ERROR_NONE);
  EXPECT_EQ(ErrorOf("<a b=\"" + filler), XML_ERROR_UNCLOSED_TOKEN);
  CountingReader text;
  EXPECT_EQ(ErrorOf(text, "<a>" + filler + "</a>"), XML_ERROR_NONE);
  EXPECT_EQ(text.textBytes, kSize);
}

TEST(HostileXml, AHundredThousandAttributes) {
  std::string document = "<a";
  for (int i = 0; i < 100000; ++i) document += " a" + std::to_string(i) + "='x'";
  CountingReader reader;
  EXPECT_EQ(ErrorOf(reader, document + "/>"), XML_ERROR_NONE);
  EXPECT_EQ(reader.attributeBytes, 100000u);
  EXPECT_EQ(ErrorOf(document + " a1='y'/>"), XML_ERROR_DUPLICATE_ATTRIBUTE);
}

TEST(HostileXml, InvalidUtf8IsAnError) {
  for (const std::string_view bytes :
       {"\x80", "\xC3", "\xC0\xAF", "\xE2\x82", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xFF"}) {
    CountingReader reader;
    EXPECT_EQ(ErrorOf(reader, "<a><b/>" + std::string(bytes) + "</a>"), XML_ERROR_INVALID_TOKEN);
    EXPECT_EQ(reader.elements, 2u);
  }
}

TEST(HostileXml, ControlCharactersAreErrors) {
  EXPECT_EQ(ErrorOf("<a>\0</a>"s), XML_ERROR_INVALID_TOKEN);
  EXPECT_EQ(ErrorOf("<a>\x01</a>"), XML_ERROR_INVALID_TOKEN);
  EXPECT_EQ(ErrorOf("<a>&#0;</a>"), XML_ERROR_BAD_CHAR_REF);
}

TEST(HostileXml, WrongDeclarationsAreErrors) {
  EXPECT_EQ(ErrorOf("<?xml?><a/>"), XML_ERROR_XML_DECL);
  EXPECT_EQ(ErrorOf("<?xml version=\"1.0\" standalone=\"maybe\"?><a/>"), XML_ERROR_XML_DECL);
  EXPECT_EQ(ErrorOf("<?xml version=\"1.0\" encoding=\"UTF-16\"?><a/>"),
            XML_ERROR_INCORRECT_ENCODING);
  EXPECT_EQ(ErrorOf("<a><?xml version=\"1.0\"?></a>"), XML_ERROR_MISPLACED_XML_PI);
  EXPECT_EQ(ErrorOf("<?xml version=\"1.0\"?>"), XML_ERROR_NO_ELEMENTS);
}

TEST(HostileXml, JunkBehindTheDocumentIsAnErrorAfterAllElements) {
  CountingReader reader;
  EXPECT_EQ(ErrorOf(reader, "<a/>junk"), XML_ERROR_JUNK_AFTER_DOC_ELEMENT);
  EXPECT_EQ(reader.elements, 1u);
  EXPECT_EQ(ErrorOf("<a/><b/>"), XML_ERROR_JUNK_AFTER_DOC_ELEMENT);
}

TEST(HostileXml, ADocumentCutAnywhereEndsInAnError) {
  const std::string whole =
      "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><!DOCTYPE a [<!ENTITY e \"x\">]>"
      "<!--c--><a b=\"&e;&lt;\">\xE9<![CDATA[<]]>&amp;<?p i?><c/></a>";
  for (size_t length = 0; length < whole.size(); ++length)
    EXPECT_NE(ErrorOf(std::string_view(whole).substr(0, length)), XML_ERROR_NONE) << length;
  EXPECT_EQ(ErrorOf(whole), XML_ERROR_NONE);
}

}  // namespace
