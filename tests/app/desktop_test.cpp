// What a desktop takes our files for.

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "tests/run_program.h"
#include "tests/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

class Desktop : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(RunShell("command -v update-mime-database && command -v gio").status, 0)
        << "needs the packages shared-mime-info and libglib2.0-bin";
    fs::create_directories(m_folder.PathTo("share/mime/packages"));
    fs::copy(CORVANE_SOURCE_FOLDER "/packaging/corvane-map.xml",
             m_folder.PathTo("share/mime/packages/corvane-map.xml"));
    ASSERT_EQ(RunShell("update-mime-database " + m_folder.PathTo("share/mime")).status, 0);
  }

  std::string KindOf(const std::string& path) {
    const ProgramResult result = RunShell(
        "XDG_DATA_HOME=" + m_folder.PathTo("share") + " gio info -a standard::content-type " +
        Quoted(path) + " | sed -n 's/.*standard::content-type: //p' | tr -d '\\n'");
    return result.output;
  }
  std::string KindOf(const std::string& name, const std::string& content) {
    m_folder.Put(name, content);
    return KindOf(m_folder.PathTo(name));
  }

  const TemporaryFolder m_folder;
};

TEST_F(Desktop, TellsRoutesOfOneEndingByTheirFirstLines) {
  EXPECT_EQ(KindOf("a.rte", "[Paris|][0][10]|||2.35222|48.85661\r\n"), "application/x-navigon-rte");
  EXPECT_EQ(KindOf("b.rte", "[Paris||][0][10]|||2.35222|48.85661\r\n"),
            "application/x-navigon-rte");
  EXPECT_EQ(KindOf("c.rte", "-|-|16|-|-|Paris|-|-|-|-|-|-|2.35222|48.85661|-|-|\r\n"),
            "application/x-navigon-rte");
  EXPECT_EQ(KindOf("d.rte", "OziExplorer Route File Version 1.0\r\nWGS 84\r\n"),
            "application/vnd.oziexplorer.rte");
  EXPECT_EQ(KindOf("e.rte", "H  SOFTWARE NAME & VERSION\r\nI  PCX5 2.09\r\n"),
            "application/x-garmin-pcx5");
  EXPECT_EQ(KindOf("f.rte", "$PMGNWPL,4851.3966,N,00221.1332,E,35,M,Paris,,a*77\r\n"),
            "application/x-magellan-route");
}

TEST_F(Desktop, KnowsTheRoutesAmongTheExamples) {
  const std::string examples = CORVANE_SOURCE_FOLDER "/examples/";
  EXPECT_EQ(KindOf(examples + "strasbourg-to-colmar.rte"), "application/x-navigon-rte");
  EXPECT_EQ(KindOf(examples + "douro-valley.rte"), "application/vnd.oziexplorer.rte");
  EXPECT_EQ(KindOf(examples + "alsace-wine-villages.rte"), "application/x-garmin-pcx5");
}

}  // namespace
