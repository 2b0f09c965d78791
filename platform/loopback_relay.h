#pragma once

#include <cstdint>
#include <memory>

/// Hands what comes to a port of ::1 on to the same port of 127.0.0.1, for a server that knows
/// IPv4 only. Does nothing where the port of ::1 cannot be had: the machine has no IPv6, or another
/// program has it, and 127.0.0.1 is enough for everybody.
class LoopbackRelay {
 public:
  explicit LoopbackRelay(uint16_t port);
  /// Ends all connections.
  ~LoopbackRelay();
  LoopbackRelay(const LoopbackRelay&) = delete;
  LoopbackRelay& operator=(const LoopbackRelay&) = delete;

 private:
  class Worker;
  std::unique_ptr<Worker> m_worker;
};
