#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>

/// Reads a table of texts, a number, a tab and a text a line, the numbers rising, and hands every
/// line to `take`. False, with a word on standard error, when the file is not like that.
template <typename Take>
bool ReadNumberedLines(const std::string& path, Take take) {
  std::ifstream input(path);
  if (!input) {
    std::cerr << path << ": cannot be read\n";
    return false;
  }
  uint32_t previous = 0;
  std::string line;
  for (size_t number = 1; std::getline(input, line); ++number) {
    const size_t tab = line.find('\t');
    const uint32_t id = tab == std::string::npos
                            ? 0
                            : static_cast<uint32_t>(std::strtoul(line.c_str(), nullptr, 10));
    if (id <= previous) {
      std::cerr << path << ":" << number << ": expected a number above " << previous
                << ", a tab and a text\n";
      return false;
    }
    previous = id;
    take(id, line.substr(tab + 1));
  }
  return true;
}
