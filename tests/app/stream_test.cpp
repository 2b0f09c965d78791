// Standard input as the source, standard output and pipes as the target.

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "tests/app/two_stops.h"
#include "tests/run_program.h"
#include "tests/temporary_folder.h"

namespace {

const std::string kProgram = "LC_ALL=C XDG_CONFIG_HOME=/nonexistent/corvane " +
                             Quoted(CORVANE_BINARY_FOLDER "/bin/corvanemap") + " ";

TEST(StandardOutput, TakesTheBytesAndNothingElse) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary);
  const ProgramResult result = RunConverter({folder.PathTo("a.itn"), "ov2", "--output", "-"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(result.output, kPois);
  EXPECT_EQ(folder.Content().size(), 1u);
}

TEST(StandardOutput, TellsWhatIsKnownOfTheSource) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary + "broken line\r\n");
  const ProgramResult result = RunConverter({folder.PathTo("a.itn"), "ov2", "-o", "-"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors.find("checked"), std::string::npos) << result.errors;
  EXPECT_NE(result.errors.find("passed over"), std::string::npos) << result.errors;
  EXPECT_EQ(result.output, kPois);
}

TEST(StandardOutput, TakesOneFileOnly) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary);
  const std::string source = folder.PathTo("a.itn");
  for (const auto& arguments :
       std::vector<std::vector<std::string>>{{folder.PathTo(""), "ov2", "-o", "-"},
                                             {source, source, "ov2", "-o", "-"},
                                             {source, "itn", "--split", "2", "-o", "-"},
                                             {source, "ov2", "-o", "-", "--json"}}) {
    const ProgramResult result = RunConverter(arguments);
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors,
              "Standard output takes one file only: no folder, no several targets, no --json "
              "beside it.\n");
  }
}

TEST(StandardOutput, GetsNothingFromACheck) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary);
  const ProgramResult result = RunConverter({folder.PathTo("a.itn"), "ov2", "-o", "-", "--check"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, Checked("standard output"));
}

TEST(StandardOutput, SaysWhenItIsFull) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary);
  EXPECT_EQ(RunShell(kProgram + Quoted(folder.PathTo("a.itn")) + " ov2 -o - >/dev/full").status, 1);
}

TEST(StandardInput, IsReadAsTheKeySays) {
  const TemporaryFolder folder;
  folder.Put("a", kItinerary);
  const ProgramResult result =
      RunShell(kProgram + "- ov2 --from itn <" + Quoted(folder.PathTo("a")));
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(result.output, kPois);
}

TEST(StandardInput, IsReadByItsContent) {
  const TemporaryFolder folder;
  folder.Put("a",
             "<?xml version=\"1.0\"?>\n<!-- <kml> --><gpx version=\"1.0\"><rte>"
             "<rtept lat=\"48.85661\" lon=\"2.35222\"><name>Paris</name></rtept>"
             "<rtept lat=\"50.85045\" lon=\"4.34870\"><name>Brussels</name></rtept>"
             "</rte></gpx>");
  const std::string input = " <" + Quoted(folder.PathTo("a"));
  EXPECT_EQ(RunShell(kProgram + "- ov2" + input).output, kPois);
  const ProgramResult toFile =
      RunShell(kProgram + "- ov2 -o " + Quoted(folder.PathTo("b.ov2")) + input);
  EXPECT_EQ(toFile.status, 0);
  EXPECT_EQ(toFile.errors, Checked(folder.PathTo("b.ov2")));
  EXPECT_EQ(folder.Get("b.ov2"), kPois);
  EXPECT_EQ(RunShell(kProgram + "- ov2 -o " + Quoted(folder.PathTo("")) + input).status, 0);
  EXPECT_EQ(folder.Get("stdin.ov2"), kPois);
}

TEST(StandardInput, IsReadByTheOnlyReaderThatTakesIt) {
  const TemporaryFolder folder;
  folder.Put("a", kPois);
  EXPECT_EQ(RunShell(kProgram + "- itn <" + Quoted(folder.PathTo("a"))).output, kItinerary);
}

