#include <bit>
#include <limits>
#include <random>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "markup/json.h"
#include "tests/markup/plain_scanner.h"

namespace {

using std::string_literals::operator""s;

// The code of `Parse`, a blank and the tree as text.
std::string Parsed(const std::string& text) {
  CJsonDocument document;
  std::string result = std::to_string(document.Parse(text)) + " ";
  AppendJson(result, document);
  return result;
}

// The string that `text` is, without its quotes.
std::string ParsedString(const std::string& text) {
  CJsonDocument document;
  EXPECT_EQ(document.Parse("\"" + text + "\""), 0) << text;
  EXPECT_EQ(document.type, kJsonString) << text;
  return document.text;
}

// The type that a word or number gives.
JsonType TypeOf(const std::string& literal, double* number = nullptr) {
  CJsonDocument document;
  EXPECT_EQ(document.Parse(literal + ","), 0) << literal;
  if (number) *number = document.number;
  return document.type;
}

void ExpectNumber(const std::string& literal, double expected) {
  double number = 0.0;
  EXPECT_EQ(TypeOf(literal, &number), kJsonNumber) << literal;
  EXPECT_EQ(std::bit_cast<uint64_t>(number), std::bit_cast<uint64_t>(expected)) << literal;
}

int CodeOf(const std::string& text) { return CJsonDocument().Parse(text); }

TEST(JsonParser, ReadsADocument) {
  EXPECT_EQ(Parsed(R"({"status":"OK","routes":[{"legs":[{"lat":48.5,"n":-7}]}],"ok":true,"no":null,
      "f" : false , "empty":[], "none":{}})"),
            R"(0 {"status": "OK","routes": [{"legs": [{"lat": 48.5,"n": -7}]}],"ok": true,)"
            R"("no": null,"f": false,"empty": [],"none": {}})");
}

TEST(JsonParser, WordsCountWhereverTheyStand) {
  EXPECT_EQ(Parsed(R"({"a":truex})"), R"(0 {"a": true})");
  EXPECT_EQ(Parsed(R"({"a":nullify})"), R"(0 {"a": null})");
  EXPECT_EQ(Parsed(R"({"a": 1 false 2})"), R"(0 {"a": false})");
  EXPECT_EQ(Parsed(R"({"a":nullfalse})"), R"(0 {"a": false})");
  EXPECT_EQ(Parsed(R"({"a":nullfalsetrue})"), R"(0 {"a": true})");
  EXPECT_EQ(Parsed(R"({"a":True})"), R"(0 {})");
  EXPECT_EQ(Parsed(R"({"a":tru})"), R"(0 {})");
}

TEST(JsonParser, AStringIsNeverAWord) {
  EXPECT_EQ(Parsed(R"({"a":"x"})"), R"(0 {"a": "x"})");
  EXPECT_EQ(Parsed(R"({"a":"true","b":"1"})"), R"(0 {"a": "true","b": "1"})");
}

TEST(JsonParser, TextAheadOfAStringOrBracketIsIgnored) {
  EXPECT_EQ(Parsed("\xEF\xBB\xBF{a:1}"), R"(0 {"a": 1})");
  EXPECT_EQ(Parsed("loadVPage true [1]"), "0 [1]");
  EXPECT_EQ(Parsed("5 \"x\""), "0 \"x\"");
  EXPECT_EQ(Parsed("{a: 7 [1], b: 8 {c:2}, d: true \"x\"}"),
            R"(0 {"a": [1],"b": {"c": 2},"d": "x"})");
}

TEST(JsonParser, TextBehindTheValueIsNotLookedAt) {
  EXPECT_EQ(Parsed("[1]]]}garbage\""), "0 [1]");
  EXPECT_EQ(Parsed("{}{"), "0 {}");
  EXPECT_EQ(Parsed("\"a\"b"), "0 \"a\"");
}

