#include "markup/xml_writer.h"

#include <new>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using std::string_literals::operator""s;

// What `write` puts into a document.
template <typename Write>
std::string Written(Write&& write) {
  StringSink sink;
  CXmlWriter document(sink);
  write(document);
  return sink.Bytes();
}

TEST(XmlWriter, WritesDeclarationDoctypeAndComment) {
  EXPECT_EQ(Written([](CXmlWriter& document) {
              document.Declaration("UTF-8", "1.0");
              document.Doctype("plan SYSTEM \"plan.dtd\"");
              document.Comment("a & b");
              document.Element("plan");
            }),
            "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\"?>"
            "<!DOCTYPE plan SYSTEM \"plan.dtd\"><!--a & b--><plan/>");
}

TEST(XmlWriter, ElementWithNothingInItIsOneTag) {
  EXPECT_EQ(Written([](CXmlWriter& document) { document.Element("a"); }), "<a/>");
  EXPECT_EQ(Written([](CXmlWriter& document) { document.Element("a").Attribute("b", ""); }),
            "<a b=\"\"/>");
}

TEST(XmlWriter, EmptyTextGivesAnEndTagAndEmptyCdataDoesNot) {
  EXPECT_EQ(Written([](CXmlWriter& document) { document.Element("a").Text(""); }), "<a></a>");
  EXPECT_EQ(Written([](CXmlWriter& document) { document.Element("a").Cdata(""); }), "<a/>");
}

TEST(XmlWriter, AttributesFollowAnEmptyCdata) {
  EXPECT_EQ(Written([](CXmlWriter& document) {
              CXmlElement element = document.Element("a");
              element.Cdata("");
              element.Attribute("b", "c");
            }),
            "<a b=\"c\"/>");
}

TEST(XmlWriter, ChildrenFollowWithoutSpace) {
  EXPECT_EQ(Written([](CXmlWriter& document) { document.Element("a").Child("b"); }), "<a><b/></a>");
  EXPECT_EQ(Written([](CXmlWriter& document) {
              CXmlElement root = document.Element("a");
              root.Child("b").Text("1");
              root.Child("c");
              CXmlElement inner = root.Child("d").Attribute("x", "1").Attribute("y", "2");
              inner.Child("e").Cdata("2");
            }),
            "<a><b>1</b><c/><d x=\"1\" y=\"2\"><e><![CDATA[2]]></e></d></a>");
}

TEST(XmlWriter, ElementInsideAnotherIsAChildToo) {
  EXPECT_EQ(Written([](CXmlWriter& document) {
              const CXmlElement outer = document.Element("a");
              document.Element("b");
            }),
            "<a><b/></a>");
}

TEST(XmlWriter, EscapesTextAndAttributesAlike) {
  const std::string value = "\"<&'>";
  const std::string escaped = "&quot;&lt;&amp;&apos;&gt;";
  EXPECT_EQ(Written([&](CXmlWriter& document) {
              CXmlElement element = document.Element("a").Attribute("b", value);
              element.Text(value);
            }),
            "<a b=\"" + escaped + "\">" + escaped + "</a>");
}

TEST(XmlWriter, LeavesAllOtherBytesAlone) {
  const std::string value = "\x01\t\r\n\x00\x7F\xE9 caf\u00e9 \u0141\u00f3d\u017a \U0001F600"s;
  EXPECT_EQ(Written([&](CXmlWriter& document) {
              CXmlElement element = document.Element("a").Attribute("b", value);
              element.Text(value);
            }),
            "<a b=\"" + value + "\">" + value + "</a>");
}

TEST(XmlWriter, NumbersHaveTheirDecimals) {
  EXPECT_EQ(Written([](CXmlWriter& document) {
              CXmlElement element = document.Element("a")
                                        .NumberAttribute("b", -0.5, 6)
                                        .NumberAttribute("c", 2.25, 1)
                                        .Attribute("d", "&");
              element.NumberAttribute("e", 1e21, 0);
              element.NumberText(35.0, 6);
              element.NumberText(7.0, 0);
            }),
            "<a b=\"-0.500000\" c=\"2.2\" d=\"&amp;\" e=\"1000000000000000000000\">35.0000007</a>");
}

TEST(XmlWriter, CdataStandsAsItIs) {
  EXPECT_EQ(Written([](CXmlWriter& document) { document.Element("a").Cdata("x]]>y & <z>"); }),
            "<a><![CDATA[x]]>y & <z>]]></a>");
}

TEST(XmlWriter, TextMayFollowTextAndCdata) {
  EXPECT_EQ(Written([](CXmlWriter& document) {
              CXmlElement element = document.Element("a");
              element.Cdata("1<");
              element.Text("2<");
              element.Text("3");
            }),
            "<a><![CDATA[1<]]>2&lt;3</a>");
}

