#include "markup/xml_encoding.h"

#include <string>

#include <gtest/gtest.h>

#include "markup/xml_reader.h"

namespace {

using std::string_literals::operator""s;

// Collects the text of a document of any encoding.
class TextReader final : public CXmlReader {
 public:
  TextReader() : CXmlReader(Encodings::kSystems) {}
  void EndElement(const XML_Char*) override {}

  std::string Text() const { return m_text; }
};

std::string TextOf(std::string_view document) {
  TextReader reader;
  try {
    reader.ParseBytes(document);
  } catch (const XML_Error error) {
    return "error " + std::to_string(error);
  }
  return reader.Text();
}

std::string Declared(const std::string& encoding) {
  return "<?xml version=\"1.0\" encoding=\"" + encoding + "\"?><a>";
}

// As UTF-16, most significant byte first.
std::string BigEndian(std::u16string_view text) {
  std::string bytes;
  for (const char16_t unit : text) {
    bytes += static_cast<char>(unit >> 8);
    bytes += static_cast<char>(unit & 0xFF);
  }
  return bytes;
}

std::string LittleEndian(std::u16string_view text) {
  std::string bytes;
  for (const char16_t unit : text) {
    bytes += static_cast<char>(unit & 0xFF);
    bytes += static_cast<char>(unit >> 8);
  }
  return bytes;
}

TEST(XmlEncoding, IsConvertedWhereExpatDoesNotKnowIt) {
  EXPECT_EQ(TextOf(Declared("windows-1250") + "\xC8"
                                              "esk\xFD</a>"),
            "Český");
  EXPECT_EQ(TextOf(Declared("Windows-1251") + "\xCC\xEE\xF1\xEA\xE2\xE0</a>"), "Москва");
  EXPECT_EQ(TextOf(Declared("windows-1253") + "\xC1\xE8\xDE\xED\xE1</a>"), "Αθήνα");
  EXPECT_EQ(TextOf(Declared("ISO-8859-2") + "\xA3\xF3"
                                            "d\xBC</a>"),
            "Łódź");
  EXPECT_EQ(TextOf(Declared("iso-8859-15") + "5 \xA4</a>"), "5 €");
  EXPECT_EQ(TextOf(Declared("KOI8-R") + "\xED\xCF\xD3\xCB\xD7\xC1</a>"), "Москва");
}

TEST(XmlEncoding, ShiftJisIsThatOfItsLargestMaker) {
  EXPECT_EQ(TextOf(Declared("Shift_JIS") + "\x93\x8C\x8B\x9E \\~ \x87\x40</a>"), "東京 \\~ ①");
  // The second byte of a character may be that of a bracket or an "<".
  EXPECT_EQ(TextOf(Declared("Shift_JIS") + "\x83\x5C\x83\x5D</a>"), "ソゾ");
}

TEST(XmlEncoding, Utf16OfEitherOrderWithAndWithoutAMark) {
  const std::u16string document = u"<?xml version='1.0' encoding='UTF-16'?><a>Ł \xD83D\xDEB2</a>";
  const std::string text = "Ł \U0001F6B2";
  EXPECT_EQ(TextOf(BigEndian(u"\xFEFF" + document)), text);
  EXPECT_EQ(TextOf(LittleEndian(u"\xFEFF" + document)), text);
  EXPECT_EQ(TextOf(BigEndian(document)), text);
  EXPECT_EQ(TextOf(LittleEndian(document)), text);
  EXPECT_EQ(TextOf(BigEndian(u"\xFEFF<a>Ł</a>")), "Ł");
}

TEST(XmlEncoding, OfDevicesStaysByteForByte) {
  EXPECT_EQ(TextOf(Declared("windows-1252") + "\x80\xE9</a>"), "\u0080é");
  EXPECT_EQ(TextOf(Declared("x-none") + "\x80\xE9</a>"), "\u0080é");
  EXPECT_EQ(TextOf(Declared("ISO-8859-1") + "\xE9</a>"), "é");
  EXPECT_EQ(TextOf(Declared("UTF-8") + "é</a>"), "é");
  EXPECT_EQ(TextOf("junk <a>é</a>"), "é");
}

TEST(XmlEncoding, AMarkGoesBeforeADeclaration) {
  EXPECT_EQ(ForeignEncoding("\xEF\xBB\xBF<?xml version='1.0' encoding = 'iso-8859-2' ?>"),
            "iso-8859-2");
  EXPECT_EQ(ForeignEncoding("\xFE\xFF\0<\0?"s), "utf-16be");
  EXPECT_EQ(ForeignEncoding("\0<\0?"s), "utf-16be");
}

TEST(XmlEncoding, IsNotGuessedFromWhatIsNoDeclaration) {
  for (const std::string& start :
       {""s, "<"s, "<a encoding='iso-8859-2'/>"s, "<?xml?><a encoding='iso-8859-2'/>"s,
        "<?xml encoding=iso-8859-2?>"s, "<?xml encoding='iso-8859-2"s, "<?xml encoding="s,
        "<?xml encoding='utf-16'?>"s, "<?xml encoding='utf-32'?>"s, "<?xml encoding='ebcdic-us'?>"s,
        "<?xml encoding=''?>"s, "<?xml encoding='../x'?>"s})
    EXPECT_EQ(ForeignEncoding(start), "") << start;
}

TEST(XmlEncoding, LongDocumentsComeInPieces) {
  std::string bytes = Declared("Shift_JIS");
  std::string text;
  for (int i = 0; i < 100000; ++i) {
    bytes += "x\x93\x8C";
    text += "x東";
  }
  EXPECT_TRUE(TextOf(bytes + "</a>") == text);
}

TEST(XmlEncoding, ASourceThatFailsFails) {
  TextReader reader;
  EXPECT_FALSE(reader.ParseSource([](char*, size_t) { return std::nullopt; }));
  int calls = 0;
  const std::string start = Declared("iso-8859-2");
  TextReader other;
  EXPECT_FALSE(other.ParseSource([&](char* data, size_t size) -> std::optional<size_t> {
    if (calls++ > 0) return std::nullopt;
    return start.copy(data, size);
  }));
}

}  // namespace