// Some readers take nearly every text; they do not stand in the way of the others.
TEST(StandardInput, IsNotForTheReadersThatTakeEverything) {
  const TemporaryFolder folder;
  folder.Put("a", kItinerary);
  EXPECT_EQ(RunShell(kProgram + "- ov2 <" + Quoted(folder.PathTo("a"))).output, kPois);
  // A table of numbers could have its columns in any order.
  folder.Put("b", "48.85661,2.35222,35,Paris,\r\n");
  EXPECT_EQ(RunShell(kProgram + "- ov2 <" + Quoted(folder.PathTo("b"))).status, 1);
}

TEST(StandardInput, NeedsAKeyWhereTheContentDoesNotDecide) {
  const TemporaryFolder folder;
  folder.Put("a", "nothing that anybody reads\n");
  const ProgramResult result = RunShell(kProgram + "- ov2 <" + Quoted(folder.PathTo("a")));
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors,
            "standard input: Unknown file format.\n"
            "standard input: neither a name nor the content tells the format; give it with "
            "--from.\n");
  EXPECT_EQ(RunShell(kProgram + "- ov2 </dev/null").status, 1);
}

TEST(StandardInput, IsOneOfThoseThatAreMerged) {
  const TemporaryFolder folder;
  folder.Put("a.itn", "235222|4885661|Paris|4|\r\n");
  folder.Put("b", "434870|5085045|Brussels|2|\r\n");
  const std::string tail = " <" + Quoted(folder.PathTo("b"));
  const std::string sources = Quoted(folder.PathTo("a.itn")) + " - ov2 --from itn ";
  EXPECT_EQ(RunShell(kProgram + sources + "--merge -o -" + tail).output, kPois);
  const ProgramResult apart = RunShell(kProgram + sources + tail);
  EXPECT_EQ(apart.status, 2);
  EXPECT_EQ(apart.errors, "Standard input is one source; several need --merge.\n");
}

TEST(From, IsStrongerThanTheExtension) {
  const TemporaryFolder folder;
  folder.Put("a.gpx", kItinerary);
  EXPECT_EQ(RunConverter({folder.PathTo("a.gpx"), "ov2"}).status, 1);
  EXPECT_EQ(RunConverter({folder.PathTo("a.gpx"), "ov2", "--from", "ITN"}).status, 0);
  EXPECT_EQ(folder.Get("a.ov2"), kPois);
  const ProgramResult writtenOnly = RunConverter({folder.PathTo("a.gpx"), "ov2", "--from", "loc"});
  EXPECT_EQ(writtenOnly.status, 2);
  EXPECT_EQ(writtenOnly.errors,
            "Nothing reads the format \"loc\". \"corvanemap --formats\" lists the keys.\n");
}

// A dot of a folder above is none of the name.
TEST(Content, LeavesTheNameOfAFileWithoutAnExtensionWhole) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder.PathTo("v1.5"));
  folder.Put("v1.5/trip", kPois);
  EXPECT_EQ(RunConverter({folder.PathTo("v1.5/trip"), "itn"}).status, 0);
  EXPECT_EQ(folder.Get("v1.5/trip.itn"), kItinerary);
}

TEST(Content, DecidesForAFileWithoutAnExtension) {
  const TemporaryFolder folder;
  folder.Put("trip", kPois);
  EXPECT_EQ(RunConverter({folder.PathTo("trip"), "itn", "-o", folder.PathTo("a.itn")}).status, 0);
  EXPECT_EQ(folder.Get("a.itn"), kItinerary);
  folder.Put("odd", "nothing that anybody reads\n");
  const ProgramResult odd =
      RunConverter({folder.PathTo("odd"), "itn", "-o", folder.PathTo("b.itn")});
  EXPECT_EQ(odd.status, 1);
  EXPECT_EQ(odd.errors, folder.PathTo("odd") + ": Unknown file format.\n" + folder.PathTo("odd") +
                            ": neither a name nor the content tells the format; give it with "
                            "--from.\n");
}

TEST(Pipe, GetsTheBytesAndNoCheck) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary);
  const std::string pipe = Quoted(folder.PathTo("pipe"));
  const ProgramResult result = RunShell("mkfifo " + pipe + "; cat " + pipe + " & " + kProgram +
                                        Quoted(folder.PathTo("a.itn")) + " ov2 -o " + pipe +
                                        "; status=$?; wait; exit $status");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(result.output, kPois);
}

}  // namespace
