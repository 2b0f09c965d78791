// What the documents show is what the program does.

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/run_program.h"

namespace {

namespace fs = std::filesystem;

std::string ReadDocument(const std::string& name) {
  std::ifstream file(std::string(CORVANE_SOURCE_FOLDER "/") + name);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

// A command as a document shows it, and the lines that it shows below.
struct ShownCommand {
  std::string command;
  std::vector<std::string> output;
};

std::vector<ShownCommand> ShownCommands(const std::string& document) {
  constexpr size_t kIndent = 4;
  std::vector<ShownCommand> commands;
  bool inCommand = false;
  for (const std::string& line : Lines(ReadDocument(document))) {
    if (line.rfind("    $ ", 0) == 0) {
      commands.push_back({line.substr(kIndent + 2), {}});
      inCommand = true;
    } else if (inCommand && line.rfind("    ", 0) == 0) {
      commands.back().output.push_back(line.substr(kIndent));
    } else {
      inCommand = false;
    }
  }
  return commands;
}

// Whether lines are those shown, where a shown "..." stands for any lines.
bool Matches(const std::vector<std::string>& shown, const std::vector<std::string>& lines,
             size_t i = 0, size_t j = 0) {
  if (i == shown.size()) return j == lines.size();
  if (shown[i] == "...") {
    for (; j <= lines.size(); ++j) {
      if (Matches(shown, lines, i + 1, j)) return true;
    }
    return false;
  }
  return j < lines.size() && shown[i] == lines[j] && Matches(shown, lines, i + 1, j + 1);
}

TEST(ShownOutput, Matches) {
  EXPECT_TRUE(Matches({}, {}));
  EXPECT_TRUE(Matches({"a", "...", "d"}, {"a", "b", "c", "d"}));
  EXPECT_TRUE(Matches({"a", "..."}, {"a"}));
  EXPECT_FALSE(Matches({"a"}, {"a", "b"}));
  EXPECT_FALSE(Matches({"a", "...", "d"}, {"a", "b"}));
  EXPECT_FALSE(Matches({}, {"a"}));
}

TEST(Readme, ShowsTheFormatTable) {
  std::string table;
  for (const std::string& line : Lines(RunConverter({"--formats"}).output))
    table += "    " + line + "\n";
  EXPECT_NE(ReadDocument("README.md")
                .find("<!-- formats: begin -->\n\n" + table + "\n<!-- formats: end -->"),
            std::string::npos)
      << "run docs/update";
}

TEST(FormatsPage, IsUpToDate) {
  const std::string docs = CORVANE_SOURCE_FOLDER "/docs/";
  const ProgramResult made =
      RunShell("LC_ALL=C " CORVANE_BINARY_FOLDER
               "/bin/corvanemap --formats --json | jq -rj --rawfile facts " +
               Quoted(docs + "format_facts.tsv") + " -f " + Quoted(docs + "formats.jq"));
  ASSERT_EQ(made.errors, "");
  EXPECT_TRUE(ReadDocument("docs/formats.md") == made.output) << "run docs/update";
}

// Runs what a document shows, one command after the other, in a folder with the examples.
class ShownIn : public testing::TestWithParam<std::string> {};

TEST_P(ShownIn, CommandsDoWhatIsShown) {
  const TemporaryFolder folder;
  const std::string root = folder.PathTo("");
  fs::copy(CORVANE_SOURCE_FOLDER "/examples", root + "examples", fs::copy_options::recursive);
  fs::create_symlink(CORVANE_BINARY_FOLDER "/bin/corvanemap", root + "run");
  for (const ShownCommand& shown : ShownCommands(GetParam())) {
    SCOPED_TRACE(shown.command);
    // A terminal shows both streams in one.
    const ProgramResult result =
        RunShell("cd " + Quoted(root) + " && export LC_ALL=C XDG_CONFIG_HOME=" + Quoted(root) +
                 " XDG_DATA_HOME=" + Quoted(root) + " && { " + shown.command + "\n} 2>&1");
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(Matches(shown.output, Lines(result.output))) << result.output;
  }
}

std::vector<std::string> Documents() {
  std::vector<std::string> documents = {"README.md"};
  for (const auto& entry : fs::directory_iterator(CORVANE_SOURCE_FOLDER "/docs")) {
    if (entry.path().extension() == ".md")
      documents.push_back("docs/" + entry.path().filename().string());
  }
  return documents;
}

INSTANTIATE_TEST_SUITE_P(Documents, ShownIn, testing::ValuesIn(Documents()),
                         [](const auto& document) {
                           std::string name = fs::path(document.param).stem().string();
                           std::erase_if(name, [](char c) { return c < '0' || c > 'z'; });
                           return name;
                         });

TEST(Readme, ShowsCommands) { EXPECT_GE(ShownCommands("README.md").size(), 2u); }

// The options that the help text names.
std::vector<std::string> Options() {
  std::vector<std::string> options;
  for (const std::string& line : Lines(RunConverter({"--help"}).output)) {
    const size_t start = line.find("--");
    if (line.rfind("  ", 0) == 0 && start != line.npos && start < 8)
      options.push_back(line.substr(start + 2, line.find_first_of(" [", start) - start - 2));
  }
  return options;
}

TEST(ManPage, TellsEveryOption) {
  const std::string page = ReadDocument("packaging/corvanemap.1");
  ASSERT_GE(Options().size(), 11u);
  for (const std::string& option : Options())
    EXPECT_NE(page.find("\\-\\-" + option), page.npos) << option;
}

TEST(Completions, OfferEveryOption) {
  const std::string folder = "packaging/completions/corvanemap.";
  for (const std::string& option : Options()) {
    EXPECT_NE(ReadDocument(folder + "bash").find("--" + option), std::string::npos) << option;
    EXPECT_NE(ReadDocument(folder + "zsh").find("--" + option), std::string::npos) << option;
    EXPECT_NE(ReadDocument(folder + "fish").find("-l " + option), std::string::npos) << option;
  }
}

TEST(Completions, OfferTheKeysOfBash) {
  const auto complete = [](const std::string& words) {
    return RunShell("source " CORVANE_SOURCE_FOLDER
                    "/packaging/completions/corvanemap.bash; COMP_WORDS=(" CORVANE_BINARY_FOLDER
                    "/bin/corvanemap " +
                    words +
                    "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _corvanemap; echo "
                    "${COMPREPLY[*]}")
        .output;
  };
  EXPECT_EQ(complete("trip.gpx ov"), "ov2\n");
  EXPECT_EQ(complete("trip.gpx rte : 13"), "131\n");
  EXPECT_EQ(complete("--list all trip.gpx itn LANG_F"), "LANG_FRENCH\n");
  EXPECT_EQ(complete("trip.gpx axg"), "\n");  // only read
  EXPECT_EQ(complete("--inspect trip.gpx i"), "\n");
  EXPECT_EQ(complete("trip.gpx zum"), "zumo\n");
  EXPECT_EQ(complete("a.gpx b.gpx ov"), "ov2\n");  // one more source or the key
  // Options take their values along.
  EXPECT_EQ(complete("--near 48,2 trip.gpx ov"), "ov2\n");
  EXPECT_EQ(complete("--csv-read lat = 1 , lon = 2 trip.csv ov"), "ov2\n");
  EXPECT_EQ(complete("--csv-read Des"), "Destinator\n");
  EXPECT_EQ(complete("--csv-write Pio"), "Pioneer\\ Navgate\n");
  EXPECT_EQ(complete("--set AVOID_T"), "AVOID_TOLLS=\n");
  EXPECT_EQ(complete("--set Converter"), "\n");  // bytes cannot be set
  EXPECT_EQ(complete("--option no"), "no-commas\n");
  EXPECT_EQ(complete("--from tomt"), "tomtom\n");
  EXPECT_EQ(complete("--provider str"), "straight\n");
}

}  // namespace
