#pragma once

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <thread>

#include "tests/temporary_folder.h"

/// A desktop of its own for one test: no program is installed but those that the test installs, and
/// what is opened is written down.
class DesktopHome {
 public:
  DesktopHome() {
    std::filesystem::create_directories(m_folder.PathTo("data/applications"));
    std::filesystem::create_directories(m_folder.PathTo("bin"));
    std::filesystem::create_directories(m_folder.PathTo("tmp"));
    Set("XDG_DATA_HOME", m_folder.PathTo("data"));
    Set("XDG_DATA_DIRS", m_folder.PathTo("shared"));
    Set("XDG_CONFIG_HOME", m_folder.PathTo("config"));
    Set("XDG_CONFIG_DIRS", m_folder.PathTo("system"));
    Set("TMPDIR", m_folder.PathTo("tmp"));
    Set("PATH", m_folder.PathTo("bin"));
    AddProgram("xdg-open");
  }
  ~DesktopHome() {
    for (const auto& [name, value] : m_former) setenv(name.c_str(), value.c_str(), 1);
    for (const auto& name : m_added) unsetenv(name.c_str());
  }
  DesktopHome(const DesktopHome&) = delete;
  DesktopHome& operator=(const DesktopHome&) = delete;

  /// A program that notes its arguments, one a line, in a file of its name.
  void AddProgram(const std::string& name) const {
    const std::string note = m_folder.PathTo(name + ".opened");
    m_folder.Put("bin/" + name, "#!/bin/sh\nprintf '%s\\n' \"$@\" > '" + note +
                                    ".part'\n/bin/mv '" + note + ".part' '" + note + "'\n");
    std::filesystem::permissions(m_folder.PathTo("bin/" + name), std::filesystem::perms::owner_all);
  }
  void RemoveProgram(const std::string& name) const {
    std::filesystem::remove(m_folder.PathTo("bin/" + name));
  }
  /// Declares a program with its command line for MIME types.
  void Install(const std::string& name, const std::string& command,
               const std::string& types) const {
    m_folder.Put(
        "data/applications/" + name + ".desktop",
        "[Desktop Entry]\nType=Application\nExec=" + command + "\nMimeType=" + types + "\n");
  }
  /// The arguments of a program that was started; waits for them.
  std::string Opened(const std::string& program = "xdg-open") const {
    for (int i = 0; i < 1000 && !m_folder.Has(program + ".opened"); ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    std::string lines = m_folder.Get(program + ".opened");
    std::filesystem::remove(m_folder.PathTo(program + ".opened"));
    if (lines.ends_with('\n')) lines.pop_back();
    return lines;
  }
  bool HasOpened() const { return m_folder.Has("xdg-open.opened"); }
  const TemporaryFolder& Folder() const { return m_folder; }

 private:
  void Set(const std::string& name, const std::string& value) {
    if (const char* const former = std::getenv(name.c_str()))
      m_former[name] = former;
    else
      m_added.push_back(name);
    setenv(name.c_str(), value.c_str(), 1);
  }

  TemporaryFolder m_folder;
  std::map<std::string, std::string> m_former;
  std::vector<std::string> m_added;
};
