#include "markup/xml_reader.h"

#include <cstdlib>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/status.h"
#include "tests/temporary_folder.h"

namespace {

using std::string_literals::operator""s;
using testing::ElementsAre;
using testing::HasSubstr;
using Events = std::vector<std::string>;

std::string OrNull(const XML_Char* text) { return text ? text : "(null)"; }

// Writes down every call.
class RecordingReader : public CXmlReader {
 public:
  void StartElement(const XML_Char* name, const XML_Char** attributes) override {
    CXmlReader::StartElement(name, attributes);
    std::string event = "<"s + name;
    for (; *attributes; attributes += 2) event += " "s + attributes[0] + "=" + attributes[1];
    events.push_back(event);
  }
  void EndElement(const XML_Char* name) override {
    if (!m_text.empty()) events.push_back("text " + m_text);
    events.push_back(">"s + name);
  }
  void CharacterData(const XML_Char* text, int length) override {
    CXmlReader::CharacterData(text, length);
    ++pieces;
  }
  void ProcessingInstruction(const XML_Char* target, const XML_Char* data) override {
    events.push_back("pi "s + target + " " + data);
  }
  void Comment(const XML_Char* text) override { events.push_back("comment "s + text); }
  void StartCdataSection() override { events.push_back("cdata"); }
  void EndCdataSection() override { events.push_back("/cdata"); }
  void Default(const XML_Char* text, int length) override {
    rest.append(text, static_cast<size_t>(length));
  }
  bool UnknownEncoding(const XML_Char* name, XML_Encoding* encoding) override {
    events.push_back("encoding "s + name);
    return knowsEncodings && CXmlReader::UnknownEncoding(name, encoding);
  }
  void StartNamespaceDecl(const XML_Char* prefix, const XML_Char*) override {
    events.push_back("namespace " + OrNull(prefix));
  }
  void XmlDecl(const XML_Char* version, const XML_Char* encoding, int standalone) override {
    events.push_back(fmt::format("xml {} {} {}", OrNull(version), OrNull(encoding), standalone));
  }
  void StartDoctypeDecl(const XML_Char* name, const XML_Char* systemId, const XML_Char* publicId,
                        bool hasInternalSubset) override {
    events.push_back(fmt::format("doctype {} {} {} {}", name, OrNull(systemId), OrNull(publicId),
                                 hasInternalSubset));
  }
  void EndDoctypeDecl() override { events.push_back("/doctype"); }

