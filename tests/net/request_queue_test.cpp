#include "net/request_queue.h"

#include <atomic>
#include <chrono>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "tests/loopback_server.h"

namespace {

using namespace std::chrono_literals;
using Strings = std::vector<std::string>;

template <typename Condition>
bool Eventually(Condition&& condition) {
  for (int i = 0; i < 4000 && !condition(); ++i) std::this_thread::sleep_for(5ms);
  return condition();
}

// What the page's functions were told, "name:code:body", and how many of them are still held.
class Page {
 public:
  std::unique_ptr<PageFunction> Function(std::string name) {
    ++m_alive;
    return std::make_unique<Recorder>(*this, std::move(name));
  }
  Strings Calls() const {
    const std::lock_guard lock(m_mutex);
    return m_calls;
  }
  int Alive() const { return m_alive; }

 private:
  class Recorder final : public PageFunction {
   public:
    Recorder(Page& page, std::string name) : m_page(page), m_name(std::move(name)) {}
    ~Recorder() override { --m_page.m_alive; }
    void Post(uint32_t code, WideString body) override {
      const std::lock_guard lock(m_page.m_mutex);
      m_page.m_calls.push_back(m_name + ":" + std::to_string(code) + ":" +
                               std::string(body.begin(), body.end()));
    }

   private:
    Page& m_page;
    const std::string m_name;
  };

  mutable std::mutex m_mutex;
  Strings m_calls;
  std::atomic<int> m_alive = 0;
};

// A server that lets nobody go before the gate opens, and answers with the path.
class GatedServer {
 public:
  std::string Url(const std::string& path) const { return m_server.Url(path); }
  Strings Paths() const {
    Strings paths;
    for (const std::string& request : m_server.Requests()) {
      paths.push_back(request.substr(4, request.find(" HTTP") - 4));
    }
    return paths;
  }
  bool WaitFor(size_t requests) const {
    return Eventually([&] { return m_server.Requests().size() >= requests; });
  }
  void Open() { m_isOpen = true; }
  ~GatedServer() { Open(); }

