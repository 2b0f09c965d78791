// A target that is the source: what is left out of the file would be lost with it.

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/app/two_stops.h"
#include "tests/run_program.h"
#include "tests/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

const std::string kTwoRoutes =
    "<gpx version=\"1.0\">"
    "<rte><name>A</name><rtept lat=\"1\" lon=\"2\"><name>One</name></rtept></rte>"
    "<rte><name>B</name><rtept lat=\"3\" lon=\"4\"><name>Two</name></rtept></rte></gpx>";

// A folder "f" with the file "trip.<extension>", and every spelling of it.
std::vector<std::string> FillWithSpellings(const TemporaryFolder& folder,
                                           const std::string& extension,
                                           const std::string& content) {
  fs::create_directories(folder.PathTo("f/deeper"));
  const std::string trip = "trip." + extension;
  folder.Put("f/" + trip, content);
  fs::create_symlink(trip, folder.PathTo("f/symbolic"));
  fs::create_symlink("symbolic", folder.PathTo("f/twice"));
  fs::create_hard_link(folder.PathTo("f/" + trip), folder.PathTo("f/hard"));
  return {folder.PathTo("f/" + trip),
          folder.PathTo("f/./" + trip),
          folder.PathTo("f/deeper/../" + trip),
          folder.PathTo("f//" + trip),
          folder.PathTo("f/symbolic"),
          folder.PathTo("f/twice"),
          folder.PathTo("f/hard")};
}

TEST(SameFile, IsRefusedWithListsLeftOut) {
  const TemporaryFolder folder;
  const std::vector<std::string> spellings = FillWithSpellings(folder, "gpx", kTwoRoutes);
  const auto before = folder.Content();
  const std::string source = spellings[0];
  for (const std::string& target : spellings) {
    const ProgramResult result = RunConverter({source, "gpx", "--list", "1", "--output", target});
    EXPECT_EQ(result.status, 1) << target;
    EXPECT_EQ(result.errors, source +
                                 ": the target is the same file as the source; give another with "
                                 "--output, or --force.\n");
    EXPECT_EQ(folder.Content(), before) << target;
  }
  // The other way round: the source is one of the links.
  fs::create_symlink("trip.gpx", folder.PathTo("f/link.gpx"));
  const auto withLink = folder.Content();
  EXPECT_EQ(RunConverter({folder.PathTo("f/link.gpx"), "gpx", "-o", source}).status, 1);
  EXPECT_EQ(RunConverter({folder.PathTo("f/link.gpx"), "gpx"}).status, 1);
  EXPECT_EQ(folder.Content(), withLink);
}

TEST(SameFile, IsWrittenWithAllListsTakenAndForce) {
  for (size_t i = 0; i < 7; ++i) {
    const TemporaryFolder folder;
    const std::vector<std::string> spellings =
        FillWithSpellings(folder, "itn", kItinerary + "broken line\r\n");
    const std::string source = spellings[0];
    const std::string target = spellings[i];
    const ProgramResult result = RunConverter({source, "itn", "--quiet", "--force", "-o", target});
    EXPECT_EQ(result.status, 0) << target;
    EXPECT_EQ(result.errors, "");
    // A hard link is a file of its own from then on, and the source stays.
    const bool isHard = target.ends_with("/hard");
    EXPECT_EQ(folder.Get("f/hard"), isHard ? kItinerary : kItinerary + "broken line\r\n");
    EXPECT_EQ(folder.Get("f/trip.itn"), isHard ? kItinerary + "broken line\r\n" : kItinerary);
    EXPECT_TRUE(fs::is_symlink(folder.PathTo("f/symbolic")));
    EXPECT_TRUE(fs::is_symlink(folder.PathTo("f/twice")));
    EXPECT_EQ(folder.Content().size(), 6u) << target;
  }
}

TEST(SameFile, IsRefusedWhenALineOfItWouldBeLost) {
  for (size_t i = 0; i < 7; ++i) {
    const TemporaryFolder folder;
    const std::vector<std::string> spellings =
        FillWithSpellings(folder, "itn", kItinerary + "broken line\r\n");
    const auto before = folder.Content();
    EXPECT_EQ(RunConverter({spellings[0], "itn", "--quiet", "-o", spellings[i]}).status, 1);
    EXPECT_EQ(folder.Content(), before) << spellings[i];
  }
}

TEST(SameFile, OfAFolderIsRefusedAndTheOthersAreConverted) {
  const TemporaryFolder folder;
  folder.Put("a.gpx", kTwoRoutes);
  folder.Put("b.itn", kItinerary);
  const ProgramResult result = RunConverter({folder.Path().string(), "gpx", "--list", "1"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(
      result.errors,
      folder.PathTo("a.gpx") +
          ": the target is the same file as the source; give another with --output, or --force.\n"
          "1 converted, 0 not recognised, 1 failed\n");
  EXPECT_EQ(folder.Get("a.gpx"), kTwoRoutes);
  EXPECT_EQ(folder.Content().size(), 3u);
}

}  // namespace
