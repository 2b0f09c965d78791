#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <string_view>

#include <unistd.h>

#include "platform/path_text.h"

/// A folder of its own for one test, gone with it.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "corvane-XXXXXX").string();
    m_path = mkdtemp(pattern.data());
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  std::string PathTo(std::string_view name) const { return (m_path / name).string(); }
  WideString WidePathTo(std::string_view name) const { return WidePath(PathTo(name)); }

  /// Makes a file with these bytes and gives its path.
  WideString Put(std::string_view name, std::string_view bytes) const {
    std::ofstream file(PathTo(name), std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return WidePathTo(name);
  }

  /// The bytes of a file; empty when it does not exist.
  std::string Get(std::string_view name) const {
    std::ifstream file(PathTo(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  }

  /// Every file below the folder with its bytes, and every folder with a slash behind its name.
  /// Links are told as the files they lead to.
  std::map<std::string, std::string> Content() const {
    std::map<std::string, std::string> content;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(m_path)) {
      const std::string name = entry.path().lexically_relative(m_path).string();
      const bool isFolder = entry.is_directory();
      content[isFolder ? name + "/" : name] = isFolder ? "" : Get(name);
    }
    return content;
  }

  bool Has(std::string_view name) const { return std::filesystem::exists(m_path / name); }
  const std::filesystem::path& Path() const { return m_path; }

 private:
  std::filesystem::path m_path;
};