TEST(JsonParser, TellsHowMuchItTook) {
  const auto taken = [](std::string_view text) {
    CJsonValue value;
    return value.ParseValue(text);
  };
  EXPECT_EQ(taken("[1] ,"), 3u);
  EXPECT_EQ(taken(" x {a:1}}"), 8u);
  EXPECT_EQ(taken(" \"a\\\"b\" "), 7u);
  EXPECT_EQ(taken("12,"), 2u);
  EXPECT_EQ(taken(",12"), 0u);
  EXPECT_EQ(taken(" true}"), 5u);
  EXPECT_EQ(taken("["), 1u);
  EXPECT_EQ(taken("{\"a\""), 4u);
}

TEST(JsonParser, ParseValueThrowsWhatParseReturns) {
  CJsonValue value;
  value.key = "k";
  try {
    value.ParseValue("12");
    FAIL();
  } catch (const CJsonException& failure) {
    EXPECT_EQ(failure.code, 3);
    EXPECT_EQ(failure.key, "k");
  }
}

TEST(JsonParser, FailuresCarryTheKeyThatWasBeingRead) {
  CJsonValue value;
  try {
    value.ParseValue("{\"a\":1,\"b\":\"x");
    FAIL();
  } catch (const CJsonException& failure) {
    EXPECT_EQ(failure.code, 3);
    EXPECT_EQ(failure.key, "b");
  }
}

TEST(JsonParser, ALiteralNeedsADelimiterBehindIt) {
  EXPECT_EQ(Parsed("true"), "3 null");
  EXPECT_EQ(Parsed("12"), "3 null");
  EXPECT_EQ(Parsed("12,"), "0 12");
  EXPECT_EQ(Parsed("12]"), "0 12");
  EXPECT_EQ(Parsed("12}"), "0 12");
  EXPECT_EQ(Parsed(""), "3 null");
  EXPECT_EQ(Parsed(","), "0 null");
}

TEST(JsonParser, NumbersAreThoseOfAStream) {
  ExpectNumber("0", 0.0);
  ExpectNumber("-0", -0.0);
  ExpectNumber("48.85661", 48.85661);
  ExpectNumber("-1.5e3", -1500.0);
  ExpectNumber("1E+2", 100.0);
  ExpectNumber("25e-1", 2.5);
  ExpectNumber("+5", 5.0);
  ExpectNumber(".5", 0.5);
  ExpectNumber("5.", 5.0);
  ExpectNumber("5.e1", 50.0);
  ExpectNumber("007", 7.0);
  ExpectNumber(" \t\r\n\v\f7", 7.0);
}

TEST(JsonParser, WhatStandsBehindTheNumberIsIgnored) {
  ExpectNumber("5 apples", 5.0);
  ExpectNumber("1.2.3", 1.2);
  ExpectNumber("1e5.5", 1e5);
  ExpectNumber("1-2", 1.0);
  ExpectNumber("0x10", 0.0);
  ExpectNumber("7\0"s, 7.0);
  ExpectNumber("3f", 3.0);
}

TEST(JsonParser, WhatAStreamRefusesStaysUndefined) {
  for (const char* literal :
       {"abc", "-",    "+",  ".",   "-.",  "e5",   ".e5", "--1",  "+-1", "- 1", "inf",
        "nan", "-inf", "1e", "1e+", "1e-", "1.5E", "1ex", "1e 5", " ",   "x1"})
    EXPECT_EQ(TypeOf(literal), kJsonUndefined) << literal;
}

TEST(JsonParser, NumbersTooLargeAreRefusedAndTooSmallOnesAreZero) {
  double number = 0.0;
  EXPECT_EQ(TypeOf("1e309", &number), kJsonUndefined);
  EXPECT_EQ(number, std::numeric_limits<double>::max());
  EXPECT_EQ(TypeOf("-1e309", &number), kJsonUndefined);
  EXPECT_EQ(number, std::numeric_limits<double>::lowest());
  EXPECT_EQ(TypeOf("1e99999999999999999999"), kJsonUndefined);
  EXPECT_EQ(TypeOf("1" + std::string(400, '0')), kJsonUndefined);
  EXPECT_EQ(TypeOf("0" + std::string(400, '0') + "1" + std::string(400, '0') + "e-5"),
            kJsonUndefined);
  ExpectNumber("1e308", 1e308);
  ExpectNumber("1e-400", 0.0);
  ExpectNumber("-1e-400", -0.0);
  ExpectNumber("1e-99999999999999999999", 0.0);
  ExpectNumber("0e99999999999999999999", 0.0);
  ExpectNumber("0." + std::string(400, '0') + "1", 0.0);
  ExpectNumber("0." + std::string(400, '0') + "1e5", 0.0);
  ExpectNumber("0." + std::string(400, '0') + "1e401", 1.0);
  ExpectNumber("1" + std::string(400, '0') + "e-400", 1.0);
  ExpectNumber("5e-324", 5e-324);
}

