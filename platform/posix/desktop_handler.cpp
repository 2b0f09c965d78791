#include "platform/desktop_handler.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <system_error>
#include <utility>

namespace {

namespace fs = std::filesystem;

// Files of the desktop are small; what is larger is none.
constexpr uintmax_t kLargestFile = uintmax_t{1} << 20;

constexpr std::string_view kApplications = "applications";
constexpr std::string_view kChoices = "mimeapps.list";

void AddFolders(std::vector<fs::path>& folders, const char* variable, std::string_view absent) {
  const char* const value = std::getenv(variable);
  std::string_view rest = value && *value ? value : absent;
  while (!rest.empty()) {
    const size_t end = rest.find(':');
    if (rest.front() == '/') folders.emplace_back(rest.substr(0, end));
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
  }
}

// The folders of a kind, the user's own first.
std::vector<fs::path> Folders(const char* ownVariable, std::string_view ownBelowHome,
                              const char* sharedVariable, std::string_view sharedByDefault) {
  const char* const home = std::getenv("HOME");
  const std::string own = home && *home ? std::string(home) + std::string(ownBelowHome) : "";
  std::vector<fs::path> folders;
  AddFolders(folders, ownVariable, own);
  AddFolders(folders, sharedVariable, sharedByDefault);
  return folders;
}

std::vector<fs::path> DataFolders() {
  return Folders("XDG_DATA_HOME", "/.local/share", "XDG_DATA_DIRS", "/usr/local/share:/usr/share");
}

std::vector<fs::path> ConfigFolders() {
  return Folders("XDG_CONFIG_HOME", "/.config", "XDG_CONFIG_DIRS", "/etc/xdg");
}

// Calls `take` with section, key and value of every line of a file, until it gives false.
void ReadKeys(
    const fs::path& file,
    const std::function<bool(std::string_view, std::string_view, std::string_view)>& take) {
  std::error_code ignored;
  if (!fs::is_regular_file(file, ignored) || fs::file_size(file, ignored) > kLargestFile) return;
  std::ifstream stream(file);
  std::string section;
  for (std::string line; std::getline(stream, line);) {
    if (line.starts_with('[')) {
      section = line.substr(1, line.find(']') - 1);
      continue;
    }
    const size_t equals = line.find('=');
    if (line.starts_with('#') || equals == std::string::npos) continue;
    const std::string_view view = line;
    std::string_view key = view.substr(0, equals);
    std::string_view value = view.substr(equals + 1);
    while (key.ends_with(' ')) key.remove_suffix(1);
    while (value.starts_with(' ')) value.remove_prefix(1);
    if (!take(section, key, value)) return;
  }
}

// Whether a text of items, each with a semicolon behind it, holds this one.
bool ListHolds(std::string_view list, std::string_view item) {
  while (!list.empty()) {
    const size_t end = list.find(';');
    if (list.substr(0, end) == item) return true;
    list.remove_prefix(end == std::string_view::npos ? list.size() : end + 1);
  }
  return false;
}

// Splits a command line of a desktop file at its blanks; quotes hold a piece together.
std::vector<std::string> SplitCommand(std::string_view line) {
  std::vector<std::string> arguments;
  std::string argument;
  bool quoted = false;
  bool begun = false;
  for (size_t i = 0; i < line.size(); ++i) {
    const char letter = line[i];
    if (letter == '"') {
      quoted = !quoted;
      begun = true;
    } else if (quoted && letter == '\\' && i + 1 < line.size()) {
      argument += line[++i];
    } else if (!quoted && (letter == ' ' || letter == '\t')) {
      if (begun) arguments.push_back(std::move(argument));
      argument.clear();
      begun = false;
    } else {
      argument += letter;
      begun = true;
    }
  }
  if (begun) arguments.push_back(std::move(argument));
  return arguments;
}

// A piece of a command line with `target` where the address or file goes, and no other codes.
std::string ReplaceCodes(std::string_view piece, std::string_view target) {
  constexpr std::string_view kPlaces = "uUfF";
  std::string text;
  for (size_t i = 0; i < piece.size(); ++i) {
    if (piece[i] != '%' || i + 1 == piece.size()) {
      text += piece[i];
      continue;
    }
    const char code = piece[++i];
    if (kPlaces.find(code) != std::string_view::npos)
      text += target;
    else if (code == '%')
      text += code;
  }
  return text;
}

// What a program's desktop file says.
struct DesktopEntry {
  std::string command;
  std::string mimeTypes;
  bool hidden = false;
};

DesktopEntry ReadEntry(const fs::path& file) {
  DesktopEntry entry;
  ReadKeys(file, [&](std::string_view section, std::string_view key, std::string_view value) {
    if (section != "Desktop Entry") return true;
    if (key == "Exec") entry.command = value;
    if (key == "MimeType") entry.mimeTypes = value;
    if (key == "Hidden") entry.hidden = value == "true";
    return true;
  });
  return entry;
}

std::string CommandOf(const fs::path& file) {
  const DesktopEntry entry = ReadEntry(file);
  return entry.hidden ? std::string() : entry.command;
}

// The command of the first program there is of those that a list of choices names by their files.
std::string ChosenCommand(std::string_view names, const std::vector<fs::path>& dataFolders) {
  while (!names.empty()) {
    const size_t end = names.find(';');
    const std::string_view name = names.substr(0, end);
    names.remove_prefix(end == std::string_view::npos ? names.size() : end + 1);
    if (name.empty() || name.find('/') != std::string_view::npos) continue;
    for (const fs::path& folder : dataFolders) {
      std::string command = CommandOf(folder / kApplications / name);
      if (!command.empty()) return command;
    }
  }
  return {};
}

std::string FindChosen(std::string_view mimeType, const std::vector<fs::path>& dataFolders) {
  std::vector<fs::path> lists;
  for (const fs::path& folder : ConfigFolders()) lists.push_back(folder / kChoices);
  for (const fs::path& folder : dataFolders) lists.push_back(folder / kApplications / kChoices);
  std::string command;
  for (const fs::path& list : lists) {
    ReadKeys(list, [&](std::string_view section, std::string_view key, std::string_view value) {
      const bool counts = section == "Default Applications" || section == "Added Associations";
      if (counts && key == mimeType) command = ChosenCommand(value, dataFolders);
      return command.empty();
    });
    if (!command.empty()) break;
  }
  return command;
}

std::string FindDeclared(std::string_view mimeType, const std::vector<fs::path>& dataFolders) {
  for (const fs::path& folder : dataFolders) {
    std::error_code failure;
    fs::recursive_directory_iterator files(folder / kApplications,
                                           fs::directory_options::skip_permission_denied, failure);
    for (; !failure && files != fs::recursive_directory_iterator(); files.increment(failure)) {
      if (files->path().extension() != ".desktop") continue;
      const DesktopEntry entry = ReadEntry(files->path());
      if (!entry.hidden && !entry.command.empty() && ListHolds(entry.mimeTypes, mimeType))
        return entry.command;
    }
  }
  return {};
}

}  // namespace

std::vector<std::string> DesktopHandler(std::string_view mimeType) {
  const std::vector<fs::path> dataFolders = DataFolders();
  std::string command = FindChosen(mimeType, dataFolders);
  if (command.empty()) command = FindDeclared(mimeType, dataFolders);
  return SplitCommand(command);
}

std::vector<std::string> HandlerArguments(const std::vector<std::string>& command,
                                          const std::string& target) {
  std::vector<std::string> arguments;
  for (const std::string& piece : command) {
    std::string argument = ReplaceCodes(piece, target);
    if (!argument.empty() || piece.empty()) arguments.push_back(std::move(argument));
  }
  return arguments;
}
