#pragma once

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

/// Waits for the port of the local server and keeps it for this process until its end: the server
/// goes on listening behind the test that has started it.
class PortLock {
 public:
  PortLock() { [[maybe_unused]] static const int file = Locked(); }

 private:
  static int Locked() {
    const int file = open("/tmp/corvane-map-port-8099.lock", O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    flock(file, LOCK_EX);
    return file;
  }
};