TEST(JsonParser, UndefinedValuesAreDropped) {
  EXPECT_EQ(Parsed("[]"), "0 []");
  EXPECT_EQ(Parsed("[ ]"), "0 []");
  EXPECT_EQ(Parsed("[,1,,x,2,]"), "0 [1,2]");
  EXPECT_EQ(Parsed(R"({"a":,"b":1})"), R"(0 {"b": 1})");
  EXPECT_EQ(Parsed(R"({"a":1e999,"b":2})"), R"(0 {"b": 2})");
}

TEST(JsonParser, AKeyWithoutAValueStaysPending) {
  EXPECT_EQ(Parsed(R"({"a":})"), "0 {}");
  // The key in quotes that follows takes its place; a bare one does not.
  EXPECT_EQ(Parsed(R"({"a":,"b":1,c:2})"), R"(0 {"b": 1,"c": 2})");
  EXPECT_EQ(Parsed(R"({"a":,c:2,d:3})"), R"(0 {"a": 2,"d": 3})");
  EXPECT_EQ(Parsed(R"({"a":[1] {}})"), R"(0 {"a": [1],{}})");
  EXPECT_EQ(Parsed(R"({"a" "b" 1:2})"), R"(0 {"b": 2})");
}

TEST(JsonParser, KeysNeedNoQuotes) {
  EXPECT_EQ(Parsed("{a: 1}"), R"(0 {"a": 1})");
  EXPECT_EQ(Parsed("{  two words  :1, b :2}"), R"(0 {"two words": 1,"b": 2})");
  EXPECT_EQ(Parsed("{\ta\n:1}"), "0 {\"\ta\n\": 1}");  // blanks only are cut
  EXPECT_EQ(Parsed("{:1}"), "0 {1}");
  EXPECT_EQ(Parsed("{ a\\b :1}"), R"(0 {"a\b": 1})");
}

TEST(JsonParser, ABareKeyBeginsBehindTheLastComma) {
  // Without a comma it begins where the first one began.
  EXPECT_EQ(Parsed(R"({a:"x" b:"y"})"), R"(0 {"a": "x","a:"x" b": "y"})");
  EXPECT_EQ(Parsed(R"({a:[1], b:[2] c:[3]})"), R"(0 {"a": [1],"b": [2],"b:[2] c": [3]})");
  // A comma inside a key in quotes moves it as well.
  EXPECT_EQ(Parsed(R"({"a,b":"x" c:"y"})"), R"(0 {"a,b": "x","b":"x" c": "y"})");
  // A number takes all up to the next delimiter.
  EXPECT_EQ(Parsed("{a:1 b:2}"), R"(0 {"a": 1})");
}

TEST(JsonParser, DelimitersInAQuotedKeyAreSkipped) {
  EXPECT_EQ(Parsed(R"({"a:b":1,"c{d":2,"e[f":3,"g}h":4,"i]j":5})"),
            R"(0 {"a:b": 1,"c{d": 2,"e[f": 3,"g}h": 4,"i]j": 5})");
}

TEST(JsonParser, KeysAreNotUnescaped) {
  EXPECT_EQ(Parsed(R"({"a\u0041\n":1})"), R"(0 {"a\u0041\n": 1})");
  EXPECT_EQ(Parsed(R"({"a\"b":1})"), R"(0 {"a\"b": 1})");
}

