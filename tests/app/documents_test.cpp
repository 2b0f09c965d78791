// What the documents show is what the program does.

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "tests/run_program.h"

namespace {

std::string ReadDocument(const std::string& name) {
  std::ifstream file(std::string(CORVANE_SOURCE_FOLDER "/") + name);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

TEST(Readme, ShowsTheFormatTable) {
  std::istringstream lines(RunConverter({"--formats"}).output);
  std::string table;
  for (std::string line; std::getline(lines, line);) table += "    " + line + "\n";
  EXPECT_NE(ReadDocument("README.md")
                .find("<!-- formats: begin -->\n\n" + table + "\n<!-- formats: end -->"),
            std::string::npos)
      << "run docs/update";
}

}  // namespace
