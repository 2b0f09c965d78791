// Changes to the itinerary on its way from the source to the target.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/run_program.h"
#include "tests/temporary_folder.h"

namespace {

// Stops on the equator at 0.1, 0.4, 0.2, 0.3 and 0.5 degrees: the way is 0.3 + 0.2 + 0.1 + 0.2
// degrees of 111.319 km, and 0.4 in order.
const std::string kZigzag =
    "10000|0|Ed|4|\r\n40000|0|Al|0|\r\n20000|0|Di|0|\r\n30000|0|Bo|0|\r\n50000|0|Cy|2|\r\n";

class ListOperations : public testing::Test {
 protected:
  // Converts the itinerary with these options. Gives the first letters of the stops in the target.
  std::string Convert(const std::string& itinerary, std::vector<std::string> options) {
    folder.Put("a.itn", itinerary);
    options.insert(options.begin(), {folder.PathTo("a.itn"), "itn", "-o", folder.PathTo("b.itn")});
    result = RunConverter(options);
    std::string names;
    const std::string written = folder.Get("b.itn");
    for (size_t line = 0; line < written.size(); line = written.find('\n', line) + 1)
      names += written[written.find('|', written.find('|', line) + 1) + 1];
    return names;
  }

  const TemporaryFolder folder;
  ProgramResult result;
};

TEST_F(ListOperations, EachDoesWhatItSays) {
  EXPECT_EQ(Convert(kZigzag, {}), "EADBC");
  EXPECT_EQ(Convert(kZigzag, {"--reverse"}), "CBDAE");
  EXPECT_EQ(Convert(kZigzag, {"--sort"}), "ABCDE");
  EXPECT_EQ(Convert(kZigzag, {"--unique"}), "EDBAC");
  EXPECT_EQ(Convert(kZigzag, {"--optimize"}), "EDBAC");
  EXPECT_EQ(result.status, 0);
}

TEST_F(ListOperations, UniqueKeepsTheFirstAtAPlace) {
  EXPECT_EQ(Convert("20000|10000|B|4|\r\n20005|10005|A|0|\r\n10000|10000|C|2|\r\n", {"--unique"}),
            "CB");
}

TEST_F(ListOperations, SimplifyTakesMetres) {
  // 0.01 degrees beside the line are 1.1 km.
  const std::string bend = "10000|0|A|4|\r\n20000|1000|B|0|\r\n30000|0|C|2|\r\n";
  EXPECT_EQ(Convert(bend, {"--simplify", "1200"}), "AC");
  EXPECT_EQ(Convert(bend, {"--simplify", "1000"}), "ABC");
  EXPECT_EQ(Convert(bend, {"--simplify=1200"}), "AC");
}

TEST_F(ListOperations, WorkInTheOrderGiven) {
  EXPECT_EQ(Convert(kZigzag, {"--sort", "--reverse"}), "EDCBA");
  EXPECT_EQ(Convert(kZigzag, {"--reverse", "--sort"}), "ABCDE");
  EXPECT_EQ(Convert(kZigzag, {"--reverse", "--optimize", "--reverse"}), "EDBAC");
  // By names, the ends are A and E, at 0.4 and 0.1: along the line C (0.5) comes first.
  EXPECT_EQ(Convert(kZigzag, {"--sort", "--optimize"}), "ACBDE");
  EXPECT_EQ(Convert("10000|0|A|4|\r\n20000|1000|B|0|\r\n30000|0|C|2|\r\n",
                    {"--simplify", "1000", "--simplify", "1200", "--reverse"}),
            "CA");
}

TEST_F(ListOperations, OptimizeTellsHowLongTheWayBecame) {
  Convert(kZigzag, {"--optimize"});
  EXPECT_NE(result.errors.find(folder.PathTo("a.itn") +
                               ": the way through the stops is now 44.5km long; it was 89.1km\n"),
            std::string::npos)
      << result.errors;
  Convert(kZigzag, {"--optimize", "--quiet"});
  EXPECT_EQ(result.errors, "");
}

TEST_F(ListOperations, BestTellsWhatItHasGained) {
  // From 0.2 degrees to 0.1 by way of 0.5, 0.3, 0.4 and 0.6: the best order goes up to 0.6 and
  // back, 0.9 degrees.
  EXPECT_EQ(Convert("20000|0|A|4|\r\n50000|0|B|0|\r\n30000|0|C|0|\r\n40000|0|D|0|\r\n"
                    "60000|0|E|0|\r\n10000|0|F|2|\r\n",
                    {"--optimize=best"})
                .size(),
            6u);
  EXPECT_EQ(result.status, 0);
  EXPECT_NE(result.errors.find(" shorter; it is now 100.2km long\n"), std::string::npos)
      << result.errors;
}

TEST_F(ListOperations, WorkOnEveryFileOfAFolder) {
  const TemporaryFolder in;
  in.Put("a.itn", kZigzag);
  in.Put("b.itn", kZigzag);
  const ProgramResult all =
      RunConverter({in.Path().string(), "itn", "--sort", "-o", folder.PathTo("out")});
  EXPECT_EQ(all.status, 0);
  EXPECT_TRUE(folder.Get("out/a.itn").starts_with("040000|0000000|Al|4|"));
  EXPECT_EQ(folder.Get("out/a.itn"), folder.Get("out/b.itn"));
}

TEST_F(ListOperations, WrongValuesAreRefused) {
  Convert(kZigzag, {"--optimize=most"});
  EXPECT_EQ(result.status, 2);
  EXPECT_TRUE(
      result.errors.starts_with("Wrong usage: the value of --optimize=most is not understood\n"))
      << result.errors;
  for (const char* metres : {"--simplify=-5", "--simplify=far", "--simplify"}) {
    Convert(kZigzag, {metres});
    EXPECT_EQ(result.status, 2) << metres;
  }
  EXPECT_FALSE(folder.Has("b.itn"));
}

}  // namespace