TEST(JsonParser, OneBackslashKeepsAKeyOpen) {
  // Two stand for one in strings, but not at the end of a key.
  EXPECT_EQ(Parsed(R"({"a\\":1,":2})"), R"(0 {"a\\":1,": 2})");
  EXPECT_EQ(Parsed(R"({"a\\":1,"b":2})"), "0 {}");
  EXPECT_EQ(Parsed(R"({"a\\":1})"), "0 {}");
}

TEST(JsonParser, AnEmptyKeyIsAKey) {
  EXPECT_EQ(Parsed(R"({"":1,"b":2})"), R"(0 {1,"b": 2})");
  EXPECT_EQ(Parsed(R"({"":,b:1,c:2})"), R"(0 {1,"c": 2})");
}

TEST(JsonParser, BracketsNeedNoColon) {
  EXPECT_EQ(Parsed(R"({"a"[1],"b"{c:2}})"), R"(0 {"a": [1],"b": {"c": 2}})");
  EXPECT_EQ(Parsed("{[1]{a:2}}"), R"(0 {[1],{"a": 2}})");
}

TEST(JsonParser, TakesTheOtherBracketForADelimiter) {
  EXPECT_EQ(Parsed("[1}2,3]"), "0 [1,3]");
  EXPECT_EQ(Parsed(R"({"a":1],"b":2})"), R"(0 {"a": 1,"b": 2})");
  EXPECT_EQ(Parsed("[{a:1]}"), R"(4 [{"a": 1}])");
  EXPECT_EQ(Parsed("[1}"), "4 [1]");
}

TEST(JsonParser, AnElementIsFollowedByACommaOrTheEnd) {
  EXPECT_EQ(Parsed("[\"a\" x \"b\",1]"), "0 [\"a\",1]");
  EXPECT_EQ(Parsed("[[1][2],[3]]"), "0 [[1]]");
  EXPECT_EQ(Parsed("[\"a\""), "4 [\"a\"]");
  EXPECT_EQ(Parsed("[[1]"), "4 [[1]]");
}

TEST(JsonParser, ContainersMayEndWithTheText) {
  EXPECT_EQ(Parsed("["), "0 []");
  EXPECT_EQ(Parsed("[1,"), "0 [1]");
  EXPECT_EQ(Parsed("{"), "0 {}");
  EXPECT_EQ(Parsed("{\"a\""), "0 {}");
  EXPECT_EQ(Parsed("{a,"), "0 {}");
  EXPECT_EQ(Parsed(R"({"a":"x")"), R"(0 {"a": "x"})");
  EXPECT_EQ(Parsed(R"({"a":{"b":[1,)"), R"(0 {"a": {"b": [1]}})");
  EXPECT_EQ(Parsed(R"({"a":{"b":{)"), R"(0 {"a": {"b": {}}})");
}

TEST(JsonParser, TextThatRunsOutOfDelimitersFails) {
  EXPECT_EQ(Parsed("{a"), "2 {}");
  EXPECT_EQ(Parsed("{\"a"), "2 {}");
  EXPECT_EQ(Parsed(R"({"a":"x" )"), R"(2 {"a": "x"})");
  EXPECT_EQ(Parsed("{a:"), "3 {}");
  EXPECT_EQ(Parsed("{a:1"), "3 {}");
  EXPECT_EQ(Parsed("[1,2"), "3 [1]");
  EXPECT_EQ(Parsed("[ "), "3 []");
}

TEST(JsonParser, AStringThatIsNotClosedFailsAndStaysUndefined) {
  EXPECT_EQ(Parsed(R"({"a":"b\")"), "3 {}");
  EXPECT_EQ(Parsed("\"abc"), "3 null");
  EXPECT_EQ(Parsed("\""), "3 null");
  EXPECT_EQ(Parsed("\"a,b]{[}"), "3 null");
  EXPECT_EQ(Parsed(R"(["a\\\")"), "3 []");
}

TEST(JsonParser, KeepsWhatWasCompleteBeforeAFailure) {
  // A container joins its parent when it ends; what was inside an open one goes with it.
  EXPECT_EQ(Parsed(R"({"a":1,"b":{"c":2,"d":)"), R"(3 {"a": 1})");
  EXPECT_EQ(Parsed("[1,[2,3],[4,5"), "3 [1,[2,3]]");
  CJsonDocument document;
  EXPECT_EQ(document.Parse("[1,2"), 3);
  EXPECT_EQ(document.type, kJsonArray);
}

TEST(JsonParser, StringsEndAtAnUnescapedQuote) {
  EXPECT_EQ(Parsed(R"(["a\"b","c\\","d\\\"e","\\\\"])"), R"(0 ["a\"b","c\\","d\\\"e","\\\\"])");
  EXPECT_EQ(ParsedString("[{,]}:"), "[{,]}:");
  EXPECT_EQ(ParsedString(""), "");
  // A backslash in front of the opening quote means nothing.
  EXPECT_EQ(Parsed(R"([\"a"])"), R"(0 ["a"])");
}

TEST(JsonParser, UndoesEscapes) {
  EXPECT_EQ(ParsedString(R"(\b\f\n\r\t)"), "\b\f\n\r\t");
  EXPECT_EQ(ParsedString(R"(\"\\\/\q\')"), "\"\\/q'");
  EXPECT_EQ(ParsedString(R"(a\\nb)"), "a\\nb");
  EXPECT_EQ(ParsedString("a\\\nb"), "a\nb");
}

TEST(JsonParser, NarrowsUnicodeEscapesToTheirLowByte) {
  const std::string coffee = ParsedString(R"(caf\u00e9)");
  ASSERT_EQ(coffee.size(), 4u);
  EXPECT_EQ(coffee, "caf\xE9");
  EXPECT_EQ(ParsedString(R"(\u20ac)"), "\xAC");
  EXPECT_EQ(ParsedString(R"(\u00E9\u0041B)"),
            "\xE9"
            "AB");
  EXPECT_EQ(ParsedString(R"(\uzz41)"), "A");
  EXPECT_EQ(ParsedString(R"(\u0000x)"), "\0x"s);
  EXPECT_EQ(ParsedString(R"(\ud83d\ude00)"), "\x3D\0"s);
}

TEST(JsonParser, ReadsByteEscapes) {
  EXPECT_EQ(ParsedString(R"(\x41\xe9!)"), "A\xE9!");
  EXPECT_EQ(ParsedString(R"(\x5cn)"), "\\n");  // what an escape gives is not looked at again
}

TEST(JsonParser, DigitsThatAreMissingOrNoneCountAsFarAsTheyGo) {
  EXPECT_EQ(ParsedString(R"(\u)"), "\0"s);
  EXPECT_EQ(ParsedString(R"(\u00)"), "\0"s);
  EXPECT_EQ(ParsedString(R"(\u004)"), "\x04");
  EXPECT_EQ(ParsedString(R"(\u004gx)"), "\x04x");
  EXPECT_EQ(ParsedString(R"(\u00g4x)"), "\0x"s);
  EXPECT_EQ(ParsedString(R"(\x)"), "\0"s);
  EXPECT_EQ(ParsedString(R"(\x4)"), "\x04");
  EXPECT_EQ(ParsedString(R"(\x-1z)"), "\0z"s);
}

TEST(JsonParser, ALoneBackslashAtTheEndOfAStringFails) {
  // The digits of the escape take the first of the two backslashes.
  CJsonDocument document;
  EXPECT_EQ(document.Parse(R"("ab\x1\\")"), 6);
  EXPECT_EQ(document.type, kJsonString);
  EXPECT_EQ(document.text, "ab\x01\\");
  EXPECT_EQ(Parsed(R"([1,"\u000\\"])"), "6 [1]");
  EXPECT_EQ(ParsedString(R"(\u00\\)"), "\0"s);
}

TEST(JsonParser, ACutDocumentNeverDoesHarm) {
  const std::string whole = R"({"a":[1,{"b":"x\"\u0041"},true],c:{d:null,"e\\":"f"},"g":[[],{}]})";
  for (size_t length = 0; length <= whole.size(); ++length) {
    CJsonDocument document;
    CJsonDocument plain;
    const std::string text = whole.substr(0, length);
    EXPECT_EQ(document.Parse(text), PlainParse(plain, text)) << text;
  }
  EXPECT_EQ(CodeOf(whole), 0);
}

