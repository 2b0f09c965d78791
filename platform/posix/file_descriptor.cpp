#include "platform/posix/file_descriptor.h"

#include <cerrno>

#include "platform/interruption.h"

bool WriteFully(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(descriptor, bytes.data(), bytes.size());
    if (written < 0) {
      if (errno == EINTR && !InterruptionScope::IsPending()) continue;
      return false;
    }
    bytes.remove_prefix(static_cast<size_t>(written));
  }
  return true;
}
