// What the environment says of a proxy, and what the client waits for by default.

#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

#include "net/http_client.h"
#include "tests/loopback_server.h"

namespace {

WideString Wide(const std::string& text) { return {text.begin(), text.end()}; }

// With this server as the proxy of plain HTTP.
class HttpProxy : public testing::Test {
 protected:
  HttpProxy() { setenv("http_proxy", m_proxy.Url().c_str(), 1); }
  ~HttpProxy() override { unsetenv("http_proxy"); }

  LoopbackServer m_proxy{[](const std::string&) { return HttpReply("by proxy"); }};
};

TEST_F(HttpProxy, IsAskedForOtherMachines) {
  EXPECT_EQ(HttpGet(u"http://maps.example/a?b=c", "http://page.example/"), "by proxy");
  ASSERT_EQ(m_proxy.Requests().size(), 1u);
  const std::string request = m_proxy.Requests()[0];
  EXPECT_TRUE(request.starts_with("GET http://maps.example/a?b=c HTTP/1.1\r\n")) << request;
  EXPECT_NE(request.find("\r\nHost: maps.example\r\n"), std::string::npos) << request;
  EXPECT_NE(request.find("\r\nReferer: http://page.example/\r\n"), std::string::npos) << request;
}

TEST_F(HttpProxy, IsNotAskedForThisMachine) {
  LoopbackServer server([](const std::string&) { return HttpReply("straight"); });
  EXPECT_EQ(HttpGet(Wide(server.Url("/"))), "straight");
  EXPECT_EQ(HttpGet(Wide("http://localhost:" + std::to_string(server.Port()) + "/")), "straight");
  EXPECT_TRUE(m_proxy.Requests().empty());
}

TEST(HttpOptionsByDefault, AreThoseOfServices) {
  const HttpOptions options;
  EXPECT_EQ(options.userAgent, "Mozilla/5.0 (compatible; MSIE 9.0; Win32)");
  EXPECT_EQ(options.connectTimeoutMs, 30'000u);
  EXPECT_EQ(options.idleTimeoutMs, 60'000u);
  EXPECT_EQ(options.lagMs, 120'000u);
  EXPECT_EQ(options.longestMs, 1'800'000u);
  EXPECT_EQ(options.bodyLimit, 67'108'864u);
}

TEST(InternetException, HoldsItsNumberAndText) {
  const CInternetException bare(12029);
  EXPECT_EQ(bare.code, 12029u);
  EXPECT_EQ(bare.text, "");
  EXPECT_STREQ(bare.what(), "12029");
  const CInternetException told(6, "Already opened");
  const CInternetException copy(told);
  EXPECT_EQ(copy.code, 6u);
  EXPECT_EQ(copy.text, "Already opened");
  EXPECT_STREQ(copy.what(), "Already opened");
}

}  // namespace
