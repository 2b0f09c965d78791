// Names and paths as long as the system allows, and longer.

#include <climits>
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
using Content = std::map<std::string, std::string>;

constexpr size_t kLongestPath = PATH_MAX - 1;  // without the zero behind it
const std::string kTooLong =
    "Reason: the name is too long for this file system; choose a shorter one\n";

std::string Name(size_t length, const std::string& extension) {
  return std::string(length - extension.size(), 'n') + extension;
}

// A folder below `top` so deep that the path of a short name in it has `length` bytes.
std::string DeepFolder(const TemporaryFolder& top, size_t length) {
  std::string path = top.Path().string();
  while (path.size() + 202 < length) path += "/" + std::string(100, 'd');
  path += "/" + std::string(length - path.size() - 1, 'd');
  fs::create_directories(path);
  return path;
}

TEST(LongPath, TheLongestNames) {
  const std::string narrow = Name(NAME_MAX - 4, "");
  const std::string wide = std::string("a") + Name(1, "") + [] {
    std::string letters;
    for (int i = 0; i < 124; ++i) letters += "\u00e9";
    return letters;
  }();
  for (const std::string& title : {narrow, wide}) {
    const TemporaryFolder folder;
    folder.Put(title + ".itn", kItinerary);
    folder.Put(title + ".ov2", "old");
    const ProgramResult result = RunConverter({folder.PathTo(title + ".itn"), "ov2"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, Checked(folder.PathTo(title + ".ov2")));
    EXPECT_EQ(folder.Content(), (Content{{title + ".itn", kItinerary}, {title + ".ov2", kPois}}));
  }
}

TEST(LongPath, AnExtensionThatMakesTheNameTooLong) {
  const TemporaryFolder folder;
  const std::string name = Name(NAME_MAX, ".itn");
  folder.Put(name, kItinerary);
  const std::string target = folder.PathTo(Name(NAME_MAX + 1, ".tour"));
  const ProgramResult result = RunConverter({folder.PathTo(name), "tour"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors, target + ": The file cannot be write. " + kTooLong);
  EXPECT_EQ(folder.Content(), (Content{{name, kItinerary}}));

  folder.Put("short.itn", kItinerary);
  const ProgramResult all = RunConverter({folder.Path().string(), "tour"});
  EXPECT_EQ(all.status, 1);
  EXPECT_EQ(all.errors, target + ": The file cannot be write. " + kTooLong +
                            "1 converted, 0 not recognised, 1 failed\n");
  EXPECT_TRUE(folder.Has("short.tour"));
  EXPECT_EQ(folder.Content().size(), 3u);
}

TEST(LongPath, PartsWhoseNamesAreTooLong) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary + kItinerary);
  const std::string target = folder.PathTo(Name(NAME_MAX - 1, ".itn"));
  const ProgramResult result =
      RunConverter({folder.PathTo("a.itn"), "itn", "--split", "3", "-o", target});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors, target + ": The file cannot be write. " + kTooLong);
  EXPECT_EQ(folder.Content(), (Content{{"a.itn", kItinerary + kItinerary}}));
}

TEST(LongPath, ASourceWithANameThatIsTooLong) {
  const TemporaryFolder folder;
  const std::string source = folder.PathTo(Name(NAME_MAX + 1, ".itn"));
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{source, "ov2"}, {"--inspect", source}}) {
    const ProgramResult result = RunConverter(arguments);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors, source + ": The file cannot be read. " + kTooLong);
  }
  EXPECT_EQ(folder.Content(), Content());
}

// The temporary file's name is longer than the target's, and must fit all the same.
TEST(LongPath, TheLongestPaths) {
  const TemporaryFolder folder;
  const std::string deep = DeepFolder(folder, kLongestPath - 6);
  const std::string source = deep + "/a.itn";
  const std::string target = deep + "/a.ov2";
  ASSERT_EQ(source.size(), kLongestPath);
  const std::string inDeep = "cd " + Quoted(deep) + " && ";
  folder.Put("a.itn", kItinerary);
  fs::copy_file(folder.PathTo("a.itn"), source);

  // Twice, the second time over the target of the first.
  for (int i = 0; i < 2; ++i) {
    const ProgramResult result = RunConverter({source, "ov2"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, Checked(target));
  }
  EXPECT_EQ(RunShell(inDeep + "cat a.ov2").output, kPois);
  EXPECT_EQ(RunShell(inDeep + "ls -A").output, "a.itn\na.ov2\n");

  const ProgramResult tooLong = RunConverter({source, "tour"});
  EXPECT_EQ(tooLong.status, 1);
  EXPECT_EQ(tooLong.errors, deep + "/a.tour: The file cannot be write. " + kTooLong);
  const ProgramResult noSource = RunConverter({deep + "/aa.itn", "ov2"});
  EXPECT_EQ(noSource.status, 1);
  EXPECT_EQ(noSource.errors, deep + "/aa.itn: The file cannot be read. " + kTooLong);

  // A folder whose names are too long when it is in front of them, and the same folder from inside.
  RunShell(inDeep + "rm a.ov2 && mv a.itn long.itn");
  const ProgramResult outside = RunConverter({deep, "ov2"});
  EXPECT_EQ(outside.status, 1);
  EXPECT_EQ(outside.errors, deep + "/long.itn: The file cannot be read. " + kTooLong +
                                "0 converted, 0 not recognised, 1 failed\n");
  const ProgramResult inside =
      RunShell(inDeep +
               "mkdir deeper && mv long.itn deeper && cd deeper && "
               "LC_ALL=C " CORVANE_BINARY_FOLDER "/bin/corvanemap . ov2 && cat long.ov2");
  EXPECT_EQ(inside.status, 0);
  EXPECT_EQ(inside.errors, "1 converted, 0 not recognised, 0 failed\n");
  EXPECT_EQ(inside.output, kPois);
}

}  // namespace
