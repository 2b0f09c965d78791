#include "net/http_server.h"

#include <atomic>
#include <chrono>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include "net/http_client.h"
#include "tests/loopback_server.h"

namespace {

using namespace std::chrono_literals;

// A connection to the server, by IPv4 or IPv6; -1 when nobody listens.
int Connect(uint16_t port, bool useIp6) {
  const int connection = socket(useIp6 ? AF_INET6 : AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in ip4{};
  ip4.sin_family = AF_INET;
  ip4.sin_port = htons(port);
  ip4.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  sockaddr_in6 ip6{};
  ip6.sin6_family = AF_INET6;
  ip6.sin6_port = htons(port);
  ip6.sin6_addr = in6addr_loopback;
  const int result = useIp6 ? connect(connection, reinterpret_cast<sockaddr*>(&ip6), sizeof ip6)
                            : connect(connection, reinterpret_cast<sockaddr*>(&ip4), sizeof ip4);
  if (result == 0) return connection;
  close(connection);
  return -1;
}

// Sends these bytes and gives all that comes back.
std::string Exchange(uint16_t port, const std::string& request, bool useIp6 = false) {
  const int connection = Connect(port, useIp6);
  if (connection < 0) return "no connection";
  send(connection, request.data(), request.size(), MSG_NOSIGNAL);
  std::string reply;
  char bytes[65536];
  for (ssize_t count; (count = recv(connection, bytes, sizeof bytes, 0)) > 0;) {
    reply.append(bytes, static_cast<size_t>(count));
  }
  close(connection);
  return reply;
}

std::string Request(const std::string& path, const std::string& host) {
  return "GET " + path + " HTTP/1.1\r\nHost: " + host + "\r\n\r\n";
}

std::string Get(const CHttpServer& server, const std::string& path) {
  const uint16_t port = server.Port();
  return Exchange(port, Request(path, "127.0.0.1:" + std::to_string(port)));
}

bool IsForbidden(const std::string& reply) {
  return reply.starts_with("HTTP/1.1 403 Forbidden\r\n") &&
         reply.find("Forbidden", reply.find("\r\n\r\n")) != std::string::npos;
}

// The local addresses, in the system's spelling, on which somebody listens at the port.
std::set<std::string> ListeningAddresses(uint16_t port) {
  std::set<std::string> addresses;
  for (const char* const table : {"/proc/net/tcp", "/proc/net/tcp6"}) {
    std::ifstream file(table);
    std::string line;
    std::getline(file, line);
    while (std::getline(file, line)) {
      std::istringstream fields(line);
      std::string number, local, remote, state;
      fields >> number >> local >> remote >> state;
      const size_t colon = local.find(':');
      if (state == "0A" && std::stoul(local.substr(colon + 1), nullptr, 16) == port) {
        addresses.insert(local.substr(0, colon));
      }
    }
  }
  return addresses;
}

class HttpServer : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(m_server.Start(0), 0u); }
  std::string Host() const { return "127.0.0.1:" + std::to_string(m_server.Port()); }

  CHttpServer m_server;
};

TEST_F(HttpServer, HandsOutABlobOnce) {
  m_server.AddContent("/plan.html", "<p>plan</p>");
  EXPECT_EQ(Get(m_server, "/plan.html"),
            "HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nContent-Length: 11\r\n"
            "Connection: close\r\n\r\n<p>plan</p>");
  EXPECT_TRUE(IsForbidden(Get(m_server, "/plan.html")));
}

TEST_F(HttpServer, RefusesWhatItDoesNotHave) {
  m_server.AddContent("/a/b", "x");
  for (const std::string path : {"/", "/a", "/a/", "/a/b/", "/b", "/../etc/passwd"}) {
    EXPECT_TRUE(IsForbidden(Get(m_server, path))) << path;
  }
  EXPECT_TRUE(Get(m_server, "/a/b").ends_with("\r\n\r\nx"));
}

