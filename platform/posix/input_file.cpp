#include "platform/input_file.h"

#include <cerrno>

#include <sys/mman.h>
#include <unistd.h>

#include "platform/posix/errors.h"
#include "platform/posix/regular_file.h"

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define CORVANE_GUARDED_FILES
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define CORVANE_GUARDED_FILES
#endif
#if defined(CORVANE_GUARDED_FILES)
#include <sanitizer/asan_interface.h>
#endif

namespace {

// Builds with the address sanitizer keep some room behind a file's bytes that must not be touched:
// the sanitizer sees a read past the end of a heap block by itself, but not one of a mapping.
#if defined(CORVANE_GUARDED_FILES)
constexpr size_t kGuardSize = 4096;
void Guard(const char* data, size_t size) { ASAN_POISON_MEMORY_REGION(data, size); }
void Unguard(const char* data, size_t size) { ASAN_UNPOISON_MEMORY_REGION(data, size); }
#else
constexpr size_t kGuardSize = 0;
void Guard(const char*, size_t) {}
void Unguard(const char*, size_t) {}
#endif

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
  if (m_data == nullptr || m_size + kGuardSize <= m_discarded) return;
  Unguard(m_data + m_size, kGuardSize);
  munmap(const_cast<char*>(m_data) + m_discarded, m_size + kGuardSize - m_discarded);
}

uint32_t InputFile::Open(const WideString& path) {
  FileDescriptor file;
  FileState state;
  if (const uint32_t status = OpenRegularFile(path, file, state); status != 0) return status;
  const auto size = static_cast<size_t>(state.size);
  if (size == 0) return 0;

  const size_t mapped = size + kGuardSize;
  void* const memory =
      mmap(nullptr, mapped, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) return FailWithErrno();
  madvise(memory, mapped, MADV_HUGEPAGE);
  auto* const data = static_cast<char*>(memory);
  const ssize_t filled = ReadFully(file.Get(), data, size);
  const uint32_t status = filled < 0 ? FailWithErrno() : CheckUnchanged(file.Get(), state);
  if (filled <= 0 || status != 0) {
    munmap(memory, mapped);
    return status;
  }
  m_data = data;
  m_size = static_cast<size_t>(filled);
  Guard(m_data + m_size, kGuardSize);
  return 0;
}

void InputFile::Release(size_t offset) {
  const auto page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
  const size_t end = offset / page * page;
  if (end <= m_discarded) return;
  munmap(const_cast<char*>(m_data) + m_discarded, end - m_discarded);
  m_discarded = end;
}
