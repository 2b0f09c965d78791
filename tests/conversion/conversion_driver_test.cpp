#include "conversion/conversion_driver.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "base/status.h"
#include "conversion/lookup_cache.h"
#include "tests/list_builder.h"
#include "tests/temporary_folder.h"

namespace {

// Where the last write went.
WideString writtenPath;

// The lists that the next read gives, and what it and the next write answer.
std::vector<CGpsTrack> nextLists;
uint32_t nextStatus = 0;
std::vector<std::string> written;
uint32_t writtenLimit = 0;

uint32_t Read(const WideString&, PointLists& lists, bool) {
  for (const CGpsTrack& list : nextLists) lists.push_back(std::make_unique<CGpsTrack>(list));
  return nextStatus;
}

uint32_t Write(const WideString& path, const CGpsPointArray& list, uint32_t splitLimit, bool) {
  // As every file that is made.
  ContextInPlace context;
  if (context->guard) {
    if (const uint32_t refusal = context->guard(path)) return refusal;
  }
  writtenPath = path;
  written.clear();
  for (const CGpsPoint& point : list.points) written.push_back(point.name);
  writtenLimit = splitLimit;
  return nextStatus;
}

uint32_t Refuse(const WideString&, PointLists&, bool) { return 11; }

/// A front that keeps what it was told and answers as the test wants.
class ScriptedFront : public ConversionFront {
 public:
  void ShowMessage(MessageIcon icon, uint32_t textId, const FailureReason&) override {
    messages.push_back(textId);
    icons.push_back(icon);
  }
  bool AskYesNo(MessageIcon icon, uint32_t textId) override {
    questions.push_back(textId);
    icons.push_back(icon);
    return answer;
  }
  std::vector<size_t> ChooseLists(const PointLists&) override { return chosen; }
  void SetBusy(bool busy) override { diary += busy ? '(' : ')'; }
  void ItineraryCleared() override { diary += 'c'; }
  void ItineraryLoaded() override { diary += 'l'; }
  std::optional<ChosenFile> AskOpenFile(const FileDialog& shown) override {
    dialog = shown;
    return file;
  }
  std::optional<ChosenFile> AskSaveFile(const FileDialog& shown) override {
    dialog = shown;
    return file;
  }
  WideString NameFieldText() const override { return nameField; }
  void NameChanged() override { diary += 'n'; }

