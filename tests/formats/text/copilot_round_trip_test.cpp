#include <string>

#include <gtest/gtest.h>

#include "base/status.h"
#include "conversion/conversion_context.h"
#include "formats/text/copilot.h"
#include "tests/file_content.h"
#include "tests/formats/text/copilot_reading.h"
#include "tests/formats/written_bytes.h"
#include "tests/list_builder.h"

namespace {

using namespace copilot;

TEST(CoPilot, EveryWriterIsReadBackByTheKeyedReader) {
  const auto list = MakeList("Caf\u00e9", MakePoint(48.5, 2.25, "Paris"),
                             MakePoint(-50.75, -4.5, "\u00c9vian"), MakePoint(0.5, 179.5, "C"));
  for (const auto body : {WriteCoPilot6Body, WriteCoPilot8Body, WriteCoPilot10Body}) {
    const PointLists lists = Keyed(BytesOf(body, list));
    EXPECT_EQ(lists[0]->name, list.name);
    ASSERT_EQ(lists[0]->Count(), 3u);
    for (size_t i = 0; i < 3; ++i) EXPECT_EQ(lists[0]->At(i), list.At(i));
  }
}

TEST(CoPilot, TheWriterOfVersion10IsNotReadBackByItsReader) {
  PointLists lists;
  EXPECT_NE(CodeOf(BytesOf(WriteCoPilot10Body, MakeList("T", MakePoint(1, 2, "A"))), lists), 0);
  EXPECT_TRUE(lists.empty());
}

TEST(CoPilot, ABreakInANameBreaksTheStop) {
  const auto list = MakeList("", MakePoint(1, 2, "A\nEnd Stop\nB"));
  const PointLists lists = Keyed(BytesOf(WriteCoPilot6Body, list));
  ASSERT_EQ(lists[0]->Count(), 1u);
  EXPECT_EQ(lists[0]->At(0).name, "A");
}

TEST(CoPilot, ReadsTheExamples) {
  const std::string folder = CORVANE_SOURCE_FOLDER "/examples/";
  const PointLists loire = Keyed(ContentOf(folder + "loire-by-bicycle.trp"));
  EXPECT_EQ(loire[0]->name, "Loire by bicycle");
  ASSERT_EQ(loire[0]->Count(), 6u);
  EXPECT_EQ(loire[0]->At(0).name, "Place du Martroi, 45000 Orl\u00e9ans");
  EXPECT_EQ(loire[0]->At(3).name, "41000 Blois, Centre");
  EXPECT_EQ(loire[0]->At(5).longitude, 0.688891);

  PointLists harz;
  EXPECT_EQ(ParseCoPilot10(ContentOf(folder + "harz-weekend.trp"), harz, ContextInPlace()),
            kStatusSuccess);
  EXPECT_EQ(harz[0]->name, "Weekend in the Harz");
  ASSERT_EQ(harz[0]->Count(), 6u);
  EXPECT_EQ(harz[0]->At(1).name, "Am Burgberg 1, 38667 Bad Harzburg");
  EXPECT_EQ(harz[0]->At(4).name, "Wernigerode \"Bunte Stadt\"");
  EXPECT_EQ(harz[0]->At(5).latitude, 51.78966);
}

}  // namespace