  Events events;
  std::string rest;
  int pieces = 0;
  bool knowsEncodings = true;
};

// The events of a document that must be well-formed.
Events EventsOf(std::string_view document) {
  RecordingReader reader;
  reader.ParseBuffer(document.data(), document.size());
  return reader.events;
}

// The error of a document that must not be well-formed.
XML_Error ErrorOf(CXmlReader& reader, std::string_view document) {
  try {
    reader.ParseBuffer(document.data(), document.size());
  } catch (const XML_Error error) {
    return error;
  }
  ADD_FAILURE() << "no error";
  return XML_ERROR_NONE;
}

XML_Error ErrorOf(std::string_view document) {
  RecordingReader reader;
  return ErrorOf(reader, document);
}

TEST(XmlReader, GivesElementsAttributesAndText) {
  EXPECT_THAT(EventsOf("<a x='1' y=\"2\">one<b/>two</a>"),
              ElementsAre("<a x=1 y=2", "<b", ">b", "text two", ">a"));
}

TEST(XmlReader, TextCountsFromTheLastStartTag) {
  EXPECT_THAT(EventsOf("<a>1<b>2</b>3</a>"),
              ElementsAre("<a", "<b", "text 2", ">b", "text 23", ">a"));
}

TEST(XmlReader, CollectsTextThatComesInPieces) {
  RecordingReader reader;
  reader.ParseBytes("<a>one &amp; two\nthree &#x141;<![CDATA[<4>]]></a>");
  EXPECT_THAT(reader.events,
              ElementsAre("<a", "cdata", "/cdata", "text one & two\nthree \u0141<4>", ">a"));
  EXPECT_GT(reader.pieces, 1);
}

TEST(XmlReader, ReportsEveryKindOfEvent) {
  EXPECT_THAT(EventsOf("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>"
                       "<!DOCTYPE a PUBLIC \"p\" \"s\" [<!ELEMENT a ANY>]>"
                       "<?do this now?><!-- note --><a><![CDATA[<]]></a>"),
              ElementsAre("xml 1.0 UTF-8 1", "doctype a s p true", "/doctype", "pi do this now",
                          "comment  note ", "<a", "cdata", "/cdata", "text <", ">a"));
  EXPECT_THAT(EventsOf("<?xml version=\"1.0\"?><!DOCTYPE a SYSTEM \"s\"><a/>"),
              ElementsAre("xml 1.0 (null) -1", "doctype a s (null) false", "/doctype", "<a", ">a"));
}

TEST(XmlReader, NamesKeepTheirPrefixAndNamespacesAreNotReported) {
  EXPECT_THAT(EventsOf("<gx:Tour xmlns:gx=\"u\" gx:id=\"1\"/>"),
              ElementsAre("<gx:Tour xmlns:gx=u gx:id=1", ">gx:Tour"));
  EXPECT_THAT(EventsOf("<undeclared:a/>"), ElementsAre("<undeclared:a", ">undeclared:a"));
}

TEST(XmlReader, EntitiesOfTheDocumentGoToDefaultAndAreLost) {
  RecordingReader reader;
  reader.ParseBytes("<!DOCTYPE a [<!ENTITY e \"value\">]><a>1&e;2&lt;</a>");
  EXPECT_THAT(reader.events,
              ElementsAre("doctype a (null) (null) true", "/doctype", "<a", "text 12<", ">a"));
  EXPECT_THAT(reader.rest, HasSubstr("&e;"));
}

TEST(XmlReader, EntitiesInAttributesAreExpanded) {
  EXPECT_THAT(EventsOf("<!DOCTYPE a [<!ENTITY e \"v\">]><a b=\"1&e;2\"/>"),
              ElementsAre("doctype a (null) (null) true", "/doctype", "<a b=1v2", ">a"));
}

TEST(XmlReader, EncodingsWithoutADeclarationAndDeclared) {
  EXPECT_THAT(EventsOf("<a>caf\xC3\xA9</a>"), ElementsAre("<a", "text caf\u00e9", ">a"));
  EXPECT_THAT(EventsOf("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><a>caf\xE9</a>"),
              ElementsAre("xml 1.0 ISO-8859-1 -1", "<a", "text caf\u00e9", ">a"));
  EXPECT_THAT(EventsOf("<?xml version=\"1.0\" encoding=\"US-ASCII\"?><a>cafe</a>"),
              ElementsAre("xml 1.0 US-ASCII -1", "<a", "text cafe", ">a"));
}

TEST(XmlReader, UnknownEncodingsAreReadByteForByte) {
  EXPECT_THAT(EventsOf("<?xml version=\"1.0\" encoding=\"windows-1252\"?><a>\xE9\x80\x9F</a>"),
              ElementsAre("xml 1.0 windows-1252 -1", "encoding windows-1252", "<a",
                          "text \u00e9\u0080\u009f", ">a"));
}

TEST(XmlReader, AnEncodingThatTheReaderRefusesIsAnError) {
  RecordingReader reader;
  reader.knowsEncodings = false;
  EXPECT_EQ(ErrorOf(reader, "<?xml version=\"1.0\" encoding=\"x-none\"?><a/>"),
            XML_ERROR_UNKNOWN_ENCODING);
}

TEST(XmlReader, UnknownEncodingWithoutARecordIsAccepted) {
  RecordingReader reader;
  EXPECT_TRUE(reader.UnknownEncoding("x-none", nullptr));
  XML_Encoding encoding{};
  EXPECT_TRUE(reader.UnknownEncoding("x-none", &encoding));
  for (int i = 0; i < 256; ++i) EXPECT_EQ(encoding.map[i], i);
}

TEST(XmlReader, ReadsUtf16OfEitherOrder) {
  const std::string littleEndian = "<\0a\0>\0\x41\x01<\0/\0a\0>\0"s;
  const std::string bigEndian = "\0<\0a\0>\x01\x41\0<\0/\0a\0>"s;
  EXPECT_THAT(EventsOf(littleEndian), ElementsAre("<a", "text \u0141", ">a"));
  EXPECT_THAT(EventsOf(bigEndian), ElementsAre("<a", "text \u0141", ">a"));
}

TEST(XmlReader, ReadsUtf16WithAMarkAndADeclaration) {
  std::string document = "\xFF\xFE";
  for (const char character : "<?xml version='1.0' encoding='UTF-16'?><a>"s)
    document += {character, '\0'};
  document += "\x41\x01";
  for (const char character : "</a>"s) document += {character, '\0'};
  RecordingReader reader;
  reader.ParseBytes(document);
  EXPECT_THAT(reader.events, ElementsAre("xml 1.0 UTF-16 -1", "<a", "text \u0141", ">a"));
}

// Junk is dropped byte by byte: of a big-endian character the first byte goes with it, and what
// is left looks little-endian and lacks its last byte.
TEST(XmlReader, JunkBeforeBigEndianTextEndsInAnErrorAtTheLastTag) {
  RecordingReader reader;
  EXPECT_THROW(reader.ParseBytes("\xFE\xFF\0<\0a\0>\0x\0<\0/\0a\0>"s), XML_Error);
  EXPECT_THAT(reader.events, ElementsAre("<a"));
  RecordingReader other;
  other.ParseBytes("\xFF\xFE<\0a\0>\0x\0<\0/\0a\0>\0"s);
  EXPECT_THAT(other.events, ElementsAre("<a", "text x", ">a"));
}

TEST(XmlReader, DropsWhatStandsBeforeTheFirstTag) {
  for (const std::string_view junk : {"", "\xEF\xBB\xBF", "\r\n  ", "HTTP/1.1 200 OK\n\n"}) {
    RecordingReader reader;
    reader.ParseBytes(std::string(junk) + "<?xml version=\"1.0\"?><a/>");
    EXPECT_THAT(reader.events, ElementsAre("xml 1.0 (null) -1", "<a", ">a"));
  }
}

TEST(XmlReader, ParseBufferTakesTheDocumentAsItStands) {
  EXPECT_THAT(EventsOf("\xEF\xBB\xBF<a/>"), ElementsAre("<a", ">a"));
  EXPECT_EQ(ErrorOf("junk<a/>"), XML_ERROR_INVALID_TOKEN);
}

TEST(XmlReader, NothingLeftIsAnError) {
  for (const std::string_view text : {"", "\xEF\xBB\xBF", "no tag at all"}) {
    RecordingReader reader;
    EXPECT_THROW(reader.ParseBytes(text), XML_Error);
    EXPECT_EQ(reader.ErrorCode(), XML_ERROR_NO_ELEMENTS);
  }
  EXPECT_EQ(ErrorOf(""), XML_ERROR_NO_ELEMENTS);
}

TEST(XmlReader, ThrowsTheFirstErrorAndKeepsWhatCameBefore) {
  RecordingReader reader;
  EXPECT_EQ(ErrorOf(reader, "<a>\n<b>1</b><c></a>"), XML_ERROR_TAG_MISMATCH);
  EXPECT_EQ(reader.ErrorCode(), XML_ERROR_TAG_MISMATCH);
  EXPECT_THAT(reader.events, ElementsAre("<a", "<b", "text 1", ">b", "<c"));
  EXPECT_EQ(reader.DescribeError(XML_ERROR_TAG_MISMATCH), "line 2, column 13: mismatched tag");
}

TEST(XmlReader, ServesOneParseAfterTheOtherUntilOneFails) {
  RecordingReader reader;
  reader.ParseBytes("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><a>\xE9</a>");
  reader.events.clear();
  reader.ParseBytes("<b>\xC3\xA9</b>");
  EXPECT_THAT(reader.events, ElementsAre("<b", "text \u00e9", ">b"));
  EXPECT_EQ(ErrorOf(reader, "<c"), XML_ERROR_UNCLOSED_TOKEN);
  EXPECT_EQ(ErrorOf(reader, "<d/>"), XML_ERROR_UNCLOSED_TOKEN);
}

TEST(XmlReader, ReadsStreams) {
  RecordingReader reader;
  std::istringstream stream("\xEF\xBB\xBF<a>" + std::string(1000000, 'x') + "</a>");
  EXPECT_TRUE(reader.ParseStream(stream));
  EXPECT_THAT(reader.events, ElementsAre("<a", "text " + std::string(1000000, 'x'), ">a"));

  std::istringstream empty;
  EXPECT_THROW(RecordingReader().ParseStream(empty), XML_Error);
  std::istringstream broken("<a/>");
  broken.setstate(std::ios::badbit);
  RecordingReader unused;
  EXPECT_FALSE(unused.ParseStream(broken));
  EXPECT_THAT(unused.events, testing::IsEmpty());
}

TEST(XmlReader, ReadsFiles) {
  const TemporaryFolder folder;
  SequentialFile file;
  ASSERT_EQ(file.Open(folder.Put("a.xml", "\xEF\xBB\xBF<a/>")), 0u);
  RecordingReader reader;
  EXPECT_TRUE(reader.ParseFile(file));
  EXPECT_THAT(reader.events, ElementsAre("<a", ">a"));
}

TEST(XmlReader, TellsWhereAndWhyADocumentIsNotWellFormed) {
  RecordingReader reader;
  EXPECT_EQ(ErrorOf(reader, "<a>\n</b>"), XML_ERROR_TAG_MISMATCH);
  const XmlFault fault = reader.FaultOf(XML_ERROR_TAG_MISMATCH);
  EXPECT_EQ(fault.line, 2u);
  EXPECT_EQ(fault.column, 3u);
  EXPECT_EQ(fault.text, "mismatched tag");
}

TEST(XmlReader, EndsWhenTheWatcherSaysSo) {
  const std::string document = "<a>" + std::string(1000000, 'x') + "</a>";
  std::vector<uint64_t> told;
  RecordingReader reader;
  reader.Watch([&told](uint64_t bytesDone) {
    told.push_back(bytesDone);
    return told.size() < 3;
  });
  EXPECT_EQ(ErrorOf(reader, document), XML_ERROR_ABORTED);
  ASSERT_EQ(told.size(), 3u);
  EXPECT_EQ(told[0], 0u);
  EXPECT_LT(told[1], told[2]);
  EXPECT_LT(told[2], document.size());
}

// Throws from the callback of an element "bad".
class ThrowingReader : public RecordingReader {
 public:
  void StartElement(const XML_Char* name, const XML_Char** attributes) override {
    RecordingReader::StartElement(name, attributes);
    if (name == "bad"s) throw std::runtime_error("bad element");
  }
};

TEST(XmlReader, AnExceptionEndsTheParseAndComesOut) {
  ThrowingReader reader;
  try {
    reader.ParseBytes("<a><bad/><b>text</b></a>");
    ADD_FAILURE() << "nothing thrown";
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "bad element");
  }
  EXPECT_THAT(reader.events, ElementsAre("<a", "<bad"));
  EXPECT_EQ(ErrorOf(reader, "<a/>"), XML_ERROR_FINISHED);
}

