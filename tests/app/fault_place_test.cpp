// Where in a file the fault is, as the console tells it.

#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "tests/run_program.h"
#include "tests/temporary_folder.h"

namespace {

// The name of the wrong end tag begins at the ninth character of the third line.
constexpr std::string_view kTornDocument = "<?xml version=\"1.0\"?>\n<gpx>\n <wpt></gpx>\n";

TEST(FaultPlace, OfADocumentIsALineAndAColumn) {
  const TemporaryFolder folder;
  folder.Put("a.gpx", std::string(kTornDocument));
  const std::string path = folder.PathTo("a.gpx");
  for (const auto& arguments : {std::vector<std::string>{path, "itn"}, {"--inspect", path}}) {
    const ProgramResult result = RunConverter(arguments);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors, path +
                                 ": The file cannot be read. The error is in line 3, column 9: "
                                 "an end tag does not match its start tag.\n");
  }
  EXPECT_EQ(RunConverter({path, "itn", "LANG_GERMAN"}).errors,
            path +
                ": Die Datei kann nicht gelesen werden. Der Fehler steht in Zeile 3, Spalte 9: "
                "ein schließendes Tag passt nicht zum öffnenden.\n");
}

// A grid of metres, which the reader does not know; no other reader of the extension finds a point.
TEST(FaultPlace, OfATextIsALine) {
  const TemporaryFolder folder;
  folder.Put("a.wpt", "H  SOFTWARE NAME & VERSION\r\nI  PCX5 2.09\r\n\r\nU  UTM UP\r\n");
  const ProgramResult result = RunConverter({folder.PathTo("a.wpt"), "itn"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors,
            folder.PathTo("a.wpt") + ": Unknown file format. The error is in line 4.\n");
}

}  // namespace
