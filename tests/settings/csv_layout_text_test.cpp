#include "settings/csv_layout_text.h"

#include <string>

#include <gtest/gtest.h>

#include "base/localized_text.h"

namespace {

void ExpectLayout(const char* text, const CCsvLayout& expected) {
  const CsvLayoutText parsed = ParseCsvLayoutText(text);
  ASSERT_TRUE(parsed.layout.has_value()) << text << ": " << parsed.refusal;
  EXPECT_EQ(*parsed.layout, expected) << text;
  EXPECT_EQ(parsed.refusal, "") << text;
}

void ExpectRefusal(const std::string& text, const std::string& refusal) {
  const CsvLayoutText parsed = ParseCsvLayoutText(text);
  EXPECT_FALSE(parsed.layout.has_value()) << text;
  EXPECT_EQ(parsed.refusal, refusal) << text;
}

// The columns of the tests below: latitude 1, longitude 2.
CCsvLayout WithSeparators(const char* decimal, const char* column) {
  return {4, 1, 2, 0, 0, 0, false, decimal, column};
}

TEST(CsvLayoutText, TakesTheNameOfAPreset) {
  ExpectLayout("Default", CsvPresets()[0].layout);
  ExpectLayout("inforad", CsvPresets()[1].layout);
  ExpectLayout("Pioneer Navgate", CsvPresets()[2].layout);
  ExpectLayout("DESTINATOR", CsvPresets()[3].layout);
}

TEST(CsvLayoutText, TakesThePresetsLabelInTheCurrentLanguageToo) {
  SetLanguage(Language::kGerman);
  const CsvLayoutText german = ParseCsvLayoutText("Standard");
  const CsvLayoutText english = ParseCsvLayoutText("Default");
  SetLanguage(Language::kEnglish);
  EXPECT_EQ(german.layout, CsvPresets()[0].layout);
  EXPECT_EQ(english.layout, CsvPresets()[0].layout);
}

TEST(CsvLayoutText, RefusesOtherNames) {
  const std::string rest =
      "\" does not exist. Give fields, such as lat=1,lon=2,name=3, or one of: Default, Inforad, "
      "Pioneer Navgate, Destinator";
  ExpectRefusal("", "The CSV layout \"" + rest);
  ExpectRefusal("Manual", "The CSV layout \"Manual" + rest);
  ExpectRefusal("1,2", "The CSV layout \"1,2" + rest);
}

TEST(CsvLayoutText, TakesFields) {
  ExpectLayout("lat=1,lon=2,ele=0,name=3,comment=0,decimal=.,separator=;",
               {4, 1, 2, 0, 3, 0, false, ".", ";"});
  ExpectLayout("comment=5,NAME=4,Ele=3,lon=2,lat=1000", {4, 1000, 2, 3, 4, 5, false, ".", ","});
  ExpectLayout("lat=1,lon=2", WithSeparators(".", ","));
}

TEST(CsvLayoutText, TakesSeparatorsAsCharactersOrWords) {
  ExpectLayout("lat=1,lon=2,separator=|", WithSeparators(".", "|"));
  ExpectLayout("lat=1,lon=2,separator=;|/", WithSeparators(".", ";|/"));
  ExpectLayout("lat=1,lon=2,separator=comma", WithSeparators(".", ","));
  ExpectLayout("lat=1,lon=2,separator=semicolon", WithSeparators(".", ";"));
  ExpectLayout("lat=1,lon=2,separator=Tab", WithSeparators(".", "\t"));
  ExpectLayout("lat=1,lon=2,separator=space", WithSeparators(".", " "));
  ExpectLayout("lat=1,lon=2,decimal=comma,separator=point", WithSeparators(",", "."));
  ExpectLayout("lat=1,lon=2,separator= ", WithSeparators(".", " "));
  ExpectLayout("lat=1,lon=2,separator=\t", WithSeparators(".", "\t"));
  ExpectLayout("lat=1,lon=2,separator=\u00a7", WithSeparators(".", "\xA7"));
  ExpectLayout("lat=1,lon=2,separator==", WithSeparators(".", "="));
}

TEST(CsvLayoutText, ACommaMayStandForItself) {
  ExpectLayout("lat=1,lon=2,separator=,", WithSeparators(".", ","));
  ExpectLayout("separator=,,lat=1,lon=2", WithSeparators(".", ","));
  ExpectLayout("lat=1,lon=2,decimal=,,separator=;", WithSeparators(",", ";"));
  ExpectLayout("lat=1,lon=2,separator=;,decimal=,", WithSeparators(",", ";"));
}

TEST(CsvLayoutText, BesideADecimalCommaColumnsAreSeparatedBySemicolons) {
  ExpectLayout("lat=1,lon=2,decimal=comma", WithSeparators(",", ";"));
}

TEST(CsvLayoutText, TakesTheLocale) {
  ExpectLayout("lat=1,lon=2,locale=1", {4, 1, 2, 0, 0, 0, true, ".", ","});
  ExpectLayout("locale=0,lat=1,lon=2,decimal=comma", WithSeparators(",", ";"));
  ExpectRefusal("locale=1,separator=;",
                "With locale=1 the CSV layout has no separators of its own.");
  ExpectRefusal("locale=yes", "The value \"yes\" of locale is not allowed. Allowed: 0, 1");
}

TEST(CsvLayoutText, RefusesUnknownFields) {
  const std::string rest = "\". Fields: lat, lon, ele, name, comment, decimal, separator, locale";
  ExpectRefusal("latitude=1", "The CSV layout has no field \"latitude" + rest);
  ExpectRefusal("lat=1,", "The CSV layout has no field \"" + rest);
  ExpectRefusal("lat=1,,lon=2", "The CSV layout has no field \"" + rest);
  ExpectRefusal("=1", "The CSV layout has no field \"" + rest);
}

TEST(CsvLayoutText, RefusesAFieldGivenTwice) {
  ExpectRefusal("lat=1,lat=1", "The field lat of the CSV layout is given twice.");
}

TEST(CsvLayoutText, RefusesAColumnUsedTwice) {
  ExpectRefusal("lat=3,lon=3", "The CSV layout uses column 3 twice.");
  ExpectRefusal("lat=1,lon=2,name=4,comment=4", "The CSV layout uses column 4 twice.");
  ExpectLayout("lat=1,lon=2,name=0,comment=0", WithSeparators(".", ","));
}

TEST(CsvLayoutText, RefusesALayoutWithoutPositions) {
  const std::string refusal =
      "The CSV layout has no column for the latitude or the longitude. Both are needed: "
      "lat=1,lon=2.";
  ExpectRefusal("lat=1", refusal);
  ExpectRefusal("lon=1,name=2", refusal);
  ExpectRefusal("lat=0,lon=0,name=1", refusal);
}

TEST(CsvLayoutText, IsWrittenInTheSameWords) {
  EXPECT_EQ(CsvLayoutAsText({4, 2, 1, 0, 3, 5, false, ".", ","}),
            "lat=2,lon=1,name=3,comment=5,decimal=.,separator=comma");
  for (const CCsvLayout& layout :
       {WithSeparators(",", ";"), WithSeparators(".", "\t"), WithSeparators(".", "\xA7")}) {
    EXPECT_EQ(ParseCsvLayoutText(CsvLayoutAsText(layout)).layout, layout);
  }
}

TEST(CsvLayoutText, RefusesColumnsThatAreNone) {
  for (const char* const value : {"", "-1", "1001", "1.5", "x", " 1", "99999999999"}) {
    ExpectRefusal("lon=1,lat=" + std::string(value),
                  "The value \"" + std::string(value) +
                      "\" of lat is not allowed. Allowed: a column from 1 to 1000, or 0 for none");
  }
  ExpectRefusal("lon=1,lat",
                "The value \"\" of lat is not allowed. Allowed: a column from 1 to 1000, or 0 for "
                "none");
}

TEST(CsvLayoutText, RefusesSeparatorsThatAreNone) {
  const std::string rest =
      "\" of separator is not allowed. Allowed: one to four 8-bit characters other than digits, "
      "signs, quotes and line ends, or one of: comma, semicolon, tab, space, point";
  for (const std::string value :
       {"", "12345", ";;;;;", "\"", "-", "+", "7", "\u0141", "\U0001F600"})
    ExpectRefusal("lat=1,separator=" + value, "The value \"" + value + rest);
  // What could command a terminal, or is no text, is not shown as it is.
  for (const std::string value : {"\n", "\r", "\xFF"})
    ExpectRefusal("lat=1,separator=a" + value, "The value \"a\uFFFD" + rest);
}

TEST(CsvLayoutText, RefusesTheSameCharacterForBoth) {
  const std::string refusal =
      "The decimal separator of the CSV layout must not be a column separator too.";
  ExpectRefusal("lat=1,decimal=;,separator=;", refusal);
  ExpectRefusal("lat=1,decimal=comma,separator=;|,lon=2,locale=0,separator=,",
                "The field separator of the CSV layout is given twice.");
  ExpectRefusal("lat=1,separator=.", refusal);
  ExpectRefusal("lat=1,decimal=,,separator=comma", refusal);
}

}  // namespace
