#pragma once

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

/// Keeps the port of the local server for one test at a time, whichever process it runs in.
class PortLock {
 public:
  PortLock() : m_file(open("/tmp/corvane-map-port-8099.lock", O_RDWR | O_CREAT | O_CLOEXEC, 0666)) {
    flock(m_file, LOCK_EX);
  }
  ~PortLock() { close(m_file); }
  PortLock(const PortLock&) = delete;
  PortLock& operator=(const PortLock&) = delete;

 private:
  int m_file;
};
