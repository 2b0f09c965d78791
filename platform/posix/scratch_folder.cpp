#include "platform/scratch_folder.h"

#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

#include "platform/path_text.h"
#include "platform/posix/errors.h"

ScratchFolder::ScratchFolder() {
  const char* parent = std::getenv("TMPDIR");
  std::string path = std::string(parent && *parent ? parent : "/tmp") + "/corvane-XXXXXX";
  if (mkdtemp(path.data())) {
    m_path = WidePath(path);
  } else {
    m_status = FailWithErrno();
  }
}

ScratchFolder::~ScratchFolder() {
  std::error_code ignored;
  if (!m_path.empty()) std::filesystem::remove_all(PathBytes(m_path), ignored);
}
