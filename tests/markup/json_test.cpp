#include "markup/json.h"

#include <memory>
#include <string>
#include <thread>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

namespace {

static_assert(std::has_virtual_destructor_v<CJsonValue>);
static_assert(std::is_base_of_v<CJsonValue, CJsonDocument>);
static_assert(std::is_base_of_v<std::exception, CJsonException>);

// Runs `action`, which must throw, and gives the failure.
template <typename Action>
CJsonException FailureOf(Action action) {
  try {
    action();
  } catch (const CJsonException& failure) {
    return failure;
  }
  ADD_FAILURE() << "nothing was thrown";
  return CJsonException(0, "");
}

TEST(JsonValue, IsUndefinedAndEmptyWhenFresh) {
  const CJsonValue value;
  EXPECT_EQ(value.key, "");
  EXPECT_EQ(value.type, kJsonUndefined);
  EXPECT_EQ(value.text, "");
  EXPECT_EQ(value.number, 0.0);
  EXPECT_FALSE(value.flag);
  EXPECT_EQ(value.array.Count(), 0u);
  EXPECT_EQ(value.object.Count(), 0u);
}

TEST(JsonValue, TypesHaveTheirNumbers) {
  EXPECT_EQ(kJsonUndefined, 0u);
  EXPECT_EQ(kJsonNull, 1u);
  EXPECT_EQ(kJsonString, 2u);
  EXPECT_EQ(kJsonNumber, 3u);
  EXPECT_EQ(kJsonObject, 4u);
  EXPECT_EQ(kJsonArray, 5u);
  EXPECT_EQ(kJsonBool, 6u);
}

TEST(JsonValue, GivesItsContentByType) {
  CJsonDocument document;
  ASSERT_EQ(document.Parse(R"({"s":"x","n":-2.5,"b":true,"o":{"k":1},"a":[7,8]})"), 0);
  EXPECT_EQ(document.Get("s").AsString(), "x");
  EXPECT_EQ(document.Get("n").AsNumber(), -2.5);
  EXPECT_TRUE(document.Get("b").AsBool());
  EXPECT_EQ(document.Get("o").AsObject().Count(), 1u);
  EXPECT_EQ(document.Get("o").Get("k").AsNumber(), 1.0);
  EXPECT_EQ(document.Get("a").AsArray().Count(), 2u);
  EXPECT_EQ(document.Get("a").AsArray().At(1).AsNumber(), 8.0);
  const CJsonValue& readOnly = document;
  EXPECT_EQ(readOnly.Get("o").AsObject().Get("k").AsNumber(), 1.0);
  EXPECT_EQ(readOnly.AsObject().Get("a").AsArray().At(0).AsNumber(), 7.0);
}

TEST(JsonValue, RefusesTheWrongTypeWithTheCodeOfTheRightOne) {
  CJsonValue value;
  value.key = "k";
  value.type = kJsonNull;
  const auto expect = [](const CJsonException& failure, int code) {
    EXPECT_EQ(failure.code, code);
    EXPECT_EQ(failure.key, "k");
  };
  expect(FailureOf([&] { value.AsString(); }), 6);
  expect(FailureOf([&] { value.AsNumber(); }), 7);
  expect(FailureOf([&] { value.AsBool(); }), 8);
  expect(FailureOf([&] { value.AsObject(); }), 9);
  expect(FailureOf([&] { value.Get("x"); }), 9);
  expect(FailureOf([&] { value.AsArray(); }), 10);
}

TEST(JsonValue, IsRefusedUnderEveryTypeButItsOwn) {
  for (uint32_t type = kJsonUndefined; type <= kJsonBool; ++type) {
    CJsonValue value;
    value.type = static_cast<JsonType>(type);
    const auto works = [](auto access) {
      try {
        access();
        return true;
      } catch (const CJsonException&) {
        return false;
      }
    };
    EXPECT_EQ(works([&] { value.AsString(); }), type == 2) << type;
    EXPECT_EQ(works([&] { value.AsNumber(); }), type == 3) << type;
    EXPECT_EQ(works([&] { value.AsObject(); }), type == 4) << type;
    EXPECT_EQ(works([&] { value.AsArray(); }), type == 5) << type;
    EXPECT_EQ(works([&] { value.AsBool(); }), type == 6) << type;
  }
}

TEST(JsonValue, SetStringMakesAString) {
  CJsonValue value;
  value.SetString("text");
  EXPECT_EQ(value.type, kJsonString);
  EXPECT_EQ(value.AsString(), "text");
}

TEST(JsonValue, ClearKeepsTheKeyOnly) {
  CJsonValue value;
  value.key = "k";
  value.type = kJsonArray;
  value.text = "t";
  value.number = 1.0;
  value.flag = true;
  value.array.Add();
  value.object.Ensure("m");
  value.Clear();
  EXPECT_EQ(value.key, "k");
  EXPECT_EQ(value.type, kJsonUndefined);
  EXPECT_EQ(value.text, "");
  EXPECT_EQ(value.number, 0.0);
  EXPECT_FALSE(value.flag);
  EXPECT_EQ(value.array.Count(), 0u);
  EXPECT_EQ(value.object.Count(), 0u);
}

TEST(JsonArray, AddsUndefinedValuesInOrder) {
  CJsonArray array;
  array.Add().SetString("first");
  EXPECT_EQ(array.Add().type, kJsonUndefined);
  ASSERT_EQ(array.Count(), 2u);
  EXPECT_EQ(array.At(0).AsString(), "first");
  EXPECT_EQ(array.At(1).type, kJsonUndefined);
  EXPECT_EQ(array.At(1).key, "");
}

TEST(JsonArray, HasNothingBeyondItsEnd) {
  CJsonArray array;
  EXPECT_EQ(FailureOf([&] { array.At(0); }).code, 5);
  array.Add();
  EXPECT_EQ(FailureOf([&] { array.At(1); }).code, 5);
  EXPECT_EQ(FailureOf([&] { array.At(static_cast<size_t>(-1)); }).code, 5);
}

TEST(JsonObject, FindsTheFirstOfEqualKeys) {
  CJsonDocument document;
  ASSERT_EQ(document.Parse(R"({"a":1,"a":2,"b":3})"), 0);
  EXPECT_EQ(document.object.Count(), 3u);
  EXPECT_EQ(document.Get("a").AsNumber(), 1.0);
  EXPECT_EQ(document.object.Find("b")->AsNumber(), 3.0);
  EXPECT_EQ(document.object.Find("A"), nullptr);
  EXPECT_EQ(document.object.Find(""), nullptr);
}

TEST(JsonObject, MissesAKeyWithItsName) {
  CJsonDocument document;
  ASSERT_EQ(document.Parse(R"({"a":1})"), 0);
  const CJsonException failure = FailureOf([&] { document.Get("missing"); });
  EXPECT_EQ(failure.code, 5);
  EXPECT_EQ(failure.key, "missing");
  EXPECT_EQ(FailureOf([&] { document.AsObject().Get("b"); }).code, 5);
}

TEST(JsonObject, FindsAlongAPathWithEitherSeparator) {
  CJsonDocument document;
  ASSERT_EQ(document.Parse(R"({"a":{"b":{"c":5}},"n":1,"":{"x":9}})"), 0);
  const CJsonObject& root = document.AsObject();
  EXPECT_EQ(root.FindPath("a/b/c")->AsNumber(), 5.0);
  EXPECT_EQ(root.FindPath("a\\b/c")->AsNumber(), 5.0);
  EXPECT_EQ(root.FindPath("a/b")->type, kJsonObject);
  EXPECT_EQ(root.FindPath("n")->AsNumber(), 1.0);
  EXPECT_EQ(root.FindPath("/x")->AsNumber(), 9.0);
  EXPECT_EQ(root.FindPath("a/x/c"), nullptr);
  EXPECT_EQ(root.FindPath("a/b/x"), nullptr);
  EXPECT_EQ(root.FindPath("n/b"), nullptr);
  EXPECT_EQ(root.FindPath("a/b/"), nullptr);
  EXPECT_EQ(root.FindPath("a/b/c/d"), nullptr);
  document.object.FindPath("a/b/c")->number = 6.0;
  EXPECT_EQ(root.FindPath("a/b/c")->AsNumber(), 6.0);
}

TEST(JsonObject, EnsureMakesThePathAndAnUndefinedMember) {
  CJsonObject object;
  CJsonValue& value = object.Ensure("a\\b/c");
  EXPECT_EQ(value.type, kJsonUndefined);
  EXPECT_EQ(value.key, "c");
  EXPECT_EQ(object.Get("a").type, kJsonObject);
  EXPECT_EQ(object.FindPath("a/b/c"), &value);
  CJsonValue& second = object.Ensure("a/d");
  EXPECT_EQ(object.Get("a").AsObject().Count(), 2u);
  EXPECT_EQ(object.FindPath("a/d"), &second);
}

TEST(JsonObject, EnsureRefusesWhatIsThereAndWhatIsNoObject) {
  CJsonObject object;
  object.Ensure("a/b").type = kJsonNumber;
  const CJsonException exists = FailureOf([&] { object.Ensure("a/b"); });
  EXPECT_EQ(exists.code, 1);
  EXPECT_EQ(exists.key, "b");
  EXPECT_EQ(FailureOf([&] { object.Ensure("a"); }).code, 1);
  EXPECT_EQ(FailureOf([&] { object.Ensure("a/b/c"); }).code, 9);
  EXPECT_EQ(object.Count(), 1u);
}

TEST(JsonObject, LooksPastEmptySlots) {
  CJsonObject object;
  object.Append(nullptr);
  object.Ensure("a");
  EXPECT_EQ(object.Find("a"), object.begin()[1].get());
}

TEST(JsonDocument, ParseReplacesWhatWasThere) {
  CJsonDocument document;
  document.key = "kept";
  EXPECT_EQ(document.Parse("[1,2]"), 0);
  EXPECT_EQ(document.Parse("{a:1}"), 0);
  EXPECT_EQ(document.type, kJsonObject);
  EXPECT_EQ(document.array.Count(), 0u);
  EXPECT_EQ(document.key, "kept");
}

TEST(JsonDocument, DestroysTreesThatBranchOnBothSides) {
  // Arrays and objects in turn, each with plain values and empty slots around the deep one.
  auto root = std::make_unique<CJsonDocument>();
  CJsonValue* value = root.get();
  for (int i = 0; i < 100000; ++i) {
    value->array.Add().SetString("before");
    value->object.Ensure("o").array.Add();
    value->object.Append(nullptr);
    CJsonValue& deeper = i % 2 == 0 ? value->array.Add() : value->object.Ensure("deeper");
    value->array.Add();
    value = &deeper;
  }
  root.reset();
  EXPECT_EQ(root, nullptr);
}

TEST(JsonMemory, ValuesOfOneThreadMayEndInAnother) {
  CJsonArray first;
  CJsonArray second;
  std::thread([&first] {
    for (int i = 0; i < 1000; ++i) first.Add().SetString("made elsewhere");
  }).join();
  std::thread dropping([&first] { first.Clear(); });
  for (int i = 0; i < 1000; ++i) second.Add().number = i;
  dropping.join();
  EXPECT_EQ(first.Count(), 0u);
  for (size_t i = 0; i < 1000; ++i) EXPECT_EQ(second.At(i).number, static_cast<double>(i));
}

TEST(JsonMemory, DerivedValuesMayBeLarger) {
  struct LargerValue : CJsonValue {
    std::string more[100];
  };
  auto value = std::make_unique<LargerValue>();
  value->more[99] = "a text that is too long for the place inside a string";
  CJsonArray array;
  array.Append(std::move(value));
  array.Add();
  array.Clear();
  EXPECT_EQ(array.Count(), 0u);
}

TEST(JsonException, HasNoMessageOfItsOwn) {
  const CJsonException failure(5, "k");
  EXPECT_STREQ(failure.what(), std::exception().what());
}

}  // namespace