// Everything in a tree, for comparison.
void Dump(const CJsonValue& value, std::string& output) {
  output += std::to_string(value.type) + "<" + value.key + ">" + value.text + ">" +
            std::to_string(std::bit_cast<uint64_t>(value.number)) + (value.flag ? "t" : "f");
  output.push_back('[');
  for (const auto& element : value.array) Dump(*element, output);
  output += "]{";
  for (const auto& member : value.object) Dump(*member, output);
  output.push_back('}');
}

std::string Outcome(int code, const CJsonValue& value) {
  std::string outcome = std::to_string(code) + " ";
  Dump(value, outcome);
  return outcome;
}

void ExpectAsPlain(const std::string& text) {
  CJsonDocument document;
  const int code = document.Parse(text);
  CJsonDocument plain;
  const int plainCode = PlainParse(plain, text);
  ASSERT_EQ(Outcome(code, document), Outcome(plainCode, plain)) << text;
}

TEST(JsonParser, GivesWhatThePlainScannerGivesForRandomCharacters) {
  constexpr std::string_view kAlphabet = "{}[]\",:\\ utrfalsen0123456789.-x";
  std::mt19937 random(20240521);
  for (int round = 0; round < 100000; ++round) {
    std::string text;
    for (size_t length = random() % 60; text.size() < length;)
      text.push_back(kAlphabet[random() % kAlphabet.size()]);
    ASSERT_NO_FATAL_FAILURE(ExpectAsPlain(text));
  }
}

