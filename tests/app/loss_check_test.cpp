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
                               ": 1 name is not as it was; the first: \"\u0141\u00f3d\u017a\" "
                               "became \"?\u00f3d?\"\n" +
                               target +
                               ": with --fit the itinerary is adapted to what this format can "
                               "hold\n");
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

// Long files are read back while they are written.
TEST(LossCheck, FindsWhatChangedInALongItinerary) {
  const TemporaryFolder folder;
  std::string stops = "<gpx version=\"1.1\" creator=\"x\"><rte>";
  for (int i = 0; i < 2500; ++i) {
    const std::string name = i == 1200 ? "A\u010d" : "P" + std::to_string(i);
    stops += "<rtept lat=\"48.1\" lon=\"7.000004\"><name>" + name + "</name></rtept>";
  }
  folder.Put("a.gpx", stops + "</rte></gpx>");

  // The letter is not in the device's alphabet, and 0.000004 degrees at a latitude of 48.1 are
  // 0.000004 * 111195 * 0.668 metres.
  const std::string losses = RunConverter({folder.PathTo("a.gpx"), "itn", "--json"}).output;
  EXPECT_NE(losses.find(R"("stops": 2500, "stopsLost": 0, "stopsAdded": 0, "namesChanged": 1, )"
                        R"("commentsLost": 0, "altitudesLost": 0, "largestShift": 0.30, )"
                        "\"firstName\": {\"before\": \"A\u010d\", \"after\": \"A?\"}"),
            std::string::npos)
      << losses;
  EXPECT_EQ(folder.Get("a.itn").substr(0, 24), "700000|4810000|P0|4|\r\n70");

  // In the alphabet that is told it is, whichever way the check takes.
  const std::string spelled =
      RunConverter({folder.PathTo("a.gpx"), "itn", "--encoding", "windows-1250", "--json"}).output;
  EXPECT_NE(spelled.find(R"("stops": 2500, "stopsLost": 0, "stopsAdded": 0, "namesChanged": 0, )"),
            std::string::npos)
      << spelled;
}

TEST(LossCheck, TellsWhatTheReaderPassedOver) {
  const TemporaryFolder folder;
  folder.Put("a.itn", "1|2|A|4|\r\nbroken\r\n");
  const ProgramResult result = RunConverter({folder.PathTo("a.itn"), "ov2", "--strict"});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.errors, folder.PathTo("a.ov2") +
                               ": 1 stop that was read is in it, within 0.0 m\n" +
                               folder.PathTo("a.itn") + ": passed over: 1 line\n");
}

TEST(LossCheck, ChecksWithoutKeepingTheTarget) {
  const TemporaryFolder folder;
  folder.Put("a.itn", "1|2|A|4|\r\n");
  const ProgramResult result = RunConverter({"--check", folder.PathTo("a.itn"), "ov2"},
                                            "TMPDIR=" + folder.PathTo("") + " LC_ALL=C");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors,
            folder.PathTo("a.ov2") + ": checked: 1 stop is as it was, within 0.0 m\n");
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
  EXPECT_EQ(
      result.output,
      "{\"source\": \"" + folder.PathTo("a.itn") + "\", \"target\": \"" + folder.PathTo("a.ov2") +
          "\", \"status\": 0, \"checked\": true, \"losses\": true, \"stops\": 1, \"stopsLost\": 0, "
          "\"stopsAdded\": 0, \"namesChanged\": 1, \"commentsLost\": 0, "
          "\"altitudesLost\": 0, \"largestShift\": 0.00, \"firstName\": {\"before\": "
          "\"\u6771\", \"after\": \"?\"}, \"listsMerged\": 0, \"linesPassedOver\": 0, "
          "\"stopsWithoutWaypoint\": 0, \"pointsWithoutPosition\": 0, "
          "\"passedOver\": {}, \"doubtfulPositions\": 0, \"remedy\": \"--fit\"}\n");
}

std::string Gpx(const std::string& stops) { return "<gpx><rte>" + stops + "</rte></gpx>"; }

// Garmin's file finds its stops by name: all three lie where the first one does.
const std::string kThreeOfOneName =
    Gpx("<rtept lat=\"1\" lon=\"2\"><name>a</name></rtept><rtept lat=\"3\" lon=\"4\"><name>a</name>"
        "</rtept><rtept lat=\"5\" lon=\"6\"><name>a</name></rtept>");

