// Servers that never stop answering and never get anywhere.

#include <atomic>
#include <chrono>
#include <memory>
#include <stop_token>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "net/http_client.h"
#include "net/request_queue.h"
#include "tests/loopback_server.h"
#include "tests/temporary_folder.h"

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using Talk = LoopbackServer::Talk;

constexpr uint32_t kTimedOut = 12002;
// Far below the minutes that a request is granted otherwise, far above what a busy machine needs.
constexpr auto kSoon = 20s;

WideString Wide(const std::string& text) { return {text.begin(), text.end()}; }

// A bit of something every 50 ms, for as long as the client bears it.
void Drip(LoopbackConnection& connection, const std::string& bit) {
  while (connection.Sleep(50ms) && connection.Send(bit)) {
  }
}

Talk DrippingBody(const std::string& start = {}) {
  return [start](LoopbackConnection& connection) {
    connection.ReadRequest();
    connection.Send("HTTP/1.1 200 OK\r\nContent-Length: 1000000000\r\n\r\n" + start);
    Drip(connection, "x");
  };
}

Talk DrippingAfter(const std::string& start, const std::string& bit) {
  return [start, bit](LoopbackConnection& connection) {
    connection.ReadRequest();
    connection.Send(start);
    Drip(connection, bit);
  };
}

HttpOptions LaggingAtMost(uint32_t milliseconds) {
  HttpOptions options;
  options.lagMs = milliseconds;
  return options;
}

HttpOptions LastingAtMost(uint32_t milliseconds) {
  HttpOptions options;
  options.longestMs = milliseconds;
  return options;
}

template <typename Request>
uint32_t CodeOf(Request&& request) {
  try {
    request();
  } catch (const CInternetException& failure) {
    return failure.code;
  }
  return 0;
}

uint32_t CodeOfGet(const std::string& url, const HttpOptions& options) {
  return CodeOf([&] { HttpGet(Wide(url), {}, {}, options); });
}

TEST(DrippingServer, IsGivenUpWhateverItDrips) {
  const std::string head = "HTTP/1.1 200 OK\r\n";
  const struct {
    const char* what;
    Talk talk;
  } kServers[] = {
      {"the status line", DrippingAfter("HTTP/1.1 200 ", "x")},
      {"a header", DrippingAfter(head + "X-Filler: ", "x")},
      {"headers", DrippingAfter(head, "X: y\r\n")},
      {"interim replies", DrippingAfter("", "HTTP/1.1 103 Early Hints\r\n\r\n")},
      {"a body", DrippingBody()},
      {"a body without a length", DrippingAfter("HTTP/1.0 200 OK\r\n\r\n", "x")},
      {"chunks", DrippingAfter(head + "Transfer-Encoding: chunked\r\n\r\n", "1\r\nx\r\n")},
      {"what stands behind chunks",
       DrippingAfter(head + "Transfer-Encoding: chunked\r\n\r\n0\r\n", "X: y\r\n")},
      {"the body of a redirect",
       DrippingAfter("HTTP/1.1 302 Found\r\nLocation: /\r\nContent-Length: 99999\r\n\r\n", "x")},
  };
  for (const auto& [what, talk] : kServers) {
    LoopbackServer server{Talk(talk)};
    EXPECT_EQ(CodeOfGet(server.Url("/"), LaggingAtMost(400)), kTimedOut) << what;
    EXPECT_EQ(CodeOfGet(server.Url("/"), LastingAtMost(400)), kTimedOut) << what;
  }
}

TEST(DrippingServer, IsGivenUpByEveryKindOfRequest) {
  LoopbackServer server(DrippingBody());
  const HttpOptions options = LaggingAtMost(400);
  EXPECT_EQ(CodeOf([&] {
              StringSink sink;
              HttpFetch(sink, Wide(server.Url("/")), "question", {}, {}, options);
            }),
            kTimedOut);

  StringSink sink;
  CHttpClient client(options);
  uint32_t told = 0;
  client.SetCompletion(
      [&](CHttpRequest&, const CInternetException& failure) { told = failure.code; });
  client.Start(sink, server.Url("/"));
  EXPECT_EQ(CodeOf([&] { client.Wait(kWaitForever); }), kTimedOut);
  EXPECT_EQ(told, kTimedOut);
  EXPECT_NE(sink.Bytes(), "");  // what has come stays

  TemporaryFolder folder;
  const WideString target = folder.WidePathTo("body");
  EXPECT_EQ(CodeOf([&] { HttpDownload(server.Url("/"), target, {}, options); }), kTimedOut);
  EXPECT_EQ(folder.Get("body").substr(0, 1), "x");
}

