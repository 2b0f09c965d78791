// Turns the table of the texts' names into a C++ header of constants.
//   name_texts OUTPUT FILE

#include <algorithm>
#include <fstream>
#include <iostream>
#include <set>
#include <string>

#include "resources/numbered_lines.h"

namespace {

bool IsCamelCase(const std::string& name) {
  const auto isLetterOrDigit = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
  };
  return !name.empty() && name[0] >= 'A' && name[0] <= 'Z' &&
         std::all_of(name.begin(), name.end(), isLetterOrDigit);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  const std::string path = argv[2];
  std::ofstream output(argv[1]);
  output << "#pragma once\n\n#include <cstdint>\n\n// Numbers of the texts.\n\n";
  std::set<std::string> names;
  bool areGood = true;
  const bool isRead = ReadNumberedLines(path, [&](uint32_t id, const std::string& name) {
    if (!IsCamelCase(name) || !names.insert(name).second) {
      std::cerr << path << ": " << id << ": \"" << name
                << "\" is no name in camel case, or stands there twice\n";
      areGood = false;
    }
    output << "inline constexpr uint32_t kText" << name << " = " << id << ";\n";
  });
  output.close();
  return isRead && areGood && output ? 0 : 1;
}
