#pragma once

#include <algorithm>
#include <atomic>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <functional>
#include <list>
#include <mutex>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

/// One client of a `LoopbackServer`, as a server sees it.
class LoopbackConnection {
 public:
  LoopbackConnection(int socket, const std::atomic<bool>& isStopping)
      : m_socket(socket), m_isStopping(isStopping) {}

  /// The bytes of the next request, headers and body (by its Content-Length); empty when the client
  /// has closed or the server stops.
  std::string ReadRequest() {
    for (;;) {
      const size_t head = m_unread.find("\r\n\r\n");
      if (head != std::string::npos) {
        const size_t size = head + 4 + BodyLength(m_unread.substr(0, head + 2));
        if (m_unread.size() >= size) {
          std::string request = m_unread.substr(0, size);
          m_unread.erase(0, size);
          return request;
        }
      }
      char bytes[65536];
      const ssize_t count = recv(m_socket, bytes, sizeof bytes, 0);
      if (count <= 0) return {};
      m_unread.append(bytes, static_cast<size_t>(count));
    }
  }

  /// False when the client has gone.
  bool Send(std::string_view bytes) {
    while (!bytes.empty()) {
      const ssize_t count = send(m_socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
      if (count <= 0) return false;
      bytes.remove_prefix(static_cast<size_t>(count));
    }
    return true;
  }

  /// False as soon as the server stops.
  bool Sleep(std::chrono::milliseconds time) {
    const auto end = std::chrono::steady_clock::now() + time;
    while (!m_isStopping && std::chrono::steady_clock::now() < end) {
      std::this_thread::sleep_for(std::min(time, std::chrono::milliseconds(5)));
    }
    return !m_isStopping;
  }

  /// Waits until the client closes or the server stops.
  void WaitForEnd() {
    char byte = 0;
    while (recv(m_socket, &byte, 1, 0) > 0) {
    }
  }

  bool IsStopping() const { return m_isStopping; }

 private:
  static size_t BodyLength(const std::string& head) {
    constexpr std::string_view kName = "\r\nContent-Length: ";
    const size_t found = head.find(kName);
    if (found == std::string::npos) return 0;
    size_t length = 0;
    std::from_chars(head.data() + found + kName.size(), head.data() + head.size(), length);
    return length;
  }

  int m_socket;
  const std::atomic<bool>& m_isStopping;
  std::string m_unread;
};

/// A reply with this body, to be sent as it is.
inline std::string HttpReply(std::string_view body, std::string_view status = "200 OK",
                             std::string_view moreHeaders = "") {
  return "HTTP/1.1 " + std::string(status) + "\r\nContent-Length: " + std::to_string(body.size()) +
         "\r\n" + std::string(moreHeaders) + "\r\n" + std::string(body);
}

/// A server on a free port of 127.0.0.1, for one test. It serves every client on a thread of its
/// own and is gone, with all of them, when it is destroyed.
class LoopbackServer {
 public:
  /// Gets the bytes of a request and gives those of the reply, behind which the connection is
  /// closed. Called from several threads at once when there are several clients.
  using Answer = std::function<std::string(const std::string& request)>;
  /// Does all the talking with one client; the connection is closed behind it.
  using Talk = std::function<void(LoopbackConnection& connection)>;

  explicit LoopbackServer(Answer answer)
      : LoopbackServer(Talk([this, answer = std::move(answer)](LoopbackConnection& connection) {
          const std::string request = connection.ReadRequest();
          if (request.empty()) return;
          Note(request);
          connection.Send(answer(request));
        })) {}

  explicit LoopbackServer(Talk talk) : m_talk(std::move(talk)) {
    m_listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    const auto generic = reinterpret_cast<sockaddr*>(&address);
    if (bind(m_listener, generic, size) != 0 || listen(m_listener, 512) != 0 ||
        getsockname(m_listener, generic, &size) != 0) {
      throw std::runtime_error("no port on the loopback");
    }
    m_port = ntohs(address.sin_port);
    m_accepting = std::thread([this] { Accept(); });
  }

  ~LoopbackServer() {
    m_isStopping = true;
    m_accepting.join();
    close(m_listener);
    {
      const std::lock_guard lock(m_mutex);
      for (const Client& client : m_clients) shutdown(client.socket, SHUT_RDWR);
    }
    for (Client& client : m_clients) End(client);
  }
  LoopbackServer(const LoopbackServer&) = delete;
  LoopbackServer& operator=(const LoopbackServer&) = delete;

  uint16_t Port() const { return m_port; }
  /// "127.0.0.1:PORT"
  std::string Address() const { return "127.0.0.1:" + std::to_string(m_port); }
  /// "http://127.0.0.1:PORT" and `path`, which begins with a slash.
  std::string Url(std::string_view path = "") const {
    return "http://" + Address() + std::string(path);
  }

  /// The bytes of all requests that were answered so far, in the order in which they came.
  std::vector<std::string> Requests() const {
    const std::lock_guard lock(m_mutex);
    return m_requests;
  }
  /// For the servers that talk: adds to `Requests`.
  void Note(const std::string& request) {
    const std::lock_guard lock(m_mutex);
    m_requests.push_back(request);
  }

  /// How many clients have connected so far.
  int Connections() const { return m_connections; }

 private:
  struct Client {
    int socket = -1;
    std::atomic<bool> isDone = false;
    std::thread thread;
  };

  void Accept() {
    while (!m_isStopping) {
      pollfd waiting{m_listener, POLLIN, 0};
      if (poll(&waiting, 1, 10) <= 0) continue;
      const int accepted = accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
      if (accepted < 0) continue;
      ++m_connections;
      const std::lock_guard lock(m_mutex);
      m_clients.remove_if([](Client& client) {
        if (!client.isDone) return false;
        End(client);
        return true;
      });
      Client& client = m_clients.emplace_back();
      client.socket = accepted;
      client.thread = std::thread([this, &client] {
        LoopbackConnection connection(client.socket, m_isStopping);
        m_talk(connection);
        shutdown(client.socket, SHUT_WR);
        connection.WaitForEnd();  // closing with unread bytes would take the reply back
        shutdown(client.socket, SHUT_RDWR);
        client.isDone = true;
      });
    }
  }

  static void End(Client& client) {
    client.thread.join();
    close(client.socket);
  }

  const Talk m_talk;
  int m_listener = -1;
  uint16_t m_port = 0;
  std::atomic<bool> m_isStopping = false;
  std::atomic<int> m_connections = 0;
  std::thread m_accepting;
  mutable std::mutex m_mutex;  ///< guards what follows
  std::list<Client> m_clients;
  std::vector<std::string> m_requests;
};
