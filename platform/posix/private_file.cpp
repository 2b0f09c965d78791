#include "platform/private_file.h"

#include <cstdio>
#include <cstdlib>
#include <string>

#include <unistd.h>

#include "platform/path_text.h"
#include "platform/posix/errors.h"
#include "platform/posix/file_descriptor.h"

WideString TemporaryFolderPath() {
  const char* const folder = std::getenv("TMPDIR");
  return WidePath(folder && *folder ? folder : "/tmp");
}

uint32_t WritePrivateFile(const WideString& path, std::string_view bytes) {
  const std::string target = PathBytes(path);
  std::string temporary = target + ".XXXXXX";
  const FileDescriptor file(mkstemp(temporary.data()));  // readable by this user only
  if (!file) return FailWithErrno();
  if (WriteFully(file.Get(), bytes) && rename(temporary.c_str(), target.c_str()) == 0) return 0;
  const uint32_t status = FailWithErrno();
  unlink(temporary.c_str());
  return status;
}
