#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

/// The bytes of a file; empty when it does not exist.
inline std::string ContentOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}
