#include "base/text.h"

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace {

using std::string_literals::operator""s;

DetectedEncoding Detect(std::string_view bytes) { return DetectEncoding(bytes); }

void ExpectDetected(std::string_view bytes, EFileEncoding encoding, size_t skipped) {
  EXPECT_EQ(Detect(bytes).encoding, encoding);
  EXPECT_EQ(Detect(bytes).skipped, skipped);
}

TEST(Text, ConvertsBetweenUtf8AndWide) {
  EXPECT_EQ(Utf8ToWide("a\u00e9\u20ac\U0001F600"), u"a\u00e9\u20ac\U0001F600");
  EXPECT_EQ(WideToUtf8(u"a\u00e9\u20ac\U0001F600"), "a\u00e9\u20ac\U0001F600");
  EXPECT_EQ(Utf8ToWide("\U0001F600").size(), 2u);
  EXPECT_EQ(Utf8ToWide("\0a"s), u"\0a"s);
  EXPECT_EQ(Utf8ToWide(""), u"");
}

TEST(Text, RefusesWhatIsNoText) {
  for (const std::string_view bytes :
       {"\xE9", "a\xC3", "\xC0\x80", "\xE0\x80\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\x80",
        "\xF8\x88\x80\x80\x80", "\xE2\x82"}) {
    EXPECT_THROW(Utf8ToWide(bytes), std::range_error);
    EXPECT_FALSE(IsValidUtf8(bytes));
  }
  EXPECT_TRUE(IsValidUtf8("\xF4\x8F\xBF\xBF"));
  EXPECT_THROW(WideToUtf8(WideString(1, u'\xD800')), std::range_error);
  EXPECT_THROW(WideToUtf8(WideString(1, u'\xDC00')), std::range_error);
}

TEST(Text, ReplacesWhatIsNoTextWhenAsked) {
  EXPECT_EQ(Utf8ToWideLossy("a\xE9z"), u"a\uFFFDz");
  EXPECT_EQ(WideToUtf8Lossy(u"a"s + WideString(1, u'\xD800') + u"z"), "a\uFFFDz");
}

TEST(Text, NarrowsForOldFormats) {
  EXPECT_EQ(NarrowForFile(u"a\u00e9\u00ff\u0100\u20ac"), "a\xE9\xFF??");
  EXPECT_EQ(NarrowForFile(u"\U0001F600"), "??");
  EXPECT_EQ(NarrowUtf8("a\u00e9\u00ff\u0100\u20ac\U0001F600"), "a\xE9\xFF????");
  EXPECT_EQ(NarrowUtf8("a\xE9z"), "a?z");
  EXPECT_EQ(NarrowUtf8("plain"), "plain");
  std::string output = "x";
  AppendNarrowUtf8(output, "\u00e9");
  EXPECT_EQ(output, "x\xE9");
}

TEST(Text, WidensEightBits) {
  EXPECT_EQ(WidenToUtf8("a\x80\xE9\xFF"), "a\u0080\u00e9\u00ff");
  EXPECT_EQ(WidenAscii("a\xE9"), u"a\u00e9");
}

TEST(DetectEncoding, KnowsTheMarks) {
  ExpectDetected("\x00\x00\xFE\xFF"s, kEncodingUtf32Be, 4);
  ExpectDetected("\xFF\xFE\x00\x00"s, kEncodingUtf32Le, 4);
  ExpectDetected(
      "\xFE\xFF\x00"
      "a"s,
      kEncodingUtf16Be, 2);
  ExpectDetected(
      "\xFF\xFE"
      "a\x00"s,
      kEncodingUtf16Le, 2);
  ExpectDetected(
      "\xEF\xBB\xBF"
      "a"s,
      kEncodingUtf8, 3);
}

TEST(DetectEncoding, GuessesFromZeroBytesAndSkipsAllTheSame) {
  ExpectDetected(
      "\x00\x00\x00"
      "a"s,
      kEncodingUtf32Be, 4);
  ExpectDetected("a\x00\x00\x00"s, kEncodingUtf32Le, 4);
  ExpectDetected(
      "\x00"
      "a\x00"
      "b"s,
      kEncodingUtf16Be, 2);
  ExpectDetected("abcd", kEncodingNarrow, 0);
  ExpectDetected(
      "a\x00"
      "bc"s,
      kEncodingNarrow, 0);
  ExpectDetected("ab\x00\x00"s, kEncodingNarrow, 0);
  ExpectDetected(
      "a\x00"
      "b\x00"s,
      kEncodingUtf16Le, 2);
}

TEST(DetectEncoding, TakesMissingBytesForZero) {
  ExpectDetected("", kEncodingUtf32Be, 0);
  ExpectDetected("a", kEncodingUtf32Le, 1);
  ExpectDetected("ab", kEncodingNarrow, 0);
  ExpectDetected("\xEF\xBB\xBF", kEncodingUtf8, 3);
  ExpectDetected("\xFE\xFF", kEncodingUtf16Be, 2);
  ExpectDetected("\xFF\xFE", kEncodingUtf32Le, 2);
}

TEST(DecodeTextFile, DecodesEveryEncoding) {
  EXPECT_EQ(DecodeTextFile("caf\xE9"), u"caf\u00e9");
  EXPECT_EQ(DecodeTextFile("\xEF\xBB\xBF"
                           "caf\u00e9"),
            u"caf\u00e9");
  EXPECT_EQ(DecodeTextFile("\xFF\xFE"
                           "a\x00\xE9\x00\x3D\xD8\x00\xDE"s),
            u"a\u00e9\U0001F600");
  EXPECT_EQ(DecodeTextFile("\xFE\xFF\x00"
                           "a\x00\xE9\xD8\x3D\xDE\x00"s),
            u"a\u00e9\U0001F600");
  EXPECT_EQ(DecodeTextFile("\xFF\xFE\x00\x00"
                           "a\x00\x00\x00\x00\xF6\x01\x00"s),
            u"a\U0001F600");
  EXPECT_EQ(DecodeTextFile("\x00\x00\xFE\xFF\x00\x00\x00"
                           "a"s),
            u"a");
  EXPECT_EQ(DecodeTextFileToUtf8("caf\xE9"), "caf\u00e9");
  EXPECT_EQ(DecodeTextFileToUtf8("\xEF\xBB\xBF"
                                 "caf\u00e9"),
            "caf\u00e9");
  EXPECT_EQ(DecodeTextFileToUtf8("\xFF\xFE"
                                 "a\x00\xE9\x00\x3D\xD8\x00\xDE"s),
            "a\u00e9\U0001F600");
}

TEST(DecodeTextFile, ReplacesWhatCannotBeDecodedAndDropsACutUnit) {
  EXPECT_EQ(DecodeTextFile("\xEF\xBB\xBF"
                           "a\xE9z"),
            u"a\uFFFDz");
  EXPECT_EQ(DecodeTextFile("\xFF\xFE\x00\xDC"
                           "a\x00z"s),
            u"\uFFFDa");
  EXPECT_EQ(DecodeTextFile("\x00\x00\xFE\xFF\x00\x11\x00\x00\x00\x00\xD8\x00"s), u"\uFFFD\uFFFD");
}

TEST(LineSplitter, EndsLinesAtLineFeeds) {
  LineSplitter lines("one\r\ntwo\n\nfo\rur\r");
  std::vector<std::string> found;
  for (std::string_view line; lines.Next(line);) found.emplace_back(line);
  EXPECT_EQ(found, (std::vector<std::string>{"one", "two", "", "fo\rur\r"}));
  LineSplitter none("");
  std::string_view line;
  EXPECT_FALSE(none.Next(line));
  WideLineSplitter wide(u"a\r\nb");
  std::u16string_view wideLine;
  ASSERT_TRUE(wide.Next(wideLine));
  EXPECT_EQ(wideLine, u"a");
  EXPECT_EQ(wide.Position(), 3u);
}

TEST(SplitFields, KeepsEmptyFieldsAndTheRest) {
  std::vector<std::string_view> fields{"old"};
  SplitFields("a||b|", '|', fields);
  EXPECT_EQ(fields, (std::vector<std::string_view>{"a", "", "b", ""}));
  SplitFields("", '|', fields);
  EXPECT_EQ(fields, (std::vector<std::string_view>{""}));
  std::vector<std::u16string_view> wide;
  SplitFields(u"a=b", u'=', wide);
  EXPECT_EQ(wide, (std::vector<std::u16string_view>{u"a", u"b"}));
}

TEST(Text, TrimsGivenCharacters) {
  EXPECT_EQ(TrimLeft("  \" a ", " \""), "a ");
  EXPECT_EQ(TrimRight(" a \r", " \r"), " a");
  EXPECT_EQ(Trim("xxaxx", "x"), "a");
  EXPECT_EQ(Trim("xx", "x"), "");
  EXPECT_EQ(Trim("", "x"), "");
}

TEST(Text, ComparesKeysWithoutCase) {
  EXPECT_TRUE(EqualsIgnoringCase(u"RTE", u"rte"));
  EXPECT_FALSE(EqualsIgnoringCase(u"rte", u"rt"));
  EXPECT_FALSE(EqualsIgnoringCase(u"\u00c9", u"\u00e9"));
  EXPECT_EQ(ToLowerAscii("AbZ\xC9"), "abz\xC9");
}

TEST(Text, TakesPathsApart) {
  EXPECT_EQ(ExtensionOfPath(u"/home/foo.bar.itn"), u"itn");
  EXPECT_EQ(ExtensionOfPath(u"trip"), u"");
  EXPECT_EQ(FileNameOfPath(u"C:\\trips\\a.itn"), u"a.itn");
  EXPECT_EQ(FileNameOfPath(u"a.itn"), u"a.itn");
  EXPECT_EQ(FileTitleOfPath(u"/trips/foo.bar.itn"), u"foo.bar");
  EXPECT_EQ(FileTitleOfPath(u"/a.b/trip"), u"trip");
}

}  // namespace