// A document of many slices gives what one of one slice gives.
TEST(XmlReader, LongDocumentsAreReadInSlicesWithoutASeam) {
  std::string document = "<r>";
  Events expected = {"<r"};
  for (int i = 0; i < 50000; ++i) {
    document += fmt::format("<p n=\"{}\">&#233;t\u00e9 {}<![CDATA[&]]></p>", i, i);
    expected.push_back(fmt::format("<p n={}", i));
    expected.insert(expected.end(), {"cdata", "/cdata"});
    expected.push_back(fmt::format("text \u00e9t\u00e9 {}&", i));
    expected.push_back(">p");
  }
  document += "</r>";
  expected.push_back(expected[expected.size() - 2]);  // no start tag since then
  expected.push_back(">r");
  const TemporaryFolder folder;
  RecordingReader reader;
  SequentialFile file;
  ASSERT_EQ(file.Open(folder.Put("long.xml", document)), 0u);
  EXPECT_TRUE(reader.ParseFile(file));
  EXPECT_TRUE(reader.events == expected);
  EXPECT_TRUE(EventsOf(document) == expected);
}

TEST(XmlReader, TextsOfManyMegabytesComeWhole) {
  const std::string text(3000000, 't');
  EXPECT_THAT(EventsOf("<a b=\"" + text + "\"><!--" + text + "-->" + text + "</a>"),
              ElementsAre("<a b=" + text, "comment " + text, "text " + text, ">a"));
}

}  // namespace
