#include <gtest/gtest.h>

#include "base/status.h"
#include "conversion/conversion_context.h"
#include "formats/xml/kml.h"
#include "platform/path_text.h"
#include "tests/formats/xml/kml_reading.h"
#include "tests/list_builder.h"
#include "tests/temporary_folder.h"

namespace {

using namespace kml;

TEST(Kml, FileOfTwoPointsReadsAsLineAndFolder) {
  const auto list = MakeList("Tour", MakePoint(48.85661, 2.35222, "Paris \"<&'>", "c <&>", 35.5),
                             MakePoint(-22.95192, -43.21049, "Rio"));
  PointLists lists;
  EXPECT_EQ(ParseKml(KmlBytes(list), lists, ContextInPlace()), kStatusSuccess);
  ASSERT_EQ(lists.size(), 2u);
  EXPECT_EQ(lists[0]->GetKind(), kKindTrack);
  EXPECT_EQ(lists[0]->name, "Route (2 waypoints)");
  ASSERT_EQ(lists[0]->Count(), 2u);
  EXPECT_EQ(lists[0]->points[0].latitude, 48.85661);
  EXPECT_EQ(lists[0]->points[0].altitude, 0.0);
  EXPECT_EQ(lists[1]->GetKind(), kKindWaypoints);
  EXPECT_EQ(lists[1]->name, "Waypoints");
  ASSERT_EQ(lists[1]->Count(), 2u);
  EXPECT_EQ(lists[1]->points[0], list.points[0]);
  EXPECT_EQ(lists[1]->points[0].altitude, 35.5);
  EXPECT_EQ(lists[1]->points[1], list.points[1]);
}

TEST(Kml, FilesHoldWhatTheBytesHold) {
  const TemporaryFolder folder;
  const auto list = MakeList("Tour", MakePoint(1, 2, "a"), MakePoint(3, 4, "b"));
  EXPECT_EQ(WriteKml(folder.WidePathTo("a.kml"), list, 7, true), kStatusSuccess);
  EXPECT_EQ(folder.Get("a.kml"), KmlBytes(list));
  PointLists lists;
  EXPECT_EQ(ReadKml(folder.WidePathTo("a.kml"), lists, true), kStatusSuccess);
  EXPECT_EQ(lists.size(), 2u);
  EXPECT_EQ(WriteNdriveKml(folder.WidePathTo("b.kml"), list, 7, true), kStatusSuccess);
  EXPECT_EQ(ReadKml(folder.WidePathTo("b.kml"), lists, true), kStatusSuccess);
  ASSERT_EQ(lists.size(), 3u);
  EXPECT_EQ(lists[2]->name, "Tour");
}

TEST(Kml, FilesThatCannotBeUsedAreFailures) {
  const TemporaryFolder folder;
  PointLists lists;
  EXPECT_EQ(ReadKml(folder.WidePathTo("none.kml"), lists, true), kStatusFailure);
  EXPECT_EQ(ReadKml(folder.WidePathTo(""), lists, true), kStatusFailure);
  EXPECT_EQ(ReadKml(folder.Put("empty.kml", ""), lists, true), kStatusFailure);
  EXPECT_TRUE(lists.empty());
  EXPECT_EQ(WriteKml(folder.WidePathTo("missing/a.kml"), CGpsRoute(), 0, true), kStatusFailure);
  EXPECT_EQ(WriteNdriveKml(folder.WidePathTo("missing/a.kml"), CGpsRoute(), 0, true),
            kStatusFailure);
}

TEST(Kml, ReadsTheExample) {
  PointLists lists;
  EXPECT_EQ(ReadKml(WidePath(CORVANE_SOURCE_FOLDER "/examples/dolomite-passes.kml"), lists, true),
            kStatusSuccess);
  ASSERT_EQ(lists.size(), 2u);
  EXPECT_EQ(lists[0]->GetKind(), kKindTrack);
  EXPECT_EQ(lists[0]->name, "Sellaronda");
  EXPECT_EQ(lists[0]->Count(), 8u);
  EXPECT_EQ(lists[1]->GetKind(), kKindWaypoints);
  EXPECT_EQ(lists[1]->name, "P\u00e4sse und Orte");
  ASSERT_EQ(lists[1]->Count(), 6u);
  EXPECT_EQ(lists[1]->points[0].name, "Corvara in Badia");
  EXPECT_EQ(lists[1]->points[5].name, "Passo Pordoi");
  for (const CGpsPoint& point : lists[1]->points) EXPECT_TRUE(point.IsValid());
}

}  // namespace
