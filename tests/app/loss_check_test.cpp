// What the program tells of losses, as its users see it.

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "tests/run_program.h"
#include "tests/temporary_folder.h"

namespace {

const std::string kMark = "\xEF\xBB\xBF";

TEST(LossCheck, TellsNamesThatLostLetters) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kMark + "235222|4885661|\u0141\u00f3d\u017a|4|\r\n1|2|B|2|\r\n");
  const std::string target = folder.PathTo("a.ov2");
  const ProgramResult result = RunConverter({folder.PathTo("a.itn"), "ov2"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors, target +
                               ": 1 names are not as they were; the first: \"\u0141\u00f3d\u017a\" "
                               "became \"?\u00f3d?\"\n");
  EXPECT_TRUE(folder.Has("a.ov2"));
  EXPECT_EQ(RunConverter({folder.PathTo("a.itn"), "ov2", "--strict"}).status, 3);
  const ProgramResult quiet = RunConverter({folder.PathTo("a.itn"), "ov2", "--strict", "--quiet"});
  EXPECT_EQ(quiet.status, 3);
  EXPECT_EQ(quiet.errors, "");
  EXPECT_EQ(RunConverter({folder.PathTo("a.itn"), "ov2", "--quiet"}).status, 0);
}

TEST(LossCheck, ReadsWhatARowWithoutAReaderWroteWithItsKin) {
  const TemporaryFolder folder;
  folder.Put("a.itn", "235222|4885661|A|4|\r\n434870|5085045|B|2|\r\n");
  for (const std::string key : {"gpx", "rte", "gpx:376", "rt2:901", "trp:374"}) {
    const ProgramResult result = RunConverter({folder.PathTo("a.itn"), key});
    EXPECT_EQ(result.status, 0) << key;
    EXPECT_NE(result.errors.find(": checked: all 2 stops are as they were"), std::string::npos)
        << key << ": " << result.errors;
  }
}

TEST(LossCheck, LeavesAloneWhatOnlyDevicesRead) {
  const TemporaryFolder folder;
  folder.Put("a.itn", "235222|4885661|A|4|\r\n434870|5085045|B|2|\r\n");
  for (const std::string key : {"dat", "itf:299", "itf:328"}) {
    const ProgramResult result = RunConverter({folder.PathTo("a.itn"), key, "--strict"});
    EXPECT_EQ(result.status, 0) << key;
    EXPECT_NE(result.errors.find(": cannot be checked: this format is only written\n"),
              std::string::npos)
        << key << ": " << result.errors;
  }
}

TEST(LossCheck, TellsWhatTheReaderPassedOver) {
  const TemporaryFolder folder;
  folder.Put("a.itn", "1|2|A|4|\r\nbroken\r\n");
  const ProgramResult result = RunConverter({folder.PathTo("a.itn"), "ov2", "--strict"});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.errors, folder.PathTo("a.ov2") +
                               ": all 1 stops that were read are in it, within 0.0 m\n" +
                               folder.PathTo("a.itn") + ": passed over: 1 line\n");
}

TEST(LossCheck, ChecksWithoutKeepingTheTarget) {
  const TemporaryFolder folder;
  folder.Put("a.itn", "1|2|A|4|\r\n");
  const ProgramResult result = RunConverter({"--check", folder.PathTo("a.itn"), "ov2"},
                                            "TMPDIR=" + folder.PathTo("") + " LC_ALL=C");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors,
            folder.PathTo("a.ov2") + ": checked: all 1 stops are as they were, within 0.0 m\n");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);
}

TEST(LossCheck, TellsThatThereIsNoRoomForACheck) {
  const TemporaryFolder folder;
  folder.Put("a.itn", "1|2|A|4|\r\n");
  const ProgramResult result = RunConverter({"--check", folder.PathTo("a.itn"), "ov2"},
                                            "TMPDIR=" + folder.PathTo("none") + " LC_ALL=C");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors, folder.PathTo("a.ov2") +
                               ": The file cannot be write. Reason: no such file or folder\n");
}

TEST(LossCheck, ReadsSplitFilesTogether) {
  const TemporaryFolder folder;
  folder.Put("a.itn", "1|2|A|4|\r\n100003|4|B|0|\r\n200005|6|C|0|\r\n300007|8|D|2|\r\n");
  const ProgramResult result = RunConverter(
      {folder.PathTo("a.itn"), "itn", "--split", "2", "-o", folder.PathTo("part.itn")});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors,
            folder.PathTo("part.itn") + ": checked: all 4 stops are as they were, within 0.0 m\n");
}

TEST(LossCheck, PrintsJson) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kMark + "1|2|\u6771|4|\r\n");
  const ProgramResult result = RunConverter({"--json", folder.PathTo("a.itn"), "ov2"});
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(result.output,
            "{\"source\": \"" + folder.PathTo("a.itn") + "\", \"target\": \"" +
                folder.PathTo("a.ov2") +
                "\", \"checked\": true, \"losses\": true, \"stops\": 1, \"stopsLost\": 0, "
                "\"stopsAdded\": 0, \"namesChanged\": 1, \"commentsLost\": 0, "
                "\"altitudesLost\": 0, \"largestShift\": 0.00, \"firstName\": {\"before\": "
                "\"\u6771\", \"after\": \"?\"}, \"listsMerged\": 0, \"linesPassedOver\": 0, "
                "\"stopsWithoutWaypoint\": 0, \"pointsWithoutPosition\": 0, "
                "\"passedOver\": {}}\n");
}

TEST(LossCheck, CountsFilesOfAFolder) {
  const TemporaryFolder folder;
  folder.Put("a.itn", "1|2|A|4|\r\n");
  folder.Put("b.itn", kMark + "1|2|\u6771|4|\r\n");
  const ProgramResult result = RunConverter({folder.PathTo(""), "ov2", "--strict"});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.errors, folder.PathTo("b.ov2") +
                               ": 1 names are not as they were; the first: \"\u6771\" became "
                               "\"?\"\n2 converted, 0 not recognised, 0 failed\n"
                               "1 of the converted files with losses\n");
}

}  // namespace
