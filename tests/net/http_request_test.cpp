// What goes out: the bytes that a server gets.

#include <mutex>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "net/http_client.h"
#include "tests/loopback_server.h"

namespace {

using Strings = std::vector<std::string>;

const LoopbackServer::Answer kOk = [](const std::string&) { return HttpReply("ok"); };
constexpr const char* kAgentAndAccept =
    "User-Agent: Mozilla/5.0 (compatible; MSIE 9.0; Win32)\r\nAccept: */*\r\n";

WideString Wide(const std::string& text) { return {text.begin(), text.end()}; }

// The code of what the action throws; 0 when it throws nothing.
template <typename Action>
uint32_t CodeOf(Action&& action) {
  try {
    action();
  } catch (const CInternetException& failure) {
    return failure.code;
  }
  return 0;
}

TEST(HttpRequestBytes, GetSendsThreeHeaders) {
  LoopbackServer server(kOk);
  EXPECT_EQ(HttpGet(Wide(server.Url("/a/b?c=d"))), "ok");
  EXPECT_EQ(server.Requests(), Strings{std::string("GET /a/b?c=d HTTP/1.1\r\n") + kAgentAndAccept +
                                       "Host: " + server.Address() + "\r\n\r\n"});
}

TEST(HttpRequestBytes, RefererFollowsTheHost) {
  LoopbackServer server(kOk);
  HttpGet(Wide(server.Url("/")), "http://maps.example/page");
  EXPECT_EQ(server.Requests(),
            Strings{std::string("GET / HTTP/1.1\r\n") + kAgentAndAccept +
                    "Host: " + server.Address() + "\r\nReferer: http://maps.example/page\r\n\r\n"});
}

TEST(HttpRequestBytes, PostSendsItsLengthAndNothingElse) {
  LoopbackServer server(kOk);
  StringSink sink;
  EXPECT_EQ(HttpFetch(sink, Wide(server.Url("/post")), "{\"a\":1}"), 2u);
  EXPECT_EQ(sink.Bytes(), "ok");
  EXPECT_EQ(server.Requests(),
            Strings{std::string("POST /post HTTP/1.1\r\n") + kAgentAndAccept +
                    "Host: " + server.Address() + "\r\nContent-Length: 7\r\n\r\n{\"a\":1}"});
}

TEST(HttpRequestBytes, LargePostWaitsForNobody) {
  LoopbackServer server(kOk);
  StringSink sink;
  const std::string data(3'000'000, 'x');
  HttpFetch(sink, Wide(server.Url("/")), data);
  EXPECT_EQ(server.Requests(),
            Strings{std::string("POST / HTTP/1.1\r\n") + kAgentAndAccept +
                    "Host: " + server.Address() + "\r\nContent-Length: 3000000\r\n\r\n" + data});
}

TEST(HttpRequestBytes, PostHoldsZeroBytes) {
  LoopbackServer server(kOk);
  StringSink sink;
  HttpFetch(sink, Wide(server.Url("/")), std::string("a\0b", 3));
  ASSERT_EQ(server.Requests().size(), 1u);
  EXPECT_TRUE(server.Requests()[0].ends_with(std::string("\r\n\r\na\0b", 7)));
}

TEST(HttpRequestBytes, HostCanBeAnother) {
  LoopbackServer server(kOk);
  HttpGet(Wide(server.Url("/")), "", "maps.example");
  EXPECT_EQ(server.Requests(), Strings{std::string("GET / HTTP/1.1\r\n") + kAgentAndAccept +
                                       "Host: maps.example\r\n\r\n"});
}

TEST(HttpRequestBytes, ServicesOfOursSayWhoTheyAreAndAddHeaders) {
  LoopbackServer server(kOk);
  StringSink sink;
  HttpOptions options;
  options.userAgent = "Corvane Map 1.21";
  HttpFetch(sink, Wide(server.Url("/v2")), "{}", "", "", options,
            {{"X-Key", "secret"}, {"Content-Type", "application/json"}});
  EXPECT_EQ(server.Requests(),
            Strings{"POST /v2 HTTP/1.1\r\nUser-Agent: Corvane Map 1.21\r\nAccept: */*\r\nHost: " +
                    server.Address() +
                    "\r\nX-Key: secret\r\nContent-Type: application/json\r\n"
                    "Content-Length: 2\r\n\r\n{}"});
}

TEST(HttpRequestBytes, AddressWithoutSchemeIsPlainHttp) {
  LoopbackServer server(kOk);
  EXPECT_EQ(HttpGet(Wide(server.Address() + "/x")), "ok");
}

TEST(HttpRequestBytes, AddressWithoutPathAsksForTheRoot) {
  LoopbackServer server(kOk);
  HttpGet(Wide(server.Url()));
  ASSERT_EQ(server.Requests().size(), 1u);
  EXPECT_TRUE(server.Requests()[0].starts_with("GET / HTTP/1.1\r\n"));
}

TEST(HttpRequestBytes, PlainTextIsEscapedOnce) {
  LoopbackServer server(kOk);
  HttpGet(Wide(server.Url("/Orl")) + u"\u00E9ans a%20b?q=[1]|2");
  ASSERT_EQ(server.Requests().size(), 1u);
  EXPECT_TRUE(
      server.Requests()[0].starts_with("GET /Orl%C3%A9ans%20a%20b?q=%5B1%5D%7C2 HTTP/1.1\r\n"));
}

TEST(HttpRequestBytes, PathGoesOutAsItIs) {
  LoopbackServer server(kOk);
  CHttpClient client;
  StringSink sink;
  client.Start(sink, server.Url("/a/../b/./c//d?x=%2e%2E&y=a|b#part"));
  client.Wait(kWaitForever);
  ASSERT_EQ(server.Requests().size(), 1u);
  EXPECT_TRUE(server.Requests()[0].starts_with("GET /a/../b/./c//d?x=%2e%2E&y=a|b HTTP/1.1\r\n"));
}

TEST(HttpRequestBytes, CookiesAreNotSentBack) {
  std::mutex mutex;
  Strings requests;
  LoopbackServer server(LoopbackServer::Talk([&](LoopbackConnection& connection) {
    for (std::string request; !(request = connection.ReadRequest()).empty();) {
      const std::lock_guard lock(mutex);
      requests.push_back(request);
      connection.Send(HttpReply("ok", "200 OK", "Set-Cookie: a=b\r\n"));
    }
  }));
  CHttpClient client;
  for (int i = 0; i < 2; ++i) {
    StringSink sink;
    client.Start(sink, server.Url("/"));
    client.Wait(kWaitForever);
  }
  const std::lock_guard lock(mutex);
  ASSERT_EQ(requests.size(), 2u);
  EXPECT_EQ(requests[0], requests[1]);
  EXPECT_EQ(requests[1].find("Cookie"), std::string::npos);
}

TEST(HttpRequestBytes, OneClientKeepsItsConnection) {
  LoopbackServer server(LoopbackServer::Talk([](LoopbackConnection& connection) {
    while (!connection.ReadRequest().empty()) connection.Send(HttpReply("ok"));
  }));
  CHttpClient client;
  for (int i = 0; i < 3; ++i) {
    StringSink sink;
    client.Start(sink, server.Url("/"));
    EXPECT_TRUE(client.Wait(kWaitForever));
    EXPECT_EQ(sink.Bytes(), "ok");
  }
  EXPECT_EQ(server.Connections(), 1);
  HttpGet(Wide(server.Url("/")));
  HttpGet(Wide(server.Url("/")));
  EXPECT_EQ(server.Connections(), 3);
}

TEST(HttpRequestBytes, NothingBreaksOutOfAHeader) {
  LoopbackServer server(kOk);
  const WideString url = Wide(server.Url("/"));
  EXPECT_EQ(CodeOf([&] { HttpGet(url, "a\r\nX: y"); }), 87u);
  EXPECT_EQ(CodeOf([&] { HttpGet(url, "", "a\nb"); }), 87u);
  EXPECT_EQ(CodeOf([&] { HttpGet(url, "", "", {}, {{"X", "a\r\nb"}}); }), 87u);
  EXPECT_EQ(CodeOf([&] { HttpGet(url, "", "", {}, {{"X: y\r\nZ", "a"}}); }), 87u);
  CHttpClient client;
  StringSink sink;
  EXPECT_EQ(CodeOf([&] { client.Start(sink, server.Url("/a HTTP/1.1\r\nX: y")); }), 12005u);
  EXPECT_TRUE(server.Requests().empty());
}

TEST(HttpRequestBytes, BadAddressesNeverLeave) {
  EXPECT_EQ(CodeOf([] { HttpGet(u""); }), 12005u);
  EXPECT_EQ(CodeOf([] { HttpGet(u"http://"); }), 12005u);
  EXPECT_EQ(CodeOf([] { HttpGet(u"http://host:port/"); }), 12005u);
  EXPECT_EQ(CodeOf([] { HttpGet(u"http://host:99999999999/"); }), 12005u);
  EXPECT_EQ(CodeOf([] { HttpGet(u"http://user@127.0.0.1/"); }), 12005u);
  EXPECT_EQ(CodeOf([] { HttpGet(u"http://127.0.0.1?a=b"); }), 12005u);
  EXPECT_EQ(CodeOf([] { HttpGet(u"mailto:somebody"); }), 12005u);
  EXPECT_EQ(CodeOf([] { HttpGet(u"ftp://127.0.0.1/"); }), 12006u);
  EXPECT_EQ(CodeOf([] { HttpGet(u"file:///etc/passwd"); }), 12006u);
}

}  // namespace
