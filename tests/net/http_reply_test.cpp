// What comes back, from servers that behave and from those that don't.

#include <atomic>
#include <chrono>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "net/http_client.h"
#include "tests/loopback_server.h"

namespace {

using namespace std::chrono_literals;
using Talk = LoopbackServer::Talk;

WideString Wide(const std::string& text) { return {text.begin(), text.end()}; }

struct Outcome {
  uint32_t code = 0;
  std::string body;
  uint32_t httpStatus = 0;
  bool operator==(const Outcome&) const = default;
};
void PrintTo(const Outcome& outcome, std::ostream* stream) {
  *stream << outcome.code << " \"" << outcome.body.substr(0, 100) << "\" " << outcome.httpStatus;
}

Outcome Ask(const std::string& url, const HttpOptions& options = {}) {
  Outcome outcome;
  StringSink sink;
  CHttpClient client(options);
  try {
    client.Start(sink, url);
    client.Wait(kWaitForever);
  } catch (const CInternetException& failure) {
    outcome.code = failure.code;
  }
  outcome.body = sink.Bytes();
  outcome.httpStatus = client.Request().HttpStatus();
  EXPECT_EQ(client.Request().TotalRead(), outcome.body.size());
  return outcome;
}

Outcome AskServerThatSends(const std::string& bytes, const HttpOptions& options = {}) {
  LoopbackServer server([&](const std::string&) { return bytes; });
  return Ask(server.Url("/"), options);
}

HttpOptions Impatient() {
  HttpOptions options;
  options.idleTimeoutMs = 200;
  return options;
}

TEST(HttpReplies, BodyOfEveryStatusIsABody) {
  EXPECT_EQ(AskServerThatSends(HttpReply("<p>no</p>", "500 Internal Server Error")),
            (Outcome{0, "<p>no</p>", 500}));
  EXPECT_EQ(AskServerThatSends(HttpReply("gone", "404 Not Found")), (Outcome{0, "gone", 404}));
  EXPECT_EQ(AskServerThatSends(
                HttpReply("who?", "401 Unauthorized", "WWW-Authenticate: Basic realm=\"x\"\r\n")),
            (Outcome{0, "who?", 401}));
}

TEST(HttpReplies, EmptyBodyIsEmpty) {
  EXPECT_EQ(AskServerThatSends(HttpReply("")), (Outcome{0, "", 200}));
  EXPECT_EQ(AskServerThatSends("HTTP/1.1 204 No Content\r\n\r\n"), (Outcome{0, "", 204}));
  LoopbackServer server([](const std::string&) { return HttpReply(""); });
  EXPECT_EQ(HttpGet(Wide(server.Url("/"))), "");
}

TEST(HttpReplies, BodyWithoutLengthEndsWithTheConnection) {
  EXPECT_EQ(AskServerThatSends("HTTP/1.0 200 OK\r\n\r\nall of it"), (Outcome{0, "all of it", 200}));
}

TEST(HttpReplies, ChunksAreJoined) {
  EXPECT_EQ(
      AskServerThatSends("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"
                         "5\r\nhello\r\n1;x=y\r\n \r\n5\r\nworld\r\n0\r\nLocation: /x\r\n\r\n"),
      (Outcome{0, "hello world", 200}));
}

TEST(HttpReplies, ZeroBytesAndOthersPassUnchanged) {
  std::string bytes;
  for (int i = 0; i < 1024; ++i) bytes += static_cast<char>(i);
  EXPECT_EQ(AskServerThatSends(HttpReply(bytes)).body, bytes);
}

TEST(HttpReplies, CompressedBodyIsNotUnpacked) {
  EXPECT_EQ(AskServerThatSends(HttpReply("\x1F\x8B", "200 OK", "Content-Encoding: gzip\r\n")),
            (Outcome{0, "\x1F\x8B", 200}));
}

TEST(HttpReplies, ShortBodyIsABrokenConnection) {
  EXPECT_EQ(AskServerThatSends("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nhalf"),
            (Outcome{12030, "half", 200}));
  EXPECT_EQ(AskServerThatSends("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nhel"),
            (Outcome{12030, "hel", 200}));
}

TEST(HttpReplies, LengthThatIsNoneIsAnInvalidReply) {
  for (const char* const length : {"-1", "x"}) {
    const std::string reply =
        std::string("HTTP/1.1 200 OK\r\nContent-Length: ") + length + "\r\n\r\nhalf";
    EXPECT_EQ(AskServerThatSends(reply).code, 12152u) << length;
  }
}

TEST(HttpReplies, LengthThatNoBodyHasIsNone) {
  EXPECT_EQ(
      AskServerThatSends("HTTP/1.1 200 OK\r\nContent-Length: 99999999999999999999\r\n\r\nall"),
      (Outcome{0, "all", 200}));
}

// What comes along with a reply behind its end must not become the next one.
TEST(HttpReplies, BodyEndsWhereItsLengthSays) {
  LoopbackServer server(Talk([](LoopbackConnection& connection) {
    while (!connection.ReadRequest().empty())
      connection.Send("HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\nhalf" + HttpReply("evil"));
  }));
  CHttpClient client;
  for (int i = 0; i < 3; ++i) {
    StringSink sink;
    client.Start(sink, server.Url("/"));
    EXPECT_TRUE(client.Wait(kWaitForever));
    EXPECT_EQ(sink.Bytes(), "half");
  }
}

TEST(HttpReplies, ServerThatClosesIsABrokenConnection) {
  EXPECT_EQ(AskServerThatSends(""), (Outcome{12030, "", 0}));
}

TEST(HttpReplies, ServerThatIsNoneIsAnInvalidReply) {
  EXPECT_EQ(AskServerThatSends("220 mail.example ESMTP\r\n"), (Outcome{12152, "", 0}));
}

TEST(HttpReplies, SilentServerIsATimeOut) {
  LoopbackServer server(Talk([](LoopbackConnection& connection) { connection.WaitForEnd(); }));
  EXPECT_EQ(Ask(server.Url("/"), Impatient()), (Outcome{12002, "", 0}));
}

TEST(HttpReplies, ServerThatStopsInTheMiddleIsATimeOut) {
  LoopbackServer server(Talk([](LoopbackConnection& connection) {
    connection.ReadRequest();
    connection.Send("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nhalf");
    connection.WaitForEnd();
  }));
  const Outcome outcome = Ask(server.Url("/"), Impatient());
  EXPECT_EQ(outcome.code, 12002u);
  EXPECT_EQ(outcome.body, "half");
}

// Both take longer than may pass without a byte, in steps that are much shorter.
HttpOptions Patient() {
  HttpOptions options;
  options.idleTimeoutMs = 3000;
  return options;
}

TEST(HttpReplies, SlowServerIsWaitedFor) {
  LoopbackServer server(Talk([](LoopbackConnection& connection) {
    connection.ReadRequest();
    connection.Send("HTTP/1.1 200 OK\r\nContent-Length: 8\r\n\r\n");
    for (int i = 0; i < 8; ++i) {
      if (!connection.Sleep(500ms) || !connection.Send("x")) return;
    }
  }));
  EXPECT_EQ(Ask(server.Url("/"), Patient()), (Outcome{0, "xxxxxxxx", 200}));
}

TEST(HttpReplies, SlowHeadersAreWaitedFor) {
  LoopbackServer server(Talk([](LoopbackConnection& connection) {
    connection.ReadRequest();
    const std::string reply = HttpReply("ok");
    for (size_t i = 0; i < reply.size(); i += 5) {
      if (!connection.Sleep(500ms) || !connection.Send(std::string_view(reply).substr(i, 5)))
        return;
    }
  }));
  EXPECT_EQ(Ask(server.Url("/"), Patient()), (Outcome{0, "ok", 200}));
}

TEST(HttpReplies, NobodyThereIsNoConnection) {
  std::string url;
  {
    LoopbackServer server([](const std::string&) { return HttpReply("ok"); });
    url = server.Url("/");
  }
  EXPECT_EQ(Ask(url), (Outcome{12029, "", 0}));
}

TEST(HttpReplies, UnknownHostHasNoName) {
  EXPECT_EQ(Ask("http://no-such-host.invalid/"), (Outcome{12007, "", 0}));
}

TEST(HttpReplies, FailureNamesNothingOfTheAddress) {
  try {
    HttpGet(u"http://no-such-host.invalid/?key=secret");
    FAIL();
  } catch (const CInternetException& failure) {
    EXPECT_EQ(failure.code, 12007u);
    EXPECT_EQ(failure.text, "");
    EXPECT_STREQ(failure.what(), "12007");
  }
}

TEST(HttpReplies, EndlessHeadersAreRefused) {
  LoopbackServer server(Talk([](LoopbackConnection& connection) {
    connection.ReadRequest();
    connection.Send("HTTP/1.1 200 OK\r\n");
    while (connection.Send("X-Filler: " + std::string(1000, 'x') + "\r\n")) {
    }
  }));
  EXPECT_EQ(Ask(server.Url("/")), (Outcome{12152, "", 200}));
}

TEST(HttpReplies, EndlessHeaderLineIsRefused) {
  LoopbackServer server(Talk([](LoopbackConnection& connection) {
    connection.ReadRequest();
    connection.Send("HTTP/1.1 200 OK\r\nX-Filler: ");
    while (connection.Send(std::string(1000, 'x'))) {
    }
  }));
  EXPECT_NE(Ask(server.Url("/")).code, 0u);
}

TEST(HttpReplies, EndlessInterimRepliesAreRefused) {
  LoopbackServer server(Talk([](LoopbackConnection& connection) {
    connection.ReadRequest();
    while (connection.Send("HTTP/1.1 103 Early Hints\r\nX-Filler: xxxxxxxxxxxxxxxxxxxx\r\n\r\n")) {
    }
  }));
  EXPECT_EQ(Ask(server.Url("/")).code, 12152u);
}

TEST(HttpReplies, ServiceTakes64MiBAndNoMore) {
  constexpr size_t kLimit = 67'108'864;
  const auto server = [](size_t size) { return HttpReply(std::string(size, 'x')); };
  const Outcome whole = AskServerThatSends(server(kLimit));
  EXPECT_EQ(whole.code, 0u);
  EXPECT_EQ(whole.body.size(), kLimit);
  const Outcome tooLong = AskServerThatSends(server(kLimit + 1));
  EXPECT_EQ(tooLong.code, 122u);
  EXPECT_LE(tooLong.body.size(), kLimit);
  HttpOptions unlimited;
  unlimited.bodyLimit = kNoBodyLimit;
  EXPECT_EQ(AskServerThatSends(server(kLimit + 1), unlimited).body.size(), kLimit + 1);
}

TEST(HttpReplies, SinkThatFailsIsAFailure) {
  class FailingSink final : public ByteSink {
    void Consume(std::string_view) override { throw std::bad_alloc(); }
  };
  LoopbackServer server([](const std::string&) { return HttpReply(std::string(1'000'000, 'x')); });
  CHttpClient client;
  FailingSink sink;
  client.Start(sink, server.Url("/"));
  try {
    client.Wait(kWaitForever);
    FAIL();
  } catch (const CInternetException& failure) {
    EXPECT_EQ(failure.code, 8u);
  }
}

}  // namespace
