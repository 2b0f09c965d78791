#include <cmath>
#include <cstdio>
#include <limits>
#include <memory>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "markup/json.h"

namespace {

std::string Written(const CJsonValue& value) {
  std::ostringstream stream;
  stream << value;
  return stream.str();
}

std::string WrittenNumber(double number) {
  CJsonValue value;
  value.type = kJsonNumber;
  value.number = number;
  return Written(value);
}

std::string WrittenString(std::string_view text) {
  CJsonValue value;
  value.SetString(text);
  return Written(value);
}

TEST(JsonWriter, PutsABlankBehindColonsOnly) {
  CJsonDocument document;
  ASSERT_EQ(document.Parse(R"( { "a" : [ 1 , { "b" : true } , null, [] ] , c : false, "d":{} } )"),
            0);
  EXPECT_EQ(Written(document), R"({"a": [1,{"b": true},null,[]],"c": false,"d": {}})");
}

TEST(JsonWriter, WritesUndefinedAndNullAlike) {
  CJsonValue value;
  EXPECT_EQ(Written(value), "null");
  value.type = kJsonNull;
  EXPECT_EQ(Written(value), "null");
}

TEST(JsonWriter, WritesTheKeyOfTheTopToo) {
  CJsonValue value;
  value.key = "k";
  value.type = kJsonBool;
  EXPECT_EQ(Written(value), "\"k\": false");
}

TEST(JsonWriter, LeavesKeysAsTheyStand) {
  CJsonValue value;
  value.key = "a\"\\\n";
  EXPECT_EQ(Written(value), "\"a\"\\\n\": null");
}

TEST(JsonWriter, KeysOfArrayElementsAreWrittenWhenThereAreAny) {
  CJsonValue value;
  value.type = kJsonArray;
  value.array.Add().key = "odd";
  value.array.Add();
  EXPECT_EQ(Written(value), "[\"odd\": null,null]");
}

TEST(JsonWriter, PutsBackslashesInFrontOfSevenCharacters) {
  EXPECT_EQ(WrittenString("a\\b\"c"), R"("a\\b\"c")");
  EXPECT_EQ(WrittenString("\b\f\n\r\t"), "\"\\\b\\\f\\\n\\\r\\\t\"");
  EXPECT_EQ(WrittenString("/'\v\x01\xE9\u20ac"), "\"/'\v\x01\xE9\u20ac\"");
  EXPECT_EQ(WrittenString(std::string_view("a\0b", 3)), std::string("\"a\0b\"", 5));
  EXPECT_EQ(WrittenString(""), "\"\"");
  EXPECT_EQ(WrittenString("\\"), R"("\\")");
}

TEST(JsonWriter, StringsComeBackUnchanged) {
  std::string all;
  for (int c = 0; c < 256; ++c) all.push_back(static_cast<char>(c));
  all += "\\\\\"\"\n\\";
  CJsonDocument document;
  ASSERT_EQ(document.Parse(WrittenString(all)), 0);
  EXPECT_EQ(document.AsString(), all);
  ASSERT_EQ(document.Parse("\"two\\\nlines\""), 0);
  EXPECT_EQ(document.AsString(), "two\nlines");
}

TEST(JsonWriter, WritesNumbersWithThirtyTwoDigits) {
  EXPECT_EQ(WrittenNumber(0.1), "0.10000000000000000555111512312578");
  EXPECT_EQ(WrittenNumber(0.0), "0");
  EXPECT_EQ(WrittenNumber(-0.0), "-0");
  EXPECT_EQ(WrittenNumber(1.0), "1");
  EXPECT_EQ(WrittenNumber(-2.5), "-2.5");
  EXPECT_EQ(WrittenNumber(1e15), "1000000000000000");
  EXPECT_EQ(WrittenNumber(1e22), "10000000000000000000000");
  EXPECT_EQ(WrittenNumber(1e-5), "1.0000000000000000818030539140313e-05");
  EXPECT_EQ(WrittenNumber(9007199254740993.0), "9007199254740992");
}

TEST(JsonWriter, NumbersAreThoseOfThirtyTwoDigitsEverywhere) {
  const double samples[] = {1e31,
                            1e32,
                            1e33,
                            1e100,
                            -1e100,
                            1e-100,
                            0.0001,
                            0.00001,
                            2.0 / 3.0,
                            1e300 / 7.0,
                            123456.789,
                            std::numeric_limits<double>::max(),
                            std::numeric_limits<double>::min(),
                            std::numeric_limits<double>::denorm_min()};
  for (const double sample : samples) {
    char expected[64];
    std::snprintf(expected, sizeof expected, "%.32g", sample);
    EXPECT_EQ(WrittenNumber(sample), expected);
  }
}

TEST(JsonWriter, NumbersComeBackUnchanged) {
  for (const double number : {0.1, -48.85661, 2.35222, 1e300, 5e-324, 1.0 / 3.0}) {
    CJsonDocument document;
    ASSERT_EQ(document.Parse(WrittenNumber(number) + ","), 0);
    EXPECT_EQ(document.AsNumber(), number);
  }
}

TEST(JsonWriter, AnEmptySlotEndsTheMembers) {
  CJsonValue value;
  value.type = kJsonObject;
  value.object.Ensure("a");
  value.object.Append(nullptr);
  value.object.Ensure("b");
  EXPECT_EQ(Written(value), "{\"a\": null}");
  *value.object.begin() = nullptr;
  EXPECT_EQ(Written(value), "{}");
}

TEST(JsonWriter, AnEmptySlotOfAnArrayIsNull) {
  CJsonValue value;
  value.type = kJsonArray;
  value.array.Add().type = kJsonBool;
  value.array.Append(nullptr);
  value.array.Add();
  EXPECT_EQ(Written(value), "[false,null,null]");
}

TEST(JsonWriter, WritesOnlyWhatTheTypeSays) {
  CJsonValue value;
  value.type = kJsonArray;
  value.text = "t";
  value.object.Ensure("a");
  EXPECT_EQ(Written(value), "[]");
  value.type = kJsonNull;
  EXPECT_EQ(Written(value), "null");
}

TEST(JsonWriter, AppendsToWhatIsThere) {
  std::string output = "InitMap(";
  CJsonValue value;
  value.SetString("x");
  AppendJson(output, value);
  EXPECT_EQ(output, "InitMap(\"x\"");
}

TEST(JsonWriter, IgnoresTheFormatOfTheStream) {
  std::ostringstream stream;
  stream.width(40);
  stream.precision(2);
  CJsonValue value;
  value.type = kJsonNumber;
  value.number = 0.125;
  stream << value;
  EXPECT_EQ(stream.str(), "0.125");
}

TEST(JsonWriter, WritesDeepTreesWithoutRecursion) {
  constexpr size_t kLevels = 300000;
  CJsonValue root;
  root.type = kJsonArray;
  CJsonValue* value = &root;
  for (size_t i = 1; i < kLevels; ++i) {
    value = &value->array.Add();
    value->type = kJsonArray;
  }
  EXPECT_EQ(Written(root), std::string(kLevels, '[') + std::string(kLevels, ']'));
}

}  // namespace
