#include "core/conversion_driver.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "core/status.h"
#include "tests/list_builder.h"

namespace {

// The lists that the next read gives, and what it and the next write answer.
std::vector<CGpsTrack> nextLists;
uint32_t nextStatus = 0;
std::vector<std::string> written;
uint32_t writtenLimit = 0;

uint32_t Read(const WideString&, PointLists& lists, bool) {
  for (const CGpsTrack& list : nextLists) lists.push_back(std::make_unique<CGpsTrack>(list));
  return nextStatus;
}

uint32_t Write(const WideString&, const CGpsPointArray& list, uint32_t splitLimit, bool) {
  written.clear();
  for (const CGpsPoint& point : list.points) written.push_back(point.name);
  writtenLimit = splitLimit;
  return nextStatus;
}

/// A front that keeps what it was told and answers as the test wants.
class ScriptedFront : public IConversionFront {
 public:
  void ShowMessage(EMessageIcon icon, uint32_t textId) override {
    messages.push_back(textId);
    icons.push_back(icon);
  }
  bool AskYesNo(EMessageIcon icon, uint32_t textId) override {
    questions.push_back(textId);
    icons.push_back(icon);
    return answer;
  }
  std::vector<size_t> ChooseLists(const PointLists&) override { return chosen; }
  void SetBusy(bool busy) override { diary += busy ? '(' : ')'; }
  void ItineraryCleared() override { diary += 'c'; }
  void ItineraryLoaded() override { diary += 'l'; }

  std::vector<uint32_t> messages;
  std::vector<uint32_t> questions;
  std::vector<EMessageIcon> icons;
  std::vector<size_t> chosen{0};
  bool answer = true;
  std::string diary;
};

class ConversionDriver : public testing::Test {
 protected:
  ConversionDriver() : driver({{u"x", 106, Read, Write, 0}}, front) {
    nextLists = {MakeList<CGpsTrack>("Track", MakePoint(1, 1, "a"), MakePoint(2, 2, "b")),
                 MakeList<CGpsTrack>("Other", MakePoint(3, 3, "c"))};
    nextStatus = 0;
  }

  std::string Names() const {
    std::string names;
    for (const CGpsPoint& point : driver.current.points) names += point.name;
    return names;
  }

  void ReadManyPoints(size_t count) {
    nextLists = {CGpsTrack()};
    nextLists[0].points.resize(count, MakePoint(1, 1, "p"));
  }