 private:
  std::atomic<bool> m_isOpen = false;
  LoopbackServer m_server{[this](const std::string& request) {
    Eventually([this] { return m_isOpen.load(); });
    return HttpReply(request.substr(4, request.find(" HTTP") - 4));
  }};
};

TEST(RequestQueue, CallsTheFunctionWithCodeAndBody) {
  GatedServer server;
  server.Open();
  Page page;
  CHttpRequestQueue queue;
  queue.EnqueueRequest({server.Url("/a"), "", "", page.Function("a")});
  EXPECT_TRUE(Eventually([&] { return page.Alive() == 0; }));
  EXPECT_EQ(page.Calls(), Strings{"a:0:/a"});
}

TEST(RequestQueue, SendsReferrerAndHost) {
  LoopbackServer server([](const std::string&) { return HttpReply(""); });
  Page page;
  CHttpRequestQueue queue;
  queue.EnqueueRequest({server.Url("/a b%20c"), "http://page/", "maps.example", page.Function("")});
  EXPECT_TRUE(Eventually([&] { return page.Alive() == 0; }));
  EXPECT_EQ(server.Requests(),
            Strings{"GET /a%20b%20c HTTP/1.1\r\n"
                    "User-Agent: Mozilla/5.0 (compatible; MSIE 9.0; Win32)\r\nAccept: */*\r\n"
                    "Host: maps.example\r\nReferer: http://page/\r\n\r\n"});
}

TEST(RequestQueue, BodyIsTextWhateverItsBytes) {
  LoopbackServer server([](const std::string&) { return HttpReply("\xC3\xA9\xFF"); });
  class Function final : public PageFunction {
   public:
    explicit Function(std::atomic<bool>& isRight) : m_isRight(isRight) {}
    void Post(uint32_t, WideString body) override { m_isRight = body == u"\u00E9\uFFFD"; }

   private:
    std::atomic<bool>& m_isRight;
  };
  std::atomic<bool> isRight = false;
  CHttpRequestQueue queue;
  queue.EnqueueRequest({server.Url("/"), "", "", std::make_unique<Function>(isRight)});
  EXPECT_TRUE(Eventually([&] { return isRight.load(); }));
}

TEST(RequestQueue, NewestGoesNextAndTheOldestOfThreeIsDropped) {
  GatedServer server;
  Page page;
  CHttpRequestQueue queue;
  queue.EnqueueRequest({server.Url("/first"), "", "", page.Function("first")});
  ASSERT_TRUE(server.WaitFor(1));
  for (const std::string name : {"a", "b", "c"}) {
    queue.EnqueueRequest({server.Url("/" + name), "", "", page.Function(name)});
  }
  EXPECT_EQ(page.Alive(), 3);  // "a" is released
  server.Open();
  EXPECT_TRUE(Eventually([&] { return page.Alive() == 0; }));
  EXPECT_EQ(page.Calls(), (Strings{"first:0:/first", "c:0:/c", "b:0:/b"}));
  EXPECT_EQ(server.Paths(), (Strings{"/first", "/c", "/b"}));
}

TEST(RequestQueue, FailureIsTold) {
  LoopbackServer server([](const std::string&) { return std::string(); });
  Page page;
  CHttpRequestQueue queue;
  queue.EnqueueRequest({server.Url("/"), "", "", page.Function("a")});
  EXPECT_TRUE(Eventually([&] { return page.Alive() == 0; }));
  EXPECT_EQ(page.Calls(), Strings{"a:12030:"});
}

TEST(RequestQueue, RequestThatCannotBeSentIsThrownWhenIdle) {
  GatedServer server;
  server.Open();
  Page page;
  CHttpRequestQueue queue;
  EXPECT_THROW(queue.EnqueueRequest({"ftp://host/", "", "", page.Function("bad")}),
               CInternetException);
  EXPECT_EQ(page.Alive(), 0);
  queue.EnqueueRequest({server.Url("/a"), "", "", page.Function("a")});
  EXPECT_TRUE(Eventually([&] { return page.Alive() == 0; }));
  EXPECT_EQ(page.Calls(), Strings{"a:0:/a"});
}

TEST(RequestQueue, RequestThatCannotBeSentLaterIsToldAndPassedOver) {
  GatedServer server;
  Page page;
  CHttpRequestQueue queue;
  queue.EnqueueRequest({server.Url("/a"), "", "", page.Function("a")});
  queue.EnqueueRequest({server.Url("/b"), "", "", page.Function("b")});
  queue.EnqueueRequest({"ftp://host/", "", "", page.Function("bad")});
  server.Open();
  EXPECT_TRUE(Eventually([&] { return page.Alive() == 0; }));
  EXPECT_EQ(page.Calls(), (Strings{"a:0:/a", "bad:12006:", "b:0:/b"}));
}

TEST(RequestQueue, EndReleasesAllAndCallsNobody) {
  GatedServer server;
  Page page;
  {
    CHttpRequestQueue queue;
    for (const std::string name : {"a", "b", "c"}) {
      queue.EnqueueRequest({server.Url("/" + name), "", "", page.Function(name)});
    }
    ASSERT_TRUE(server.WaitFor(1));
  }
  EXPECT_EQ(page.Alive(), 0);
  EXPECT_EQ(page.Calls(), Strings{});
  EXPECT_EQ(server.Paths(), Strings{"/a"});
}

TEST(RequestQueue, QueuesWorkBesideEachOther) {
  GatedServer server;
  Page page;
  HttpRequestQueues queues;
  queues.EnqueueRequest(0, server.Url("/a"), "", "", page.Function("a"));
  queues.EnqueueRequest(-7, server.Url("/b"), "", "", page.Function("b"));
  EXPECT_TRUE(server.WaitFor(2));
  server.Open();
  EXPECT_TRUE(Eventually([&] { return page.Alive() == 0; }));
  EXPECT_EQ(page.Calls().size(), 2u);
}

TEST(RequestQueue, TakesABurstFromAnotherThread) {
  GatedServer server;
  server.Open();
  Page page;
  CHttpRequestQueue queue;
  std::thread([&] {
    for (int i = 0; i < 100; ++i) {
      const std::string name = std::to_string(i);
      queue.EnqueueRequest({server.Url("/" + name), "", "", page.Function(name)});
    }
  }).join();
  EXPECT_TRUE(Eventually([&] { return page.Alive() == 0; }));
  const Strings calls = page.Calls();
  EXPECT_GE(calls.size(), 3u);  // the running one and the two that wait at the end
  EXPECT_LE(calls.size(), 100u);
  // Whatever was dropped on the way, the last wish was granted.
  EXPECT_NE(std::find(calls.begin(), calls.end(), "99:0:/99"), calls.end());
  Strings sorted = calls;
  std::sort(sorted.begin(), sorted.end());
  EXPECT_EQ(std::adjacent_find(sorted.begin(), sorted.end()), sorted.end());
}

}  // namespace
