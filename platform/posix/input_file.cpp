#include "platform/input_file.h"

#include <cerrno>

#include <sys/mman.h>
#include <unistd.h>

#include "platform/posix/errors.h"
#include "platform/posix/regular_file.h"

namespace {

// Fills `size` bytes at `data`; less when the file has become shorter. -1 on failure.
ssize_t ReadFully(int descriptor, char* data, size_t size) {
  size_t filled = 0;
  while (filled < size) {
    const ssize_t count = read(descriptor, data + filled, size - filled);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return -1;
    if (count == 0) break;
    filled += static_cast<size_t>(count);
  }
  return static_cast<ssize_t>(filled);
}

}  // namespace

InputFile::~InputFile() {
  if (m_size > m_discarded) munmap(const_cast<char*>(m_data) + m_discarded, m_size - m_discarded);
}

uint32_t InputFile::Open(const WideString& path) {
  FileDescriptor file;
  size_t size = 0;
  if (const uint32_t status = OpenRegularFile(path, file, size); status != 0) return status;
  if (size == 0) return 0;

  void* const memory =
      mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) return FailWithErrno();
  madvise(memory, size, MADV_HUGEPAGE);
  auto* const data = static_cast<char*>(memory);
  const ssize_t filled = ReadFully(file.Get(), data, size);
  if (filled <= 0) {
    const uint32_t status = filled < 0 ? FailWithErrno() : 0;
    munmap(memory, size);
    return status;
  }
  m_data = data;
  m_size = static_cast<size_t>(filled);
  return 0;
}

void InputFile::Release(size_t offset) {
  const auto page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
  const size_t end = offset / page * page;
  if (end <= m_discarded) return;
  munmap(const_cast<char*>(m_data) + m_discarded, end - m_discarded);
  m_discarded = end;
}