TEST(DrippingServer, IsGivenUpByEveryRequestOfAQueue) {
  struct Function final : PageFunction {
    explicit Function(std::atomic<int>& count) : timeOuts(count) {}
    void Post(uint32_t code, WideString) override { timeOuts += code == kTimedOut ? 1 : 100; }
    std::atomic<int>& timeOuts;
  };
  std::atomic<int> timeOuts = 0;
  LoopbackServer server(DrippingBody());
  CHttpRequestQueue queue(LaggingAtMost(300));
  for (int i = 0; i < 3; ++i)
    queue.EnqueueRequest({server.Url("/"), {}, {}, std::make_unique<Function>(timeOuts)});
  const auto end = Clock::now() + kSoon;
  while (timeOuts != 3 && Clock::now() < end) std::this_thread::sleep_for(5ms);
  EXPECT_EQ(timeOuts, 3);
}

// Each of the stairs takes a while, none of them too long.
TEST(DrippingServer, IsNotWaitedForAnewBehindARedirect) {
  LoopbackServer server(Talk([](LoopbackConnection& connection) {
    for (std::string request = connection.ReadRequest(); !request.empty();
         request = connection.ReadRequest()) {
      if (!connection.Sleep(300ms)) return;
      connection.Send(HttpReply("", "302 Found", "Location: /again\r\n"));
    }
  }));
  EXPECT_EQ(CodeOfGet(server.Url("/"), LaggingAtMost(800)), kTimedOut);
  EXPECT_EQ(CodeOfGet(server.Url("/"), LastingAtMost(800)), kTimedOut);
}

// What came fast at first buys no time for what follows.
TEST(DrippingServer, IsGivenUpAfterAGoodStart) {
  LoopbackServer server(DrippingBody(std::string(1'000'000, 'x')));
  EXPECT_EQ(CodeOfGet(server.Url("/"), LaggingAtMost(1000)), kTimedOut);
}

TEST(DrippingServer, IsLeftAtOnceByWhoCancels) {
  LoopbackServer server(DrippingBody());
  const auto start = Clock::now();
  StringSink sink;
  CHttpClient client;
  client.Start(sink, server.Url("/"));
  while (client.Request().TotalRead() == 0) std::this_thread::sleep_for(5ms);
  client.Cancel();
  EXPECT_TRUE(client.Wait(kWaitForever));
  EXPECT_EQ(client.Request().FailureCode(), 12017u);

  std::stop_source stop;
  HttpOptions options;
  options.stop = stop.get_token();
  const std::jthread user([&stop] {
    std::this_thread::sleep_for(100ms);
    stop.request_stop();
  });
  EXPECT_EQ(CodeOfGet(server.Url("/"), options), 12017u);
  EXPECT_LT(Clock::now() - start, kSoon);
}

// Half as fast again as the slowest line: it takes three times what it may lag behind.
TEST(SlowServer, IsWaitedForAsLongAsItGoesOn) {
  LoopbackServer server(Talk([](LoopbackConnection& connection) {
    connection.ReadRequest();
    connection.Send("HTTP/1.1 200 OK\r\nContent-Length: 9216\r\n\r\n");
    for (int i = 0; i < 60 && connection.Sleep(100ms) && connection.Send(std::string(154, 'x'));
         ++i) {
    }
  }));
  StringSink sink;
  HttpFetch(sink, Wide(server.Url("/")), {}, {}, {}, LaggingAtMost(2000));
  EXPECT_EQ(sink.Bytes().size(), 9216u);
}

TEST(SlowServer, MayTakeItsTimeForADownload) {
  LoopbackServer server(Talk([](LoopbackConnection& connection) {
    connection.ReadRequest();
    connection.Send("HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\n");
    for (int i = 0; i < 4 && connection.Sleep(200ms) && connection.Send("x"); ++i) {
    }
  }));
  TemporaryFolder folder;
  const WideString target = folder.WidePathTo("body");
  EXPECT_EQ(HttpDownload(server.Url("/"), target, {}, LastingAtMost(300)), target);
  EXPECT_EQ(folder.Get("body"), "xxxx");
}

}  // namespace