TEST_F(HttpServer, LaterBlobOfANameWins) {
  m_server.AddContent("/a", "old");
  m_server.AddContent("/a", "new");
  EXPECT_TRUE(Get(m_server, "/a").ends_with("\r\n\r\nnew"));
  EXPECT_TRUE(IsForbidden(Get(m_server, "/a")));
}

TEST_F(HttpServer, NameIsComparedDecoded) {
  m_server.AddContent("/my trip.txt", "x");
  EXPECT_TRUE(Get(m_server, "/my%20trip.txt?query").ends_with("\r\n\r\nx"));
}

TEST_F(HttpServer, MimeTypeGoesByExtension) {
  const auto typeOf = [&](const std::string& path) {
    m_server.AddContent(path, "x");
    const std::string reply = Get(m_server, path);
    const size_t start = reply.find("Content-Type: ") + 14;
    return reply.substr(start, reply.find("\r\n", start) - start);
  };
  EXPECT_EQ(typeOf("/a.png"), "image/png");
  EXPECT_EQ(typeOf("/a.xml"), "text/xml");
  EXPECT_EQ(typeOf("/a.tth"), "text/plain");
}

TEST_F(HttpServer, BodiesMayHoldAnyBytes) {
  std::string bytes;
  for (int i = 0; i < 5'000'000; ++i) bytes += static_cast<char>(i * 7);
  m_server.AddContent("/a.bin", bytes);
  EXPECT_TRUE(Get(m_server, "/a.bin").ends_with("\r\n\r\n" + bytes));
}

TEST_F(HttpServer, ListensOnTheLoopbackOnly) {
  EXPECT_EQ(ListeningAddresses(m_server.Port()),
            (std::set<std::string>{"0100007F", "00000000000000000000000001000000"}));
}

TEST_F(HttpServer, AnswersOnBothLoopbackAddresses) {
  const std::string port = std::to_string(m_server.Port());
  std::string bytes(3'000'000, 'y');
  m_server.AddContent("/a", bytes);
  EXPECT_TRUE(Exchange(m_server.Port(), Request("/a", "[::1]:" + port), true)
                  .ends_with("\r\n\r\n" + bytes));
  EXPECT_TRUE(IsForbidden(Exchange(m_server.Port(), Request("/a", "[::1]:" + port), true)));
}

TEST_F(HttpServer, RefusesRequestsMadeOutToOthers) {
  const std::string port = std::to_string(m_server.Port());
  m_server.AddContent("/a", "secret");
  for (const std::string& host : {"evil.example:" + port, std::string("evil.example"),
                                  std::string("127.0.0.1"), "127.0.0.1.evil.example:" + port,
                                  std::string("127.0.0.1:1"), "localhost:" + port, std::string()}) {
    const std::string reply = Exchange(m_server.Port(), Request("/a", host));
    EXPECT_EQ(reply.find("secret"), std::string::npos) << host;
    EXPECT_EQ(reply.find(" 200 "), std::string::npos) << host;
  }
  EXPECT_TRUE(Get(m_server, "/a").ends_with("secret"));
}

TEST_F(HttpServer, TakenPortIsAStatus) {
  CHttpServer second;
  EXPECT_EQ(second.Start(m_server.Port()), 10048u);
  EXPECT_EQ(second.Port(), 0u);
  m_server.AddContent("/a", "x");
  EXPECT_TRUE(Get(m_server, "/a").ends_with("\r\n\r\nx"));
}

TEST_F(HttpServer, ServesAHundredAtOnce) {
  for (int i = 0; i < 100; ++i) {
    m_server.AddContent("/" + std::to_string(i), "body " + std::to_string(i));
  }
  std::atomic<int> right = 0;
  std::vector<std::thread> clients;
  for (int i = 0; i < 100; ++i) {
    clients.emplace_back([&, i] {
      const bool useIp6 = i % 2 == 1;
      const std::string host = (useIp6 ? "[::1]:" : "127.0.0.1:") + std::to_string(m_server.Port());
      const std::string reply =
          Exchange(m_server.Port(), Request("/" + std::to_string(i), host), useIp6);
      if (reply.ends_with("\r\n\r\nbody " + std::to_string(i))) ++right;
    });
  }
  for (std::thread& client : clients) client.join();
  EXPECT_EQ(right, 100);
}

