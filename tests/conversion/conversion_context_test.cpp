#include "conversion/conversion_context.h"

#include <thread>

#include <gtest/gtest.h>

#include "base/status.h"

namespace {

TEST(ConversionScope, PutsTheInnermostContextInPlace) {
  ConversionContext outer;
  const ConversionScope outerScope(outer);
  ContextInPlace()->Note(ConversionNote::kLinePassedOver);
  {
    ConversionContext inner;
    const ConversionScope innerScope(inner);
    ContextInPlace()->Note(ConversionNote::kLinePassedOver, 5);
    ContextInPlace()->Note(ConversionNote::kStopNotFound);
    EXPECT_EQ(inner.notes.Count(ConversionNote::kLinePassedOver), 5u);
    EXPECT_EQ(inner.notes.Count(ConversionNote::kStopNotFound), 1u);
  }
  ContextInPlace()->Note(ConversionNote::kLinePassedOver);
  EXPECT_EQ(outer.notes.Count(ConversionNote::kLinePassedOver), 2u);
  EXPECT_EQ(outer.notes.Count(ConversionNote::kStopNotFound), 0u);
}

TEST(ConversionScope, CountsOnItsOwnThreadOnly) {
  ConversionContext context;
  const ConversionScope scope(context);
  std::thread([] { ContextInPlace()->Note(ConversionNote::kLinePassedOver); }).join();
  EXPECT_EQ(context.notes, ConversionNotes());
}

TEST(ContextInPlace, IsANewOneWithoutAScope) {
  ContextInPlace context;
  context->Note(ConversionNote::kLinePassedOver);
  EXPECT_EQ(context->notes.Count(ConversionNote::kLinePassedOver), 1u);
  EXPECT_EQ(ContextInPlace()->notes, ConversionNotes());
}

TEST(ConversionContext, KeepsTheLastErrorUntilItIsRenewed) {
  ConversionContext context;
  EXPECT_EQ(context.Keep(5), 5u);
  EXPECT_EQ(context.Keep(0), 0u);
  EXPECT_EQ(context.failure.platformError, 5u);
  context.writtenFiles.push_back(u"a");
  context.Note(ConversionNote::kStopNotFound);
  context.Renew();
  EXPECT_EQ(context.failure, FailureReason());
  EXPECT_TRUE(context.writtenFiles.empty());
  EXPECT_EQ(context.notes, ConversionNotes());
}

TEST(ConversionContext, LooksEveryQuarterOfAMegabyte) {
  ConversionContext context;
  std::vector<uint64_t> told;
  context.progress = [&told](const ConversionProgress& progress) {
    EXPECT_EQ(progress.stage, ConversionProgress::Stage::kReading);
    EXPECT_EQ(progress.bytesInAll, 1000000u);
    told.push_back(progress.bytesDone);
    return told.size() < 3;
  };
  context.Begin(ConversionProgress::Stage::kReading, 1000000);
  EXPECT_TRUE(context.GoesOn(0));
  EXPECT_TRUE(context.GoesOn(262143));
  EXPECT_TRUE(context.GoesOn(262144));
  EXPECT_FALSE(context.IsCancelled());
  EXPECT_FALSE(context.GoesOn(700000));
  EXPECT_TRUE(context.IsCancelled());
  EXPECT_FALSE(context.GoesOn(700001));
  EXPECT_EQ(told, (std::vector<uint64_t>{0, 262144, 700000}));
}

TEST(ConversionContext, IsCancelledFromAnotherThread) {
  ConversionContext context;
  std::stop_source source;
  context.stop = source.get_token();
  context.Begin(ConversionProgress::Stage::kWriting);
  EXPECT_TRUE(context.GoesOn(0));
  std::thread([&source] { source.request_stop(); }).join();
  EXPECT_TRUE(context.GoesOn(1));
  EXPECT_FALSE(context.GoesOn(300000));
  EXPECT_TRUE(context.IsCancelled());
}

TEST(ConversionContext, ReadsBackWithoutAskingAnybody) {
  ConversionContext context;
  context.lookups.makeGeocoder = [](int32_t) { return nullptr; };
  context.csvLayouts.forWriting = CsvPresets()[3].layout;
  CCsvLayout layout;
  EXPECT_EQ(context.csvLayouts.Choose(CsvUse::kWrite, true, layout), kStatusSuccess);
  ConversionContext readingBack = context.ForReadingBack();
  EXPECT_FALSE(readingBack.lookups.HasGeocoder());
  EXPECT_EQ(readingBack.csvLayouts.Choose(CsvUse::kRead, false, layout), kStatusSuccess);
  EXPECT_EQ(layout, CsvPresets()[3].layout);
}

}  // namespace