  ScriptedFront front;
  CConversionDriver driver;
};

TEST_F(ConversionDriver, TakesTheChosenListsInTheirOrder) {
  front.chosen = {1, 0};
  EXPECT_EQ(driver.OpenFile(u"/trips/day.x", false, false), kStatusSuccess);
  EXPECT_EQ(Names(), "cab");
  EXPECT_EQ(driver.current.name, "Other");
  EXPECT_EQ(driver.sourcePath, u"/trips/day.x");
  EXPECT_EQ(front.diary, "(c)l");
  EXPECT_TRUE(front.messages.empty());
}

TEST_F(ConversionDriver, NamesTheItineraryAfterTheFirstNamedListOrTheFile) {
  nextLists[0].name.clear();
  front.chosen = {0, 1};
  driver.OpenFile(u"/trips/day.x", false, false);
  EXPECT_EQ(driver.current.name, "Other");
  front.chosen = {0};
  driver.OpenFile(u"/trips/B\u00e9ziers.1.x", false, false);
  EXPECT_EQ(driver.current.name, "B\u00e9ziers.1");
}

TEST_F(ConversionDriver, ReplacesOrAppends) {
  driver.OpenFile(u"/one.x", false, false);
  driver.OpenFile(u"/two.x", false, false);
  EXPECT_EQ(Names(), "ab");
  EXPECT_EQ(driver.sourcePath, u"/two.x");
  front.chosen = {1};
  driver.OpenFile(u"/three.x", true, false);
  EXPECT_EQ(Names(), "abc");
  EXPECT_EQ(driver.current.name, "Track");
  EXPECT_EQ(driver.sourcePath, u"/two.x");
}

TEST_F(ConversionDriver, LeavesTheItineraryAloneWhenTheUserDeclines) {
  driver.OpenFile(u"/one.x", false, false);
  front.chosen.clear();
  front.diary.clear();
  EXPECT_EQ(driver.OpenFile(u"/two.x", false, false), kStatusDeclined);
  EXPECT_EQ(Names(), "ab");
  EXPECT_EQ(driver.sourcePath, u"/one.x");
  EXPECT_EQ(front.diary, "()");
  EXPECT_TRUE(front.messages.empty());
}

TEST_F(ConversionDriver, TellsEveryFailureOfARead) {
  const struct {
    uint32_t status;
    std::vector<uint32_t> messages;
  } kCases[] = {{1223, {}}, {32, {220}}, {0x80030020, {220}}, {11, {164}},
                {1, {108}}, {2, {108}},  {13, {108}},         {0x80070057, {108}}};
  for (const auto& expected : kCases) {
    front.messages.clear();
    nextStatus = expected.status;
    EXPECT_EQ(driver.OpenFile(u"/one.x", false, false), expected.status);
    EXPECT_EQ(front.messages, expected.messages) << expected.status;
    for (const EMessageIcon icon : front.icons) EXPECT_EQ(icon, EMessageIcon::kError);
  }
  EXPECT_EQ(driver.current.Count(), 0u);
}

TEST_F(ConversionDriver, AsksFromThreeHundredAndOnePointsOnAfterTheLoad) {
  ReadManyPoints(300);
  EXPECT_EQ(driver.OpenFile(u"/one.x", false, false), kStatusSuccess);
  EXPECT_TRUE(front.questions.empty());
  ReadManyPoints(301);
  front.answer = false;
  front.diary.clear();
  EXPECT_EQ(driver.OpenFile(u"/two.x", false, false), kStatusDeclined);
  EXPECT_EQ(front.questions, std::vector<uint32_t>{271});
  EXPECT_EQ(front.icons, std::vector<EMessageIcon>{EMessageIcon::kWarning});
  EXPECT_EQ(driver.current.Count(), 301u);
  EXPECT_EQ(driver.sourcePath, u"");
  EXPECT_EQ(driver.current.name, "");
  EXPECT_EQ(driver.current.snapshot.Count(), 0u);
  EXPECT_EQ(front.diary, "(c)");
  front.answer = true;
  EXPECT_EQ(driver.OpenFile(u"/two.x", false, false), kStatusSuccess);
}

TEST_F(ConversionDriver, RemembersTheStateAtLoadAndExport) {
  EXPECT_TRUE(driver.ConfirmDiscard());
  driver.OpenFile(u"/one.x", false, false);
  EXPECT_TRUE(driver.ConfirmDiscard());
  EXPECT_TRUE(front.questions.empty());

  driver.current.points[0].comment = "changed";
  front.answer = false;
  EXPECT_FALSE(driver.ConfirmDiscard());
  EXPECT_EQ(front.questions, std::vector<uint32_t>{205});
  front.answer = true;
  EXPECT_TRUE(driver.ConfirmDiscard());

  front.questions.clear();
  EXPECT_EQ(driver.ExportTo(u"/out.x", driver.table[0], false), kStatusSuccess);
  EXPECT_TRUE(driver.ConfirmDiscard());
  driver.current.name = "renamed";
  EXPECT_TRUE(driver.ConfirmDiscard());
  driver.current.points.pop_back();
  EXPECT_TRUE(driver.ConfirmDiscard());
  EXPECT_EQ(front.questions, (std::vector<uint32_t>{205, 205}));
}

TEST_F(ConversionDriver, ExportsAndTellsAFailure) {
  driver.OpenFile(u"/one.x", false, false);
  front.diary.clear();
  EXPECT_EQ(driver.ExportTo(u"/out.x", driver.table[0], false, 7), kStatusSuccess);
  EXPECT_EQ(written, (std::vector<std::string>{"a", "b"}));
  EXPECT_EQ(writtenLimit, 7u);
  EXPECT_EQ(front.diary, "()");
  driver.current.points[0].comment = "changed";
  nextStatus = 112;
  EXPECT_EQ(driver.ExportTo(u"/out.x", driver.table[0], false), 112u);
  EXPECT_EQ(front.messages, std::vector<uint32_t>{109});
  EXPECT_EQ(writtenLimit, 0u);
  EXPECT_EQ(driver.current.snapshot.points[0].comment, "");
}

TEST_F(ConversionDriver, KeepsNoStateWhenNobodyWillBeAsked) {
  CConversionDriver unattended({{u"x", 106, Read, Write, 0}}, front, EChangeTracking::kOff);
  unattended.OpenFile(u"/one.x", false, true);
  EXPECT_EQ(unattended.current.Count(), 2u);
  EXPECT_EQ(unattended.current.snapshot.Count(), 0u);
}

}  // namespace
