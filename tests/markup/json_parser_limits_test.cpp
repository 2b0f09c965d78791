#include <memory>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "markup/json.h"

// Texts of several megabytes that would take a scanner minutes, or all memory, as soon as it looked
// at some stretch of them more than once. Nothing is timed: such a test would not come to its end.

namespace {

constexpr size_t kMillion = 1000000;

std::string Repeated(std::string_view part, size_t count) {
  std::string text;
  text.reserve(part.size() * count);
  for (size_t i = 0; i < count; ++i) text += part;
  return text;
}

TEST(JsonLimits, ReadsALongArray) {
  CJsonDocument document;
  EXPECT_EQ(document.Parse("[" + Repeated("\"s\",-12.5,", kMillion) + "1]"), 0);
  ASSERT_EQ(document.array.Count(), 2 * kMillion + 1);
  EXPECT_EQ(document.array.At(kMillion).text, "s");
  EXPECT_EQ(document.array.At(kMillion + 1).number, -12.5);
}

TEST(JsonLimits, ReadsALongObject) {
  CJsonDocument document;
  EXPECT_EQ(document.Parse("{" + Repeated("\"key\":1,bare:[],", kMillion / 2) + "}"), 0);
  ASSERT_EQ(document.object.Count(), kMillion);
  EXPECT_EQ(document.object.end()[-1]->key, "bare");
}

TEST(JsonLimits, ReadsTenThousandLevels) {
  constexpr size_t kLevels = 10000;
  CJsonDocument document;
  EXPECT_EQ(document.Parse(Repeated("[", kLevels) + "1" + Repeated("]", kLevels)), 0);
  const CJsonValue* value = &document;
  for (size_t i = 0; i < kLevels; ++i) value = &value->AsArray().At(0);
  EXPECT_EQ(value->AsNumber(), 1.0);

  EXPECT_EQ(document.Parse(Repeated("{\"a\":", kLevels) + "1" + Repeated("}", kLevels)), 0);
  const std::string path = Repeated("a/", kLevels - 1) + "a";
  ASSERT_NE(document.AsObject().FindPath(path), nullptr);
  EXPECT_EQ(document.AsObject().FindPath(path)->AsNumber(), 1.0);
}

TEST(JsonLimits, ReadsALongDocumentAtEveryLevel) {
  // Elements on the way down and on the way up: each level has the rest of the text before it.
  constexpr size_t kLevels = 10000;
  const std::string filling = Repeated("1,", 60);
  CJsonDocument document;
  EXPECT_EQ(document.Parse(Repeated("[" + filling, kLevels) + "2" +
                           Repeated("," + filling + "]", kLevels)),
            0);
  EXPECT_EQ(document.array.Count(), 121u);
}

TEST(JsonLimits, ReadsUpToTheDeepestLevelAndNoFurther) {
  for (const auto& [open, close] : {std::pair("[", "]"), std::pair("{a:", "}")}) {
    CJsonDocument document;
    EXPECT_EQ(document.Parse(Repeated(open, kJsonDeepest) + "1" + Repeated(close, kJsonDeepest)),
              0);
    EXPECT_EQ(document.Parse("[5," + Repeated(open, kJsonDeepest) + "1"), kJsonTooBig);
    EXPECT_EQ(document.array.Count(), 1u);
  }
}

TEST(JsonLimits, RefusesTextOfNothingButBrackets) {
  CJsonDocument document;
  EXPECT_EQ(document.Parse(std::string(5 * kMillion, '[')), kJsonTooBig);
  EXPECT_EQ(document.Parse(std::string(5 * kMillion, '{')), kJsonTooBig);
  EXPECT_EQ(document.Parse(Repeated("[{", 2 * kMillion)), kJsonTooBig);
}

TEST(JsonLimits, FailsInTheMidstOfADeepDocument) {
  CJsonDocument document;
  EXPECT_EQ(document.Parse(std::string(50000, '[') + "1"), kJsonValueCut);
  EXPECT_EQ(document.type, kJsonArray);
  EXPECT_EQ(document.array.Count(), 0u);
  EXPECT_EQ(document.Parse(Repeated("{a:", 50000) + "\"x\" "), kJsonObjectCut);
  EXPECT_EQ(document.object.Count(), 0u);
}

TEST(JsonLimits, DropsMillionsOfEmptyElements) {
  CJsonDocument document;
  EXPECT_EQ(document.Parse("[" + std::string(2 * kMillion, ',') + "]"), 0);
  EXPECT_EQ(document.array.Count(), 0u);
  EXPECT_EQ(document.Parse("[" + Repeated("[],", kMillion) + "]"), 0);
  EXPECT_EQ(document.array.Count(), kMillion);
}

TEST(JsonLimits, StopsAtAQuoteThatNeverCloses) {
  CJsonDocument document;
  EXPECT_EQ(document.Parse("[1,\"" + Repeated("a,b]{[", kMillion)), kJsonValueCut);
  EXPECT_EQ(document.array.Count(), 1u);
  EXPECT_EQ(document.Parse("\"" + Repeated("\\\"", 3 * kMillion)), kJsonValueCut);
  EXPECT_EQ(document.Parse("{\"" + Repeated("a:{[}", kMillion)), 0);
  EXPECT_EQ(document.object.Count(), 0u);
}

TEST(JsonLimits, CountsLongRunsOfBackslashes) {
  CJsonDocument document;
  EXPECT_EQ(document.Parse("\"" + std::string(6 * kMillion, '\\') + "\""), 0);
  EXPECT_EQ(document.text, std::string(3 * kMillion, '\\'));
  EXPECT_EQ(document.Parse("\"" + std::string(6 * kMillion + 1, '\\') + "\" \""), 0);
  EXPECT_EQ(document.text, std::string(3 * kMillion, '\\') + "\" ");
}

TEST(JsonLimits, UndoesMillionsOfEscapes) {
  CJsonDocument document;
  EXPECT_EQ(document.Parse("\"" + Repeated("\\u0041\\n\\x42\\\"", kMillion) + "\""), 0);
  EXPECT_EQ(document.text, Repeated("A\nB\"", kMillion));
}

TEST(JsonLimits, ReadsLongLiterals) {
  CJsonDocument document;
  EXPECT_EQ(document.Parse("[" + std::string(10 * kMillion, 't') + "]"), 0);
  EXPECT_EQ(document.array.Count(), 0u);
  EXPECT_EQ(document.Parse("[" + Repeated("tru fals nul", kMillion) + "null]"), 0);
  EXPECT_EQ(document.array.Count(), 1u);
  EXPECT_EQ(document.Parse("[0." + std::string(10 * kMillion, '1') + "]"), 0);
  EXPECT_DOUBLE_EQ(document.array.At(0).AsNumber(), 1.0 / 9.0);
  EXPECT_EQ(document.Parse("[" + std::string(10 * kMillion, '1') + "]"), 0);
  EXPECT_EQ(document.array.Count(), 0u);
}

TEST(JsonLimits, PassesOverDelimitersOfTheWrongKind) {
  CJsonDocument document;
  EXPECT_EQ(document.Parse("[" + std::string(5 * kMillion, '}')), kJsonArrayCut);
  EXPECT_EQ(document.Parse("[" + Repeated("},", kMillion) + "]"), 0);
  EXPECT_EQ(document.Parse("{" + std::string(5 * kMillion, ']')), kJsonObjectCut);
  EXPECT_EQ(document.Parse("{" + Repeated(":]", kMillion) + "}"), 0);
  EXPECT_EQ(document.Parse("{" + std::string(5 * kMillion, ':') + "}"), 0);
  EXPECT_EQ(document.object.Count(), 0u);
}

TEST(JsonLimits, KeepsALongKeyPendingWithoutCopies) {
  const std::string key(2 * kMillion, 'k');
  CJsonDocument document;
  EXPECT_EQ(document.Parse("{\"" + key + "\"" + Repeated(":,", kMillion) + ":1}"), 0);
  ASSERT_EQ(document.object.Count(), 1u);
  EXPECT_EQ(document.object.begin()[0]->key, key);
}

TEST(JsonLimits, CutsBlanksAroundBareKeysOnce) {
  const std::string blanks(2 * kMillion, ' ');
  CJsonDocument document;
  EXPECT_EQ(document.Parse("{" + blanks + "a" + blanks + ":1}"), 0);
  EXPECT_EQ(document.Get("a").AsNumber(), 1.0);
  // The second key begins at the first one, the third too.
  EXPECT_EQ(document.Parse("{" + blanks + "a:\"x\" b:\"y\" c:\"z\"}"), 0);
  EXPECT_EQ(document.object.begin()[2]->key, "a:\"x\" b:\"y\" c");
  // Every key begins in front of all these blanks.
  EXPECT_EQ(document.Parse("{" + blanks + blanks + Repeated(":[]", 1500) + "}"), 0);
  EXPECT_EQ(document.object.end()[-1]->key, Repeated(":[]", 1499));
}

TEST(JsonLimits, RefusesBareKeysThatOutgrowTheText) {
  // Each key holds all of the text before it: megabytes would give terabytes.
  CJsonDocument document;
  EXPECT_EQ(document.Parse("{" + Repeated("k:\"x\" ", kMillion) + "}"), kJsonTooBig);
  EXPECT_EQ(document.object.begin()[1]->key, "k:\"x\" k");
  EXPECT_EQ(document.Parse("{" + Repeated("k:\"x\" ", 400) + "}"), 0);
  EXPECT_EQ(document.object.Count(), 400u);
  // With commas there is no limit.
  EXPECT_EQ(document.Parse("{" + Repeated("k:\"x\",", kMillion) + "}"), 0);
  EXPECT_EQ(document.object.Count(), kMillion);
}

}  // namespace
