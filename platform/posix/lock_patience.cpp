#include "platform/posix/lock_patience.h"

#include <utility>

#include <sys/stat.h>
#include <time.h>

namespace {

constexpr auto kPatience = std::chrono::milliseconds(500);
constexpr auto kPatienceWithProgress = std::chrono::seconds(5);
constexpr timespec kPause{0, 5'000'000};

timespec TimeOf(const std::string& path) {
  struct stat details {};
  return stat(path.c_str(), &details) == 0 ? details.st_mtim : timespec{};
}

}  // namespace

LockPatience::LockPatience(std::string path)
    : m_path(std::move(path)),
      m_start(Clock::now()),
      m_lastChange(m_start),
      m_fileTime(TimeOf(m_path)) {}

bool LockPatience::WaitAMoment() {
  const timespec fileTime = TimeOf(m_path);
  const Clock::time_point now = Clock::now();
  if (fileTime.tv_sec != m_fileTime.tv_sec || fileTime.tv_nsec != m_fileTime.tv_nsec) {
    m_fileTime = fileTime;
    m_lastChange = now;
  }
  if (now - m_lastChange >= kPatience || now - m_start >= kPatienceWithProgress) return false;
  nanosleep(&kPause, nullptr);
  return true;
}
