#include "platform/scratch_folder.h"

#include <cstdlib>
#include <filesystem>
#include <new>
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

// Without memory even for a name there is no way to clear up, and nobody to tell.
ScratchFolder::~ScratchFolder() {
  if (m_path.empty()) return;
  try {
    std::error_code ignored;
    std::filesystem::remove_all(PathBytes(m_path), ignored);
  } catch (const std::bad_alloc&) {
  }
}
