// Any bytes as what a client sends to the local server. "PORT" in them becomes the server's own.
// Whatever comes, the client gets a reply or the end of the connection in bounded time, and what
// was offered goes only to those who asked for it under this machine's own address.

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include "net/http_server.h"

namespace {

constexpr char kOffered[] = "what only those who are meant may fetch";

void Expect(bool holds) {
  if (!holds) std::abort();
}

CHttpServer& RunningServer() {
  static CHttpServer* const server = [] {
    auto* const started = new CHttpServer;
    Expect(started->Start(0) == 0);
    return started;
  }();
  return *server;
}

std::string WithPort(std::string text, const std::string& port) {
  constexpr std::string_view kMark = "PORT";
  for (size_t at = text.find(kMark); at != std::string::npos; at = text.find(kMark, at))
    text.replace(at, kMark.size(), port);
  return text;
}

// The system keeps the port of an ended connection for a minute: one address of the loopback
// network after the other, since the ports of a single one are soon used up.
uint32_t NextClientAddress() {
  constexpr uint32_t kAddresses = 1000;
  static uint32_t count = 0;
  return INADDR_LOOPBACK + 1 + count++ % kAddresses;
}

// A socket that is not connected yet.
int OpenClient() {
  const int client = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const int choosesPortLater = 1;
  setsockopt(client, IPPROTO_IP, IP_BIND_ADDRESS_NO_PORT, &choosesPortLater,
             sizeof choosesPortLater);
  const timeval patience{10, 0};
  setsockopt(client, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
  sockaddr_in own{};
  own.sin_family = AF_INET;
  own.sin_addr.s_addr = htonl(NextClientAddress());
  Expect(bind(client, reinterpret_cast<const sockaddr*>(&own), sizeof own) == 0);
  return client;
}

int Connect(uint16_t port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  for (;;) {
    const int client = OpenClient();
    if (connect(client, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0)
      return client;
    const bool isByTheFuzzersClock = errno == EINTR;
    if (!isByTheFuzzersClock) {
      std::perror("no connection");
      std::abort();
    }
    close(client);
  }
}

// Sends all and gives what comes back until the server closes.
std::string Exchange(uint16_t port, const std::string& request) {
  const int client = Connect(port);
  size_t sent = 0;
  while (sent < request.size()) {
    const ssize_t count = send(client, request.data() + sent, request.size() - sent, MSG_NOSIGNAL);
    if (count <= 0) break;
    sent += static_cast<size_t>(count);
  }
  shutdown(client, SHUT_WR);
  std::string reply;
  char bytes[4096];
  for (;;) {
    const ssize_t count = recv(client, bytes, sizeof bytes, 0);
    if (count < 0 && errno == EINTR) continue;  // the fuzzer's clock
    if (count < 0 && errno != ECONNRESET) {
      std::perror("no answer in all that time");
      std::abort();
    }
    if (count <= 0) break;
    reply.append(bytes, static_cast<size_t>(count));
  }
  close(client);
  return reply;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  CHttpServer& server = RunningServer();
  const std::string port = std::to_string(server.Port());
  const std::string request = WithPort({reinterpret_cast<const char*>(data), size}, port);
  server.AddContent("/trip.xml", kOffered);
  const std::string reply = Exchange(server.Port(), request);
  Expect(reply.empty() || reply.starts_with("HTTP/"));
  const bool isForUs = request.find("127.0.0.1:" + port) != std::string::npos ||
                       request.find("[::1]:" + port) != std::string::npos;
  Expect(isForUs || reply.find(kOffered) == std::string::npos);
  return 0;
}