TEST_F(HttpServer, OneOfManyGetsTheBlob) {
  m_server.AddContent("/a", "x");
  std::atomic<int> served = 0;
  std::atomic<int> refused = 0;
  std::vector<std::thread> clients;
  for (int i = 0; i < 20; ++i) {
    clients.emplace_back([&] {
      const std::string reply = Get(m_server, "/a");
      if (reply.ends_with("\r\n\r\nx")) ++served;
      if (IsForbidden(reply)) ++refused;
    });
  }
  for (std::thread& client : clients) client.join();
  EXPECT_EQ(served, 1);
  EXPECT_EQ(refused, 19);
}

// Clients that hold on to their connections: one that says nothing, one in the middle of its
// request, one that does not read, by both addresses.
TEST_F(HttpServer, TellsWhenAllHasBeenFetched) {
  EXPECT_TRUE(m_server.WaitUntilFetched(std::chrono::milliseconds(0)));
  m_server.AddContent("/a", "one");
  m_server.AddContent("/b", std::string(5'000'000, 'x'));
  EXPECT_TRUE(Get(m_server, "/a").ends_with("one"));
  EXPECT_TRUE(IsForbidden(Get(m_server, "/c")));
  EXPECT_FALSE(m_server.WaitUntilFetched(std::chrono::milliseconds(20)));
  std::string body;
  std::thread client([&] { body = Get(m_server, "/b"); });
  EXPECT_TRUE(m_server.WaitUntilFetched(std::chrono::seconds(20)));
  client.join();
  EXPECT_EQ(body.size() - body.find("\r\n\r\n") - 4, 5'000'000u);
}

TEST_F(HttpServer, WhatIsTakenBackIsNotWaitedFor) {
  m_server.AddContent("/a", "text");
  std::thread owner([this] {
    std::this_thread::sleep_for(50ms);
    m_server.RemoveContent("/b");
    m_server.RemoveContent("/a");
  });
  EXPECT_TRUE(m_server.WaitUntilFetched(std::chrono::seconds(20)));
  owner.join();
  EXPECT_TRUE(Get(m_server, "/a").starts_with("HTTP/1.1 403 "));
}

TEST(HttpServerEnd, IsQuickWhateverClientsDo) {
  std::vector<int> clients;
  std::chrono::steady_clock::time_point start;
  {
    CHttpServer server;
    ASSERT_EQ(server.Start(0), 0u);
    server.AddContent("/a", std::string(50'000'000, 'x'));
    server.AddContent("/b", std::string(50'000'000, 'x'));
    for (const bool useIp6 : {false, true}) {
      for (const std::string& request :
           {std::string(), std::string("GET / HT"),
            Request(useIp6 ? "/a" : "/b", "127.0.0.1:" + std::to_string(server.Port()))}) {
        clients.push_back(Connect(server.Port(), useIp6));
        send(clients.back(), request.data(), request.size(), MSG_NOSIGNAL);
      }
    }
    std::this_thread::sleep_for(300ms);
    start = std::chrono::steady_clock::now();
  }
  EXPECT_LT(std::chrono::steady_clock::now() - start, 1s);
  for (const int client : clients) close(client);
}

TEST(HttpServerEnd, FreesThePort) {
  uint16_t port = 0;
  {
    CHttpServer server;
    ASSERT_EQ(server.Start(0), 0u);
    port = server.Port();
    Get(server, "/");
  }
  EXPECT_EQ(ListeningAddresses(port), std::set<std::string>());
  CHttpServer second;
  EXPECT_EQ(second.Start(port), 0u);
}

}  // namespace