// "Not empty" when `act` is done to an element that has been given `fill`.
template <typename Fill, typename Act>
void ExpectRefused(Fill&& fill, Act&& act) {
  StringSink sink;
  CXmlWriter document(sink);
  CXmlElement element = document.Element("a");
  fill(element);
  const std::string before = sink.Bytes();
  try {
    act(element);
    ADD_FAILURE() << "nothing thrown";
  } catch (const std::invalid_argument& error) {
    EXPECT_STREQ(error.what(), "Not empty");
  }
  EXPECT_EQ(sink.Bytes(), before);
}

TEST(XmlWriter, RefusesAttributesAndCdataBehindTheStartTag) {
  const auto text = [](CXmlElement& element) { element.Text(""); };
  const auto child = [](CXmlElement& element) { element.Child("b"); };
  const auto cdata = [](CXmlElement& element) { element.Cdata("x"); };
  const auto addAttribute = [](CXmlElement& element) { element.Attribute("b", "c"); };
  const auto addNumber = [](CXmlElement& element) { element.NumberAttribute("b", 1.0, 6); };
  const auto number = [](CXmlElement& element) { element.NumberText(1.0, 6); };
  const auto addCdata = [](CXmlElement& element) { element.Cdata("y"); };
  const auto addEmptyCdata = [](CXmlElement& element) { element.Cdata(""); };
  ExpectRefused(text, addAttribute);
  ExpectRefused(child, addAttribute);
  ExpectRefused(cdata, addAttribute);
  ExpectRefused(number, addAttribute);
  ExpectRefused(text, addNumber);
  ExpectRefused(child, addNumber);
  ExpectRefused(text, addCdata);
  ExpectRefused(child, addEmptyCdata);
}

TEST(XmlElement, MovesAndDoesNotCopy) {
  // Of the constructor alone: the destructor writes and may throw.
  EXPECT_TRUE(noexcept(::new (std::declval<void*>()) CXmlElement(std::declval<CXmlElement>())));
  EXPECT_FALSE(std::is_copy_constructible_v<CXmlElement>);
  EXPECT_FALSE(std::is_copy_assignable_v<CXmlElement>);
}

TEST(XmlElement, WritesNothingWhenMovedFrom) {
  EXPECT_EQ(Written([](CXmlWriter& document) {
              CXmlElement first = document.Element("a");
              {
                CXmlElement second = std::move(first);
                second.Attribute("b", "1");
              }
              document.Comment("end");
            }),
            "<a b=\"1\"/><!--end-->");
}

// Takes so many bytes, then memory is at its end.
class ShortSink final : public ByteSink {
 public:
  explicit ShortSink(size_t room) : m_room(room) {}

 private:
  void Consume(std::string_view bytes) override {
    if (m_taken + bytes.size() > m_room) throw std::bad_alloc();
    m_taken += bytes.size();
  }

  const size_t m_room;
  size_t m_taken = 0;
};

// The sink hands its bytes on wherever a piece is full: in a start tag, a text or an end tag.
TEST(XmlElement, LetsThroughWhatTheSinkThrows) {
  for (size_t length = 131000; length < 131100; ++length) {
    ShortSink sink(1000);
    CXmlWriter document(sink);
    const auto write = [&] {
      CXmlElement root = document.Element("a");
      root.Child("b").Text(std::string(length, 'x'));
      for (int i = 0; i < 10; ++i) root.Child("element").Child("inner").Text("y");
    };
    EXPECT_THROW(write(), std::bad_alloc) << length;
  }
}

TEST(XmlElement, GivesUpOpenElementsOfAFailedDocument) {
  StringSink sink;
  CXmlWriter document(sink);
  const auto write = [&] {
    CXmlElement root = document.Element("a");
    CXmlElement child = root.Child("b");
    child.Text("1");
    throw std::bad_alloc();
  };
  EXPECT_THROW(write(), std::bad_alloc);
  EXPECT_EQ(sink.Bytes(), "<a><b>1");
}

TEST(XmlElement, LongNamesSurviveAMove) {
  const std::string name(100, 'n');
  EXPECT_EQ(Written([&](CXmlWriter& document) {
              CXmlElement first = document.Element(name);
              CXmlElement second = std::move(first);
              second.Text("");
            }),
            "<" + name + "></" + name + ">");
}

TEST(XmlWriter, StreamsLargeDocuments) {
  constexpr int kCount = 100000;
  const std::string document = Written([](CXmlWriter& writer) {
    CXmlElement root = writer.Element("r");
    for (int i = 0; i < kCount; ++i) root.Child("p").Text(std::to_string(i));
  });
  EXPECT_THAT(document, testing::StartsWith("<r><p>0</p><p>1</p>"));
  EXPECT_THAT(document, testing::EndsWith("<p>99999</p></r>"));
  // 10 + 90·2 + 900·3 + 9000·4 + 90000·5 digits, seven bytes of tags each, and the root's seven.
  EXPECT_EQ(document.size(), 488890u + 7u * kCount + 7u);
}

}  // namespace
