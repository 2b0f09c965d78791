#include "platform/loopback_relay.h"

#include <cerrno>
#include <list>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <netinet/in.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include "platform/posix/file_descriptor.h"

namespace {

constexpr int kBacklog = 128;
constexpr size_t kMostBuffered = size_t{64} << 10;

FileDescriptor ListenOn(uint16_t port) {
  FileDescriptor listener(socket(AF_INET6, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  const int on = 1;
  sockaddr_in6 address{};
  address.sin6_family = AF_INET6;
  address.sin6_addr = in6addr_loopback;
  address.sin6_port = htons(port);
  if (setsockopt(listener.Get(), IPPROTO_IPV6, IPV6_V6ONLY, &on, sizeof on) != 0 ||
      setsockopt(listener.Get(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on) != 0 ||
      bind(listener.Get(), reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 ||
      listen(listener.Get(), kBacklog) != 0) {
    return FileDescriptor();
  }
  return listener;
}

FileDescriptor ConnectTo(uint16_t port) {
  FileDescriptor server(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(port);
  if (connect(server.Get(), reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
    return FileDescriptor();
  }
  return server;
}

// What flows from one socket to another.
class Stream {
 public:
  Stream(int from, int to) : m_from(from), m_to(to) {}

  bool WantsToRead() const { return !m_hasEnded && m_buffer.size() < kMostBuffered; }
  bool WantsToWrite() const { return !m_buffer.empty(); }
  bool IsDone() const { return m_hasEnded && m_buffer.empty(); }

  // False when the connection is broken.
  bool Read() {
    char bytes[16384];
    const ssize_t count = recv(m_from, bytes, sizeof bytes, MSG_DONTWAIT);
    if (count < 0) return errno == EAGAIN || errno == EINTR;
    if (count == 0) {
      m_hasEnded = true;
      if (m_buffer.empty()) shutdown(m_to, SHUT_WR);
    }
    m_buffer.append(bytes, static_cast<size_t>(count));
    return true;
  }

  bool Write() {
    const ssize_t count = send(m_to, m_buffer.data(), m_buffer.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
    if (count < 0) return errno == EAGAIN || errno == EINTR;
    m_buffer.erase(0, static_cast<size_t>(count));
    if (IsDone()) shutdown(m_to, SHUT_WR);
    return true;
  }

 private:
  const int m_from;
  const int m_to;
  std::string m_buffer;
  bool m_hasEnded = false;
};

class Relayed {
 public:
  Relayed(FileDescriptor client, FileDescriptor server)
      : m_client(std::move(client)),
        m_server(std::move(server)),
        m_up(m_client.Get(), m_server.Get()),
        m_down(m_server.Get(), m_client.Get()) {}

  void AppendTo(std::vector<pollfd>& polled) const {
    polled.push_back({m_client.Get(), Events(m_up, m_down), 0});
    polled.push_back({m_server.Get(), Events(m_down, m_up), 0});
  }

  // False when there is nothing more to hand on.
  bool Move(short clientEvents, short serverEvents) {
    return MoveStream(m_up, clientEvents, serverEvents) &&
           MoveStream(m_down, serverEvents, clientEvents) && !m_down.IsDone();
  }

 private:
  static short Events(const Stream& out, const Stream& in) {
    return static_cast<short>((out.WantsToRead() ? POLLIN : 0) | (in.WantsToWrite() ? POLLOUT : 0));
  }
  static bool MoveStream(Stream& stream, short sourceEvents, short targetEvents) {
    if (((sourceEvents | targetEvents) & (POLLERR | POLLNVAL)) != 0) return false;
    if ((sourceEvents & (POLLIN | POLLHUP)) != 0 && stream.WantsToRead() && !stream.Read()) {
      return false;
    }
    return !stream.WantsToWrite() || stream.Write();
  }

  const FileDescriptor m_client;
  const FileDescriptor m_server;
  Stream m_up;
  Stream m_down;
};

}  // namespace

class LoopbackRelay::Worker {
 public:
  Worker(FileDescriptor listener, FileDescriptor stop, uint16_t port)
      : m_listener(std::move(listener)), m_stop(std::move(stop)), m_port(port) {
    m_thread = std::thread([this] { Run(); });
  }
  ~Worker() {
    eventfd_write(m_stop.Get(), 1);
    m_thread.join();
  }
  Worker(const Worker&) = delete;
  Worker& operator=(const Worker&) = delete;

 private:
  void Run() {
    std::list<Relayed> connections;
    std::vector<pollfd> polled;
    for (;;) {
      polled = {{m_stop.Get(), POLLIN, 0}, {m_listener.Get(), POLLIN, 0}};
      for (const Relayed& connection : connections) connection.AppendTo(polled);
      poll(polled.data(), polled.size(), -1);
      if (polled[0].revents != 0) return;
      const pollfd* events = polled.data() + 2;
      for (auto connection = connections.begin(); connection != connections.end(); events += 2) {
        const bool goesOn = connection->Move(events[0].revents, events[1].revents);
        connection = goesOn ? std::next(connection) : connections.erase(connection);
      }
      if (polled[1].revents != 0) Accept(connections);
    }
  }

  void Accept(std::list<Relayed>& connections) {
    FileDescriptor client(accept4(m_listener.Get(), nullptr, nullptr, SOCK_CLOEXEC));
    if (client.Get() < 0) return;
    FileDescriptor server = ConnectTo(m_port);
    if (server.Get() >= 0) connections.emplace_back(std::move(client), std::move(server));
  }

  const FileDescriptor m_listener;
  const FileDescriptor m_stop;
  const uint16_t m_port;
  std::thread m_thread;
};

LoopbackRelay::LoopbackRelay(uint16_t port) {
  FileDescriptor listener = ListenOn(port);
  FileDescriptor stop(eventfd(0, EFD_CLOEXEC));
  if (listener.Get() < 0 || stop.Get() < 0) return;
  m_worker = std::make_unique<Worker>(std::move(listener), std::move(stop), port);
}

LoopbackRelay::~LoopbackRelay() = default;