TEST(ExitStatus, TellsOfPlacesThatAreOthers) {
  const TemporaryFolder folder;
  folder.Put("a.gpx", kThreeOfOneName);
  const auto status = [&folder](std::vector<std::string> arguments) {
    arguments.insert(arguments.end(), {folder.PathTo("a.gpx"), "gdb"});
    return RunConverter(arguments).status;
  };
  EXPECT_EQ(status({}), 3);
  EXPECT_EQ(status({"--json"}), 3);
  EXPECT_EQ(status({"--check"}), 3);
  EXPECT_EQ(status({"--tolerant"}), 0);
  EXPECT_EQ(status({"--check", "--tolerant"}), 0);
  EXPECT_EQ(status({"--strict"}), 3);
  EXPECT_EQ(status({"--strict", "--tolerant"}), 2);
  // Nobody looks.
  EXPECT_EQ(status({"--quiet"}), 0);
  EXPECT_EQ(status({"--quiet", "--check"}), 3);
}

TEST(ExitStatus, TellsOfStopsThatAreLost) {
  const TemporaryFolder folder;
  folder.Put("a.gpx", Gpx("<rtept lat=\"0\" lon=\"0\"/><rtept lat=\"1\" lon=\"2\"/>"));
  const ProgramResult result = RunConverter({folder.PathTo("a.gpx"), "csv"});
  EXPECT_EQ(result.status, 3);
  EXPECT_NE(result.errors.find(": 1 stop of 2 lost, 0 new\n"), std::string::npos) << result.errors;
  EXPECT_EQ(RunConverter({folder.PathTo("a.gpx"), "csv", "--tolerant"}).status, 0);
}

TEST(ExitStatus, TellsOfStopsThatTheSourceOnlyNames) {
  const TemporaryFolder folder;
  folder.Put("a.upt",
             "$PMGNWPL,0100.000,N,00200.000,E,0000000,M,WPT001,A,a*00\r\n"
             "$PMGNRTE,1,1,c,1,WPT001,a,WPT002,a*00\r\n");
  const ProgramResult result = RunConverter({folder.PathTo("a.upt"), "itn"});
  EXPECT_EQ(result.status, 3);
  EXPECT_NE(result.errors.find(": passed over: 1 stop without a waypoint\n"), std::string::npos)
      << result.errors;
}

TEST(ExitStatus, TellsOfTargetsThatNobodyCanRead) {
  const TemporaryFolder folder;
  folder.Put("a.itn", "1|2|A & B|4|\r\n");
  const ProgramResult result = RunConverter({folder.PathTo("a.itn"), "xml:259"});
  EXPECT_EQ(result.status, 3);
  EXPECT_NE(result.errors.find(": cannot be read back\n"), std::string::npos) << result.errors;
}

TEST(ExitStatus, LeavesLesserLossesToStrictEyes) {
  const TemporaryFolder folder;
  folder.Put("a.gpx", Gpx("<rtept lat=\"1\" lon=\"2\"><ele>300</ele><name>\u6771</name><cmt>c</cmt>"
                          "<time>t</time></rtept>"));
  EXPECT_EQ(RunConverter({folder.PathTo("a.gpx"), "itn"}).status, 0);
  EXPECT_EQ(RunConverter({folder.PathTo("a.gpx"), "itn", "--strict"}).status, 3);
}

TEST(ExitStatus, OfAFolderIsThatOfItsWorstFile) {
  const TemporaryFolder folder;
  folder.Put("a.gpx", kThreeOfOneName);
  folder.Put("b.itn", "1|2|A|4|\r\n");
  EXPECT_EQ(RunConverter({folder.PathTo(""), "gdb", "-o", folder.PathTo("out")}).status, 3);
  EXPECT_EQ(
      RunConverter({folder.PathTo(""), "gdb", "-o", folder.PathTo("out"), "--tolerant"}).status, 0);
}

