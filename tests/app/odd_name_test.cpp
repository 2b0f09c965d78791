// Names of files with every odd character there is.

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

const std::string kProgram = "LC_ALL=C " CORVANE_BINARY_FOLDER "/bin/corvanemap ";

struct OddTitle {
  std::string title;  // without the extension
  std::string shown;  // what messages make of it
};

// Bytes that could command a terminal, and bytes that are no text, are shown as U+FFFD.
const std::vector<OddTitle> kTitles = {
    {"", ""},
    {"...", "..."},
    {" blanks ", " blanks "},
    {"-x", "-x"},
    {"--help", "--help"},
    {"-o", "-o"},
    {"--output=x", "--output=x"},
    {"%s%n%%", "%s%n%%"},
    {"*?", "*?"},
    {"[a,b]", "[a,b]"},
    {"~", "~"},
    {"quote'\"`", "quote'\"`"},
    {"$(touch gone);&|", "$(touch gone);&|"},
    {"one\\trip", "one\\trip"},
    {"two\\trip", "two\\trip"},
    {"line\nbreak\r", "line\uFFFDbreak\uFFFD"},
    {"tab\t", "tab\uFFFD"},
    {"\x1B]0;title\x07", "\uFFFD]0;title\uFFFD"},
    {"\x01\x7F", "\uFFFD\uFFFD"},
    {"\u009B31m", "\uFFFD31m"},
    {"caf\xE9", "caf\uFFFD"},
    {"\xED\xA0\x80\xFF", "\uFFFD\uFFFD\uFFFD\uFFFD"},
    {"\u6771\u4eac\U0001F600", "\u6771\u4eac\U0001F600"},
};

TEST(OddName, OfOneFile) {
  for (const OddTitle& odd : kTitles) {
    const TemporaryFolder folder;
    folder.Put(odd.title + ".itn", kItinerary);
    const ProgramResult result = RunConverter({folder.PathTo(odd.title + ".itn"), "ov2"});
    EXPECT_EQ(result.status, 0) << odd.shown;
    EXPECT_EQ(result.errors, Checked(folder.PathTo(odd.shown + ".ov2")));
    EXPECT_EQ(folder.Content(),
              (Content{{odd.title + ".itn", kItinerary}, {odd.title + ".ov2", kPois}}))
        << odd.shown;
  }
}

TEST(OddName, OfFilesInAFolder) {
  const TemporaryFolder folder;
  fs::create_directory(folder.PathTo("in"));
  Content content{{"in/", ""}, {"out/", ""}};
  for (const OddTitle& odd : kTitles) {
    folder.Put("in/" + odd.title + ".itn", kItinerary);
    content["in/" + odd.title + ".itn"] = kItinerary;
    content["out/" + odd.title + ".ov2"] = kPois;
  }
  const std::string count = std::to_string(kTitles.size());
  const ProgramResult result =
      RunConverter({folder.PathTo("in"), "ov2", "-o", folder.PathTo("out")});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors, count + " converted, 0 not recognised, 0 failed\n");
  EXPECT_EQ(folder.Content(), content);
}

TEST(OddName, OfAFolder) {
  for (const OddTitle& odd : kTitles) {
    const TemporaryFolder folder;
    const std::string name = "f" + odd.title + ".itn";
    fs::create_directory(folder.PathTo(name));
    folder.Put(name + "/a.itn", kItinerary);
    folder.Put(name + "/bad.ov2", "\x09");
    const ProgramResult result =
        RunConverter({folder.PathTo(name), "ov2", "-o", folder.PathTo("out " + odd.title)});
    EXPECT_EQ(result.status, 1) << odd.shown;
    EXPECT_EQ(result.errors, folder.PathTo("f" + odd.shown + ".itn/bad.ov2") +
                                 ": The file cannot be read.\n"
                                 "1 converted, 0 not recognised, 1 failed\n");
    EXPECT_EQ(folder.Get("out " + odd.title + "/a.ov2"), kPois) << odd.shown;
  }
}

// The extension decides, and blanks, dots and line ends behind it are part of it.
TEST(OddName, BehindTheExtension) {
  for (const std::string extension : {".itn ", ".itn.", ".itn\n", ".itn%"}) {
    const TemporaryFolder folder;
    folder.Put("a" + extension, kItinerary);
    const ProgramResult result = RunConverter({folder.PathTo("a" + extension), "ov2"});
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.errors.ends_with(": Unknown file format.\n")) << result.errors;
    EXPECT_EQ(folder.Content(), (Content{{"a" + extension, kItinerary}}));
  }
}

TEST(OddName, ThatLooksLikeAnOption) {
  const TemporaryFolder folder;
  const std::string inFolder = "cd " + Quoted(folder.Path().string()) + " && " + kProgram;
  for (const std::string title : {"-x", "--help", "--unknown"}) {
    const std::string name = title + ".itn";
    folder.Put(name, kItinerary);
    const ProgramResult asOption = RunShell(inFolder + name + " ov2");
    EXPECT_EQ(asOption.status, 2);
    EXPECT_EQ(asOption.errors,
              "Wrong usage: there is no option " + name +
                  "\nUsage: corvanemap SOURCE KEY "
                  "[LANG_FRENCH|LANG_ENGLISH|LANG_DUTCH|LANG_GERMAN]\n"
                  "A name that begins with \"-\" is given with its folder in front: ./" +
                  name + "\n");
    EXPECT_FALSE(folder.Has(title + ".ov2"));
    const ProgramResult inFront = RunShell(inFolder + "./" + name + " ov2");
    EXPECT_EQ(inFront.status, 0);
    EXPECT_EQ(inFront.errors, Checked("./" + title + ".ov2"));
    EXPECT_EQ(folder.Get(title + ".ov2"), kPois);
    const ProgramResult behind = RunShell(inFolder + "-o=-target.ov2 -- " + name + " ov2");
    EXPECT_EQ(behind.status, 0) << behind.errors;
  }
}

// What the user typed comes back in the message, but commands no terminal.
TEST(OddName, InArgumentsThatAreWrong) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary);
  const std::string source = folder.PathTo("a.itn");
  const std::string odd = "\x1B[2J\n\xFF%s";
  const std::vector<std::vector<std::string>> wrong = {
      {source, odd},
      {folder.PathTo(odd), "ov2"},
      {source, "ov2", "--list", odd},
      {source, "ov2", "--split", odd},
      {source, "ov2", "--" + odd},
      {source, "csv", "--csv-write", odd},
      {source, "csv", "--csv-write", "lat=" + odd},
      {source, "ov2", "--set", odd},
      {source, "ov2", "--set", odd + "=1"},
      {"--inspect", folder.PathTo(odd)},
  };
  for (const std::vector<std::string>& arguments : wrong) {
    const ProgramResult result = RunConverter(arguments);
    EXPECT_EQ(result.status, 2) << arguments.back();
    EXPECT_EQ(result.errors.find('\x1B'), std::string::npos) << result.errors;
    EXPECT_EQ(result.errors.find('\xFF'), std::string::npos) << result.errors;
    EXPECT_NE(result.errors.find("\uFFFD[2J\uFFFD\uFFFD%s"), std::string::npos) << result.errors;
    EXPECT_EQ(result.output, "");
  }
  EXPECT_EQ(folder.Content(), (Content{{"a.itn", kItinerary}}));
}

}  // namespace
