#include "platform/sequential_file.h"

#include <cerrno>

#include <unistd.h>

#include "platform/posix/errors.h"
#include "platform/posix/regular_file.h"

SequentialFile::~SequentialFile() {
  if (m_file >= 0) close(m_file);
}

uint32_t SequentialFile::Open(const WideString& path) {
  FileDescriptor file;
  if (const uint32_t status = OpenRegularFile(path, file, m_state); status != 0) return status;
  if (m_file >= 0) close(m_file);
  m_file = file.Release();
  return 0;
}

uint32_t SequentialFile::CheckUnchanged() const { return ::CheckUnchanged(m_file, m_state); }

std::optional<size_t> SequentialFile::Read(char* data, size_t size) {
  ssize_t count = 0;
  do {
    count = read(m_file, data, size);
  } while (count < 0 && errno == EINTR);
  if (count >= 0) return static_cast<size_t>(count);
  m_status = FailWithErrno();
  return std::nullopt;
}
