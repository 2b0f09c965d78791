#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "net/http_client.h"
#include "tests/loopback_server.h"

namespace {

using Strings = std::vector<std::string>;

WideString Wide(const std::string& text) { return {text.begin(), text.end()}; }

std::string Redirect(const std::string& target, const std::string& status = "302 Found") {
  return HttpReply("you are being redirected", status, "Location: " + target + "\r\n");
}

uint32_t CodeOfGet(const std::string& url) {
  try {
    HttpGet(Wide(url));
  } catch (const CInternetException& failure) {
    return failure.code;
  }
  return 0;
}

// "GET /path" of a request.
std::string Asked(const std::string& request) { return request.substr(0, request.find(" HTTP")); }

bool Has(const std::string& request, const std::string& line) {
  return request.find("\r\n" + line + "\r\n") != std::string::npos;
}

// Sends every request for /0 to /1, for /1 to /2 and so on, and answers one for /`last`.
LoopbackServer::Answer Stairs(int last) {
  return [last](const std::string& request) {
    const int step = std::stoi(request.substr(request.find('/') + 1));
    return step == last ? HttpReply("arrived") : Redirect("/" + std::to_string(step + 1));
  };
}

TEST(HttpRedirects, OnlyTheLastReplyHasABody) {
  LoopbackServer server(Stairs(1));
  StringSink sink;
  EXPECT_EQ(HttpFetch(sink, Wide(server.Url("/0"))), 7u);
  EXPECT_EQ(sink.Bytes(), "arrived");
}

TEST(HttpRedirects, TenAreFollowed) {
  LoopbackServer server(Stairs(10));
  EXPECT_EQ(HttpGet(Wide(server.Url("/0"))), "arrived");
  EXPECT_EQ(server.Requests().size(), 11u);
}

TEST(HttpRedirects, ElevenAreTooMany) {
  LoopbackServer server(Stairs(11));
  EXPECT_EQ(CodeOfGet(server.Url("/0")), 12156u);
  EXPECT_EQ(server.Requests().size(), 11u);
}

TEST(HttpRedirects, EndlessOnesEnd) {
  LoopbackServer server([](const std::string&) { return Redirect("/"); });
  EXPECT_EQ(CodeOfGet(server.Url("/")), 12156u);
}

TEST(HttpRedirects, EndlessBodyOfOneIsNotRead) {
  LoopbackServer server(LoopbackServer::Talk([](LoopbackConnection& connection) {
    const std::string request = connection.ReadRequest();
    if (request.starts_with("GET /end")) {
      connection.Send(HttpReply("arrived"));
      return;
    }
    connection.Send("HTTP/1.1 302 Found\r\nLocation: /end\r\n\r\n");
    while (connection.Send(std::string(10'000, 'x'))) {
    }
  }));
  EXPECT_EQ(HttpGet(Wide(server.Url("/"))), "arrived");
}

TEST(HttpRedirects, TargetIsTakenAsALink) {
  for (const auto& [target, path] :
       std::vector<std::pair<std::string, std::string>>{{"c?d", "/a/c?d"},
                                                        {"../c", "/c"},
                                                        {"/c", "/c"},
                                                        {"?q", "/a/b?q"},
                                                        {"c d", "/a/c%20d"}}) {
    LoopbackServer server([target = target](const std::string& request) {
      return Asked(request) == "GET /a/b" ? Redirect(target) : HttpReply("ok");
    });
    EXPECT_EQ(HttpGet(Wide(server.Url("/a/b"))), "ok") << target;
    EXPECT_EQ(Asked(server.Requests().back()), "GET " + path);
  }
}

TEST(HttpRedirects, OtherSchemesAreNotFollowed) {
  for (const std::string target :
       {"file:///etc/passwd", "ftp://127.0.0.1/", "gopher://127.0.0.1/"}) {
    LoopbackServer server([&](const std::string&) { return Redirect(target); });
    EXPECT_EQ(CodeOfGet(server.Url("/")), 12006u) << target;
  }
}

TEST(HttpRedirects, HeadersKeepTheirOrder) {
  LoopbackServer target([](const std::string&) { return HttpReply("ok"); });
  LoopbackServer server([&](const std::string&) { return Redirect(target.Url("/there")); });
  EXPECT_EQ(HttpGet(Wide(server.Url("/")), "http://page.example/"), "ok");
  EXPECT_EQ(
      target.Requests(),
      Strings{"GET /there HTTP/1.1\r\n"
              "User-Agent: Mozilla/5.0 (compatible; MSIE 9.0; Win32)\r\nAccept: */*\r\nHost: " +
              target.Address() + "\r\nReferer: http://page.example/\r\n\r\n"});
}

TEST(HttpRedirects, KeysStayWithTheirServer) {
  LoopbackServer other([](const std::string&) { return HttpReply("ok"); });
  LoopbackServer server([&](const std::string& request) {
    return Asked(request) == "GET /0" ? Redirect("/1") : Redirect(other.Url("/2"));
  });
  HttpGet(Wide(server.Url("/0")), "", "maps.example", {}, {{"X-Key", "secret"}});
  ASSERT_EQ(server.Requests().size(), 2u);
  EXPECT_TRUE(Has(server.Requests()[1], "X-Key: secret"));
  EXPECT_TRUE(Has(server.Requests()[1], "Host: maps.example"));
  ASSERT_EQ(other.Requests().size(), 1u);
  EXPECT_EQ(other.Requests()[0].find("secret"), std::string::npos);
  EXPECT_TRUE(Has(other.Requests()[0], "Host: " + other.Address()));
}

TEST(HttpRedirects, ServerCannotMakeUsLogIn) {
  LoopbackServer server([](const std::string& request) {
    if (Asked(request) != "GET /") return HttpReply("ok");
    const size_t host = request.find("Host: ") + 6;
    return Redirect("http://user:word@" + request.substr(host, request.find("\r\n", host) - host) +
                    "/in");
  });
  EXPECT_EQ(HttpGet(Wide(server.Url("/"))), "ok");
  EXPECT_EQ(server.Requests()[1].find("Authorization"), std::string::npos);
}

TEST(HttpRedirects, PostBecomesGetUnlessToldOtherwise) {
  for (const auto& [status, method] :
       std::vector<std::pair<std::string, std::string>>{{"301 Moved Permanently", "GET"},
                                                        {"302 Found", "GET"},
                                                        {"303 See Other", "GET"},
                                                        {"307 Temporary Redirect", "POST"},
                                                        {"308 Permanent Redirect", "POST"}}) {
    LoopbackServer server([status = status](const std::string& request) {
      return Asked(request) == "POST /" ? Redirect("/next", status) : HttpReply("ok");
    });
    StringSink sink;
    HttpFetch(sink, Wide(server.Url("/")), "data");
    const std::string last = server.Requests().back();
    EXPECT_EQ(Asked(last), method + " /next") << status;
    EXPECT_EQ(last.ends_with("\r\nContent-Length: 4\r\n\r\ndata"), method == "POST") << last;
  }
}

TEST(HttpRedirects, WithoutATargetItIsABody) {
  LoopbackServer server([](const std::string&) { return HttpReply("where?", "302 Found"); });
  EXPECT_EQ(HttpGet(Wide(server.Url("/"))), "where?");
}

TEST(HttpRedirects, OtherStatusWithATargetIsABody) {
  LoopbackServer server([](const std::string&) { return Redirect("/x", "201 Created"); });
  EXPECT_EQ(HttpGet(Wide(server.Url("/"))), "you are being redirected");
}

TEST(HttpRedirects, BrokenBodyOfOneDoesNotMatter) {
  for (const std::string body : {"Content-Length: 10\r\n\r\n", "Content-Length: 10\r\n\r\nhalf",
                                 "Transfer-Encoding: chunked\r\n\r\n"}) {
    LoopbackServer server([&body](const std::string& request) {
      return Asked(request) == "GET /end" ? HttpReply("arrived")
                                          : "HTTP/1.1 302 Found\r\nLocation: /end\r\n" + body;
    });
    EXPECT_EQ(HttpGet(Wide(server.Url("/"))), "arrived") << body;
  }
}

}  // namespace