TEST(JsonParser, GivesWhatThePlainScannerGivesForRandomDelimiters) {
  constexpr std::string_view kAlphabet = "{{}}[[]]\"\"\",,::\\\\ a1";
  std::mt19937 random(7);
  for (int round = 0; round < 100000; ++round) {
    std::string text(1, round % 2 == 0 ? '{' : '[');
    for (size_t length = 1 + random() % 40; text.size() < length;)
      text.push_back(kAlphabet[random() % kAlphabet.size()]);
    ASSERT_NO_FATAL_FAILURE(ExpectAsPlain(text));
  }
}

TEST(JsonParser, GivesWhatThePlainScannerGivesForRandomTokens) {
  constexpr std::string_view kTokens[] = {
      "{",       "}",       "[",      "]",       ",",       ",",     ":",    ":",    "\"",
      "\"a\"",   "\"\"",    "\"b\":", "\"c,d\"", "\"e\\\"", "key:",  "\"\\", "\\",   "\\\\",
      "\\\"",    "\\u00e9", "\\u12",  "\\x4",    "\\x41",   "\\n",   " ",    "true", "false",
      "null",    "nul",     "1",      "-2.5e3",  "1e",      "1e400", "0x1F", ".",    "text",
      "{\"k\":", "\"s\"}",  "[1,",    "]}",      "},{",     "\t"};
  std::mt19937 random(99);
  for (int round = 0; round < 100000; ++round) {
    std::string text(1, round % 3 == 0 ? '[' : '{');
    for (size_t tokens = random() % 30; tokens > 0; --tokens)
      text += kTokens[random() % std::size(kTokens)];
    ASSERT_NO_FATAL_FAILURE(ExpectAsPlain(text));
  }
}

TEST(JsonParser, GivesWhatThePlainScannerGivesForRandomNumbers) {
  constexpr std::string_view kAlphabet = "0011223456789.eE+- \t-x";
  std::mt19937 random(4711);
  for (int round = 0; round < 100000; ++round) {
    std::string text;
    for (size_t length = random() % 12; text.size() < length;)
      text.push_back(kAlphabet[random() % kAlphabet.size()]);
    ASSERT_NO_FATAL_FAILURE(ExpectAsPlain(text + ","));
  }
}

}  // namespace