TEST(DoubtfulPositions, AreTold) {
  const TemporaryFolder folder;
  folder.Put("a.itn",
             "50000|9000000|north|4|\r\n18000000|50000|east|0|\r\n-18150000|50000|west|0|\r\n"
             "50000|-9550000|south|2|\r\n");
  const std::string told = folder.PathTo("a.itn") +
                           ": doubtful: 2 positions outside \u00B190 degrees of latitude or "
                           "\u00B1180 degrees of longitude\n";
  const ProgramResult result = RunConverter({folder.PathTo("a.itn"), "ov2"});
  EXPECT_EQ(result.status, 0);
  EXPECT_TRUE(result.errors.starts_with(folder.PathTo("a.ov2") +
                                        ": checked: all 4 stops are as they were, within "))
      << result.errors;
  EXPECT_TRUE(result.errors.ends_with("\n" + told)) << result.errors;
  EXPECT_EQ(RunConverter({"--inspect", folder.PathTo("a.itn")}).errors, told);
  EXPECT_EQ(RunConverter({"--quiet", folder.PathTo("a.itn"), "ov2"}).errors, "");
  EXPECT_NE(RunConverter({"--json", folder.PathTo("a.itn"), "ov2"})
                .output.find("\"doubtfulPositions\": 2"),
            std::string::npos);
  const ProgramResult many = RunConverter({folder.PathTo(""), "ov2", "-o", folder.PathTo("out")});
  EXPECT_TRUE(many.errors.find(told) != std::string::npos) << many.errors;
}

// Long lists are read back while they are written.
std::string ManyStops(const std::string& special, size_t place) {
  std::string stops;
  for (size_t i = 0; i < 5000; ++i) {
    const std::string tail = std::to_string(10000 + i);
    stops += i == place ? special
                        : "<rtept lat=\"1." + tail + "\" lon=\"2." + tail +
                              "\"><ele>3</ele><name>n" + tail + "</name><cmt>c</cmt></rtept>";
  }
  return Gpx(stops);
}

TEST(CheckWhileWriting, FindsNothingWhereNothingIsLost) {
  const TemporaryFolder folder;
  folder.Put("a.gpx", ManyStops("", 5001));
  for (const std::string key : {"gpx:107", "gpx:200", "kml"}) {
    const std::string target = folder.PathTo("b.x");
    const ProgramResult result = RunConverter({folder.PathTo("a.gpx"), key, "-o", target});
    EXPECT_EQ(result.errors.substr(result.errors.find(target)),
              target + ": checked: all 5000 stops are as they were, within 0.0 m\n")
        << key;
    EXPECT_EQ(result.status, 0);
  }
}

TEST(CheckWhileWriting, FindsWhatIsLost) {
  const TemporaryFolder folder;
  folder.Put("a.gpx", ManyStops("", 5001));
  const ProgramResult comments =
      RunConverter({folder.PathTo("a.gpx"), "gpx:370", "-o", folder.PathTo("b.gpx")});
  EXPECT_NE(comments.errors.find(": 5000 comments and 5000 altitudes dropped; "), std::string::npos)
      << comments.errors;
  folder.Put("c.gpx", ManyStops("<rtept lat=\"0\" lon=\"0\"><name>x</name></rtept>", 4000));
  const ProgramResult stop =
      RunConverter({folder.PathTo("c.gpx"), "kml", "-o", folder.PathTo("d.kml")});
  EXPECT_EQ(stop.status, 3);
  EXPECT_NE(stop.errors.find(": 1 stop of 5000 lost, 0 new\n"), std::string::npos) << stop.errors;
}

TEST(CheckWhileWriting, EndsWithAWriteThatFails) {
  const TemporaryFolder folder;
  folder.Put("a.gpx", ManyStops("", 5001));
  const ProgramResult result =
      RunConverter({folder.PathTo("a.gpx"), "kml", "-o", folder.PathTo("none/b.kml")});
  EXPECT_EQ(result.status, 1);
  EXPECT_NE(result.errors.find("no such file or folder"), std::string::npos) << result.errors;
}

TEST(LossCheck, CountsFilesOfAFolder) {
  const TemporaryFolder folder;
  folder.Put("a.itn", "1|2|A|4|\r\n");
  folder.Put("b.itn", kMark + "1|2|\u6771|4|\r\n");
  const ProgramResult result = RunConverter({folder.PathTo(""), "ov2", "--strict"});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.errors, folder.PathTo("b.ov2") +
                               ": 1 name is not as it was; the first: \"\u6771\" became "
                               "\"?\"\n" +
                               folder.PathTo("b.ov2") +
                               ": with --fit the itinerary is adapted to what this format can hold"
                               "\n2 converted, 0 not recognised, 0 failed\n"
                               "1 of the converted files with losses\n");
}

}  // namespace
