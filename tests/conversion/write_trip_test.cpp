#include "conversion/write_trip.h"

#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "conversion/format_frame.h"
#include "tests/list_builder.h"
#include "tests/temporary_folder.h"

namespace {

// One letter a point, and back.
void WriteNames(ByteSink& sink, const CGpsPointArray& list) {
  for (const CGpsPoint& point : list.points) sink.Write(point.name);
}

uint32_t ParseNames(std::string_view bytes, PointLists& lists, ConversionContext&) {
  auto& route = AddList<CGpsRoute>(lists);
  for (const char name : bytes) route.points.push_back(MakePoint(1, 1, std::string(1, name)));
  return kStatusSuccess;
}

uint32_t TellNothing(uint32_t) { return kStatusSuccess; }
uint32_t ThrowingWriter(const WideString&, const CGpsPointArray&, uint32_t, bool) {
  throw std::runtime_error("no such key");
}

const FormatTable kTable{
    {u"x", 106, ReadFileOf<ParseNames>, kWriterOf<WriteNames>, 0},
    {u"y", 107, nullptr, kWriterOf<WriteNames, TellNothing>, 0, {.readsBack = false}},
    {u"z", 108, nullptr, ThrowingWriter, 0}};

class WriteTripTest : public testing::Test {
 protected:
  TripWrite Write(size_t row, const std::string& name, const WriteOptions& options = {}) {
    return WriteTrip(kTable, kTable[row], m_folder.WidePathTo(name), m_list, m_source, options,
                     m_context);
  }

  TemporaryFolder m_folder;
  ConversionContext m_context;
  TripSource m_source;
  CGpsRoute m_list = MakeList("", MakePoint(1, 1, "a"), MakePoint(1, 1, "b"));
};

TEST_F(WriteTripTest, TellsTheFilesAndChecksThemWhenAsked) {
  const TripWrite unchecked = Write(0, "one.x");
  EXPECT_EQ(unchecked.status, kStatusSuccess);
  EXPECT_EQ(unchecked.files, std::vector<WideString>{m_folder.WidePathTo("one.x")});
  EXPECT_FALSE(unchecked.check.has_value());
  EXPECT_EQ(m_folder.Get("one.x"), "ab");

  WriteOptions options;
  options.checks = true;
  const TripWrite checked = Write(0, "two.x", options);
  ASSERT_TRUE(checked.check.has_value());
  EXPECT_EQ(checked.check->outcome, LossCheck::Outcome::kChecked);
  EXPECT_FALSE(checked.check->HasLosses());
  EXPECT_EQ(checked.check->losses.stops, 2u);
  m_list.points[1].name = "bc";
  const TripWrite lossy = Write(0, "two.x", options);
  EXPECT_EQ(lossy.check->losses.stopsAdded, 1u);
  EXPECT_TRUE(lossy.check->HasLosses());
  EXPECT_EQ(Write(1, "two.y", options).check->outcome, LossCheck::Outcome::kOnlyWritten);
}

TEST_F(WriteTripTest, CountsWhatTheSourceHasLost) {
  m_source.listsFound = m_source.listsTaken = 3;
  m_source.notes.Add(ConversionNote::kLinePassedOver, 4);
  WriteOptions options;
  options.checks = true;
  const TripWrite trip = Write(0, "one.x", options);
  EXPECT_EQ(trip.check->listsMerged, 3u);
  EXPECT_EQ(trip.check->LinesPassedOver(), 4u);
  EXPECT_TRUE(trip.check->HasLosses());
}

TEST_F(WriteTripTest, OverrulesAWriterThatCallsAFailureASuccess) {
  const TripWrite trip = Write(1, "none/one.y");
  EXPECT_EQ(trip.status, kStatusFailure);
  EXPECT_EQ(trip.reason.platformError, kStatusFileNotFound);
  EXPECT_TRUE(trip.files.empty());
}

TEST_F(WriteTripTest, TakesAnExceptionForAFailure) {
  EXPECT_EQ(Write(2, "one.z").status, kStatusInternalError);
}

TEST_F(WriteTripTest, LeavesNothingOfACheck) {
  WriteOptions options;
  options.checks = true;
  options.keepsNothing = true;
  const TripWrite trip = Write(0, "one.x", options);
  EXPECT_EQ(trip.status, kStatusSuccess);
  EXPECT_EQ(trip.check->losses.stops, 2u);
  EXPECT_FALSE(m_folder.Has("one.x"));
  EXPECT_FALSE(std::filesystem::exists(PathBytes(trip.files.at(0))));
}

TEST_F(WriteTripTest, LeavesTheFormerFileWhenItIsCancelled) {
  m_folder.Put("one.x", "old");
  m_list.points.resize(1000000, MakePoint(1, 1, "abcd"));
  m_context.progress = [](const ConversionProgress& progress) {
    return progress.bytesDone < 1000000;
  };
  const TripWrite trip = Write(0, "one.x");
  EXPECT_EQ(trip.status, kStatusCancelled);
  EXPECT_TRUE(trip.files.empty());
  EXPECT_EQ(m_folder.Get("one.x"), "old");
  // Nothing is left beside it, and the next write is not cancelled by this one.
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(m_folder.Path()), {}), 1);
  m_context.progress = nullptr;
  EXPECT_EQ(Write(0, "one.x").status, kStatusSuccess);
}

}  // namespace
