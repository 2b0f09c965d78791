#include "platform/program_data.h"

#include <string>

#include <unistd.h>

#include "platform/path_text.h"
#include "platform/posix/program_folder.h"

WideString ProgramDataFile(std::string_view name) {
  const std::string folder = ProgramFolder();
  if (folder.empty()) return {};
  for (const std::string& place : {folder, folder + "/" CORVANE_DATA_FOLDER}) {
    const std::string path = place + "/" + std::string(name);
    if (access(path.c_str(), R_OK) == 0) return WidePath(path);
  }
  return {};
}