  std::vector<uint32_t> messages;
  std::vector<uint32_t> questions;
  std::vector<MessageIcon> icons;
  std::vector<size_t> chosen{0};
  bool answer = true;
  std::string diary;
  std::optional<FileDialog> dialog;
  std::optional<ChosenFile> file;
  WideString nameField;
};

class ConversionDriverTest : public testing::Test {
 protected:
  ConversionDriverTest()
      : driver({{u"x", 106, Read, Write, 0}, {u"ggm", 203, nullptr, Write, 0, {.isFile = false}}},
               front, context) {
    nextLists = {MakeList<CGpsTrack>("Track", MakePoint(1, 1, "a"), MakePoint(2, 2, "b")),
                 MakeList<CGpsTrack>("Other", MakePoint(3, 3, "c"))};
    nextStatus = 0;
    written.clear();
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
  ConversionContext context;
  ConversionDriver driver;
};

TEST_F(ConversionDriverTest, TakesTheChosenListsInTheirOrder) {
  front.chosen = {1, 0};
  EXPECT_EQ(driver.OpenFile(u"/trips/day.x", false, false), kStatusSuccess);
  EXPECT_EQ(Names(), "cab");
  EXPECT_EQ(driver.current.name, "Other");
  EXPECT_EQ(driver.sourcePath, u"/trips/day.x");
  EXPECT_EQ(front.diary, "(c)l");
  EXPECT_TRUE(front.messages.empty());
}

TEST_F(ConversionDriverTest, NamesTheItineraryAfterTheFirstNamedListOrTheFile) {
  nextLists[0].name.clear();
  front.chosen = {0, 1};
  driver.OpenFile(u"/trips/day.x", false, false);
  EXPECT_EQ(driver.current.name, "Other");
  front.chosen = {0};
  driver.OpenFile(u"/trips/B\u00e9ziers.1.x", false, false);
  EXPECT_EQ(driver.current.name, "B\u00e9ziers.1");
}

TEST_F(ConversionDriverTest, ReplacesOrAppends) {
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

TEST_F(ConversionDriverTest, LeavesTheItineraryAloneWhenTheUserDeclines) {
  driver.OpenFile(u"/one.x", false, false);
  front.chosen.clear();
  front.diary.clear();
  EXPECT_EQ(driver.OpenFile(u"/two.x", false, false), kStatusDeclined);
  EXPECT_EQ(Names(), "ab");
  EXPECT_EQ(driver.sourcePath, u"/one.x");
  EXPECT_EQ(front.diary, "()");
  EXPECT_TRUE(front.messages.empty());
}

TEST_F(ConversionDriverTest, AsksTheNextReaderWhenTheUserDeclines) {
  ConversionDriver both({{u"x", 106, Read, Write, 0}, {u"x", 107, Refuse, nullptr, 0}}, front,
                        context);
  front.chosen.clear();
  EXPECT_EQ(both.OpenFile(u"/one.x", false, false), kStatusBadFormat);
  EXPECT_EQ(front.messages, std::vector<uint32_t>{164});
}

TEST_F(ConversionDriverTest, RefusesToWriteOverASourceThatHoldsMore) {
  const TemporaryFolder folder;
  const WideString path = folder.Put("one.x", "both lists");
  driver.OpenFile(path, false, false);
  WriteOptions options;
  const TripWrite refused = driver.Export(path, driver.table[0], options);
  EXPECT_EQ(refused.status, kStatusDeclined);
  EXPECT_EQ(refused.refusal, WriteRefusal::kSourceHoldsMore);
  EXPECT_TRUE(front.messages.empty());
  EXPECT_TRUE(written.empty());
  EXPECT_EQ(driver.Export(folder.WidePathTo("two.x"), driver.table[0], options).status, 0u);
  options.force = true;
  EXPECT_EQ(driver.Export(path, driver.table[0], options).status, 0u);
}

TEST_F(ConversionDriverTest, TellsEveryFailureOfARead) {
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
    for (const MessageIcon icon : front.icons) EXPECT_EQ(icon, MessageIcon::kError);
  }
  EXPECT_EQ(driver.current.Count(), 0u);
}

TEST_F(ConversionDriverTest, AsksFromThreeHundredAndOnePointsOnAfterTheLoad) {
  ReadManyPoints(300);
  EXPECT_EQ(driver.OpenFile(u"/one.x", false, false), kStatusSuccess);
  EXPECT_TRUE(front.questions.empty());
  ReadManyPoints(301);
  front.answer = false;
  front.diary.clear();
  EXPECT_EQ(driver.OpenFile(u"/two.x", false, false), kStatusDeclined);
  EXPECT_EQ(front.questions, std::vector<uint32_t>{271});
  EXPECT_EQ(front.icons, std::vector<MessageIcon>{MessageIcon::kWarning});
  EXPECT_EQ(driver.current.Count(), 301u);
  EXPECT_EQ(driver.sourcePath, u"");
  EXPECT_EQ(driver.current.name, "");
  EXPECT_EQ(driver.current.snapshot.Count(), 0u);
  EXPECT_EQ(front.diary, "(c)");
  front.answer = true;
  EXPECT_EQ(driver.OpenFile(u"/two.x", false, false), kStatusSuccess);
}

TEST_F(ConversionDriverTest, RemembersTheStateAtLoadAndExport) {
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

TEST_F(ConversionDriverTest, ExportsAndTellsAFailure) {
  driver.OpenFile(u"/one.x", false, false);
  front.diary.clear();
  WriteOptions options;
  options.option = 7;
  EXPECT_EQ(driver.Export(u"/out.x", driver.table[0], options).status, kStatusSuccess);
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

TEST_F(ConversionDriverTest, KeepsNoStateWhenNobodyWillBeAsked) {
  ConversionDriver unattended({{u"x", 106, Read, Write, 0}}, front, context, ChangeTracking::kOff);
  unattended.OpenFile(u"/one.x", false, true);
  EXPECT_EQ(unattended.current.Count(), 2u);
  EXPECT_EQ(unattended.current.snapshot.Count(), 0u);
}

TEST_F(ConversionDriverTest, OpenCommandOffersToAppendWhereThereArePoints) {
  driver.OpenCommand();
  ASSERT_TRUE(front.dialog.has_value());
  EXPECT_EQ(front.dialog->title, u"Open");
  EXPECT_EQ(front.dialog->filter,
            u"All formats|*.itn|TomTom Itinerary (*.itn)|*.itn|All files (*.*)|*.*||");
  EXPECT_FALSE(front.dialog->offersAppend);
  EXPECT_EQ(driver.current.Count(), 0u);

  front.file = ChosenFile{u"/one.x", false};
  driver.OpenCommand();
  EXPECT_EQ(Names(), "ab");
  front.file = ChosenFile{u"/two.x", true};
  driver.OpenCommand();
  EXPECT_TRUE(front.dialog->offersAppend);
  EXPECT_EQ(Names(), "abab");
  EXPECT_EQ(driver.sourcePath, u"/one.x");
}

TEST_F(ConversionDriverTest, OpenCommandStopsWhereChangesWouldBeLost) {
  driver.current.points.push_back(MakePoint(1, 1));
  front.answer = false;
  front.file = ChosenFile{u"/one.x", false};
  driver.OpenCommand();
  EXPECT_FALSE(front.dialog.has_value());
  EXPECT_EQ(driver.current.Count(), 1u);
}

TEST_F(ConversionDriverTest, TakesTheFirstDroppedFileWithoutAQuestion) {
  driver.current.points.push_back(MakePoint(1, 1));
  driver.DropFiles({u"/one.x", u"/two.x"});
  EXPECT_EQ(Names(), "ab");
  EXPECT_EQ(driver.sourcePath, u"/one.x");
  EXPECT_TRUE(front.questions.empty());
  driver.DropFiles({});
  driver.DropFiles({WideString(259, u'd') + u".x"});
  EXPECT_EQ(driver.sourcePath, u"/one.x");
  driver.DropFiles({WideString(258, u'd') + u".x"});
  EXPECT_EQ(driver.sourcePath.size(), 260u);
}

TEST_F(ConversionDriverTest, ExportCommandNamesTheItineraryAndTheFile) {
  driver.OpenFile(u"/trips/day.one.x", false, false);
  front.nameField = u"Holiday";
  front.file = ChosenFile{u"/out/day.x", false};
  driver.ExportCommand(&driver.table[0]);
  EXPECT_EQ(driver.current.name, "Holiday");
  EXPECT_EQ(front.dialog->title, u"Export");
  EXPECT_EQ(front.dialog->filter, u"TomTom Itinerary (*.itn)|*.itn|All files (*.*)|*.*||");
  EXPECT_EQ(front.dialog->defaultName, u"day.one");
  EXPECT_EQ(front.dialog->defaultExtension, u"x");
  EXPECT_EQ(writtenPath, u"/out/day.x");
}

TEST_F(ConversionDriverTest, ExportCommandDerivesTheFileNameFromTheItinerary) {
  front.nameField = u"C:/x\\My trip.v2.end";
  driver.ExportCommand(&driver.table[0]);
  EXPECT_EQ(front.dialog->defaultName, u"My trip.v2");
  front.nameField.clear();
  driver.ExportCommand(&driver.table[0]);
  EXPECT_EQ(driver.current.name, "Itinerary");
  EXPECT_EQ(front.dialog->defaultName, u"Itinerary");
}

TEST_F(ConversionDriverTest, ExportCommandCutsLongNames) {
  front.nameField = WideString(300, u'n');
  driver.ExportCommand(&driver.table[0]);
  EXPECT_EQ(driver.current.name, std::string(250, 'n'));
}

TEST_F(ConversionDriverTest, ExportCommandWritesNothingWithoutARowOrAFile) {
  writtenPath = u"none";
  driver.ExportCommand(nullptr);
  EXPECT_FALSE(front.dialog.has_value());
  driver.ExportCommand(&driver.table[0]);
  EXPECT_EQ(writtenPath, u"none");
}

TEST_F(ConversionDriverTest, ExportCommandAsksForNoFileWhereTheTargetIsNone) {
  front.nameField = u"Trip";
  driver.ExportCommand(&driver.table[1]);
  EXPECT_FALSE(front.dialog.has_value());
  EXPECT_EQ(writtenPath, u"Trip");
}

TEST_F(ConversionDriverTest, EmptiesTheCacheOfLookUpsWithANewItinerary) {
  LookupCache& answers = *context.lookups.answers;
  answers.Keep("question", {std::nullopt, "answer"});
  nextStatus = 11;
  driver.OpenFile(u"/one.x", false, false);
  ASSERT_TRUE(answers.Find("question").has_value());
  EXPECT_EQ(answers.Find("question")->text, "answer");
  nextStatus = 0;
  driver.OpenFile(u"/one.x", false, false);
  EXPECT_FALSE(answers.Find("question").has_value());
}

TEST_F(ConversionDriverTest, KeepsTheAnswersOfARunThatAsksEachQuestionOnce) {
  context.lookups.lastForRun = true;
  context.lookups.answers->Keep("question", {std::nullopt, "answer"});
  driver.OpenFile(u"/one.x", false, false);
  EXPECT_TRUE(context.lookups.answers->Find("question").has_value());
}

bool AcceptsHttp(const WideString& text) { return text.starts_with(u"http"); }
bool AcceptsAll(const WideString&) { return true; }
bool AcceptsNone(const WideString&) { return false; }

TEST_F(ConversionDriverTest, ReadsALinkWithEveryDetectorThatAccepts) {
  driver.linkReaders = {{AcceptsNone, {u"", 0, Refuse, nullptr, 0}},
                        {AcceptsHttp, {u"", 0, Refuse, nullptr, 0}},
                        {AcceptsAll, {u"", 0, Read, nullptr, 0}}};
  driver.sourcePath = u"/old.x";
  driver.InterpretLink(u"https://maps/a.b");
  EXPECT_EQ(front.questions, std::vector<uint32_t>{296});
  EXPECT_EQ(front.icons.front(), MessageIcon::kQuestion);
  EXPECT_EQ(front.messages, std::vector<uint32_t>{164});
  EXPECT_EQ(Names(), "ab");
  EXPECT_EQ(driver.sourcePath, u"");
  EXPECT_EQ(front.diary, "()(c)ln");
}

TEST_F(ConversionDriverTest, LeavesTextAloneThatIsNoLinkOrNotWanted) {
  driver.linkReaders = {{AcceptsHttp, {u"", 0, Read, nullptr, 0}}};
  driver.InterpretLink(u"Holiday");
  EXPECT_TRUE(front.questions.empty());
  front.answer = false;
  driver.InterpretLink(u"http://maps");
  EXPECT_EQ(front.questions, std::vector<uint32_t>{296});
  EXPECT_EQ(driver.current.Count(), 0u);
}

TEST_F(ConversionDriverTest, KeepsTheSourceWhereALinkCannotBeRead) {
  driver.linkReaders = {{AcceptsHttp, {u"", 0, Refuse, nullptr, 0}}};
  driver.sourcePath = u"/old.x";
  driver.InterpretLink(u"http://maps");
  EXPECT_EQ(driver.sourcePath, u"/old.x");
  EXPECT_EQ(front.diary, "()");
}

}  // namespace
