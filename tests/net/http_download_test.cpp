#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "net/http_client.h"
#include "platform/path_text.h"
#include "tests/loopback_server.h"
#include "tests/temporary_folder.h"

namespace {

using namespace std::chrono_literals;

uint32_t CodeOf(const std::string& url, const WideString& target = {}) {
  try {
    HttpDownload(url, target);
  } catch (const CInternetException& failure) {
    return failure.code;
  }
  return 0;
}

std::string Content(const WideString& path) {
  std::ifstream file(PathBytes(path), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// With a cache of its own.
class HttpDownloads : public testing::Test {
 protected:
  void SetUp() override {
    const char* const former = std::getenv("XDG_CACHE_HOME");
    m_former = former ? former : "";
    setenv("XDG_CACHE_HOME", m_home.PathTo("cache").c_str(), 1);
  }
  void TearDown() override {
    if (m_former.empty()) {
      unsetenv("XDG_CACHE_HOME");
    } else {
      setenv("XDG_CACHE_HOME", m_former.c_str(), 1);
    }
  }

  std::string Cache() const { return m_home.PathTo("cache/CorvaneMap/downloads"); }
  size_t CachedFiles() const {
    if (!std::filesystem::exists(Cache())) return 0;
    const std::filesystem::directory_iterator entries(Cache());
    return static_cast<size_t>(std::distance(begin(entries), end(entries)));
  }

  TemporaryFolder m_home;
  std::string m_former;
};

TEST_F(HttpDownloads, SecondOneAsksNobody) {
  LoopbackServer server([](const std::string&) { return HttpReply("body"); });
  const WideString first = HttpDownload(server.Url("/a?b"));
  EXPECT_EQ(Content(first), "body");
  EXPECT_TRUE(PathBytes(first).starts_with(Cache() + "/"));
  EXPECT_TRUE(PathBytes(first).ends_with(".crv"));
  EXPECT_EQ(HttpDownload(server.Url("/a?b")), first);
  EXPECT_EQ(server.Requests().size(), 1u);
  EXPECT_EQ(CachedFiles(), 2u);  // the body and its record
}

// Nothing of the cache ages, wherever the clock goes.
TEST_F(HttpDownloads, SecondOneAsksNobodyWhateverTheClockSays) {
  LoopbackServer server([](const std::string&) { return HttpReply("body"); });
  const WideString first = HttpDownload(server.Url("/"));
  for (const auto jump : {-24h * 366, 24h * 366}) {
    for (const auto& entry : std::filesystem::directory_iterator(Cache()))
      std::filesystem::last_write_time(entry, entry.last_write_time() + jump);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(HttpDownload(server.Url("/")), first);
  }
  EXPECT_EQ(server.Requests().size(), 1u);
}

TEST_F(HttpDownloads, AddressesHaveFilesOfTheirOwn) {
  LoopbackServer server([](const std::string& request) { return HttpReply(request.substr(4, 2)); });
  EXPECT_EQ(Content(HttpDownload(server.Url("/a"))), "/a");
  EXPECT_EQ(Content(HttpDownload(server.Url("/b"))), "/b");
  EXPECT_EQ(Content(HttpDownload(server.Url("/a"))), "/a");
  EXPECT_EQ(server.Requests().size(), 2u);
}

TEST_F(HttpDownloads, OnlyTheUserCanLookIntoTheCache) {
  LoopbackServer server([](const std::string&) { return HttpReply("body"); });
  HttpDownload(server.Url("/"));
  struct stat details {};
  ASSERT_EQ(stat(Cache().c_str(), &details), 0);
  EXPECT_EQ(details.st_mode & 0777, 0700u);
}

TEST_F(HttpDownloads, DamagedEntryIsFetchedAnew) {
  LoopbackServer server([](const std::string&) { return HttpReply("body"); });
  const WideString path = HttpDownload(server.Url("/"));
  std::filesystem::resize_file(PathBytes(path), 2);
  EXPECT_EQ(Content(HttpDownload(server.Url("/"))), "body");
  std::filesystem::remove(PathBytes(path));
  EXPECT_EQ(Content(HttpDownload(server.Url("/"))), "body");
  EXPECT_EQ(server.Requests().size(), 3u);
}

// As if two addresses had the same name.
TEST_F(HttpDownloads, RecordOfAnotherAddressDoesNotCount) {
  LoopbackServer server([](const std::string&) { return HttpReply("body"); });
  HttpDownload(server.Url("/"));
  for (const auto& entry : std::filesystem::directory_iterator(Cache())) {
    if (entry.path().extension() != ".url") continue;
    std::ofstream(entry.path()) << "4\nhttp://elsewhere.example/\n";
  }
  HttpDownload(server.Url("/"));
  EXPECT_EQ(server.Requests().size(), 2u);
}

TEST_F(HttpDownloads, EmptyBodyIsNoFile) {
  LoopbackServer server([](const std::string&) { return HttpReply(""); });
  EXPECT_EQ(HttpDownload(server.Url("/")), u"");
  EXPECT_EQ(HttpDownload(server.Url("/")), u"");
  EXPECT_EQ(server.Requests().size(), 2u);
  EXPECT_EQ(HttpDownload(server.Url("/"), m_home.WidePathTo("target")), u"");
}

TEST_F(HttpDownloads, TargetPassesTheCacheBy) {
  LoopbackServer server([](const std::string&) { return HttpReply("body"); });
  const WideString target = m_home.WidePathTo("target");
  EXPECT_EQ(HttpDownload(server.Url("/"), target), target);
  EXPECT_EQ(m_home.Get("target"), "body");
  EXPECT_EQ(HttpDownload(server.Url("/"), target), target);
  EXPECT_EQ(server.Requests().size(), 2u);
  EXPECT_EQ(CachedFiles(), 0u);
  HttpDownload(server.Url("/"));
  HttpDownload(server.Url("/"), target);
  EXPECT_EQ(server.Requests().size(), 4u);
}

TEST_F(HttpDownloads, PartStaysInItsTarget) {
  LoopbackServer server([](const std::string&) {
    return std::string("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nhalf");
  });
  EXPECT_EQ(CodeOf(server.Url("/"), m_home.WidePathTo("target")), 12030u);
  EXPECT_EQ(m_home.Get("target"), "half");
  EXPECT_EQ(CodeOf(server.Url("/")), 12030u);
  EXPECT_EQ(CachedFiles(), 0u);
}

TEST_F(HttpDownloads, NothingReceivedLeavesTheTargetAlone) {
  LoopbackServer server([](const std::string&) { return std::string(); });
  m_home.Put("target", "old");
  EXPECT_EQ(CodeOf(server.Url("/"), m_home.WidePathTo("target")), 12030u);
  EXPECT_EQ(m_home.Get("target"), "old");
}

TEST_F(HttpDownloads, TargetThatCannotBeWrittenAsksNobody) {
  LoopbackServer server([](const std::string&) { return HttpReply("body"); });
  EXPECT_EQ(CodeOf(server.Url("/"), m_home.WidePathTo("missing/target")), 2u);
  EXPECT_TRUE(server.Requests().empty());
}

TEST_F(HttpDownloads, ReferrerGoesAlong) {
  LoopbackServer server([](const std::string&) { return HttpReply("body"); });
  HttpDownload(server.Url("/a b"), {}, "http://page.example/");
  ASSERT_EQ(server.Requests().size(), 1u);
  EXPECT_TRUE(server.Requests()[0].starts_with("GET /a%20b HTTP/1.1\r\n"));
  EXPECT_NE(server.Requests()[0].find("\r\nReferer: http://page.example/\r\n"), std::string::npos);
}

TEST_F(HttpDownloads, DownloadsHaveNoLimit) {
  constexpr size_t kSize = 67'108'865;
  LoopbackServer server([](const std::string&) { return HttpReply(std::string(kSize, 'x')); });
  HttpDownload(server.Url("/"), m_home.WidePathTo("target"));
  EXPECT_EQ(std::filesystem::file_size(m_home.PathTo("target")), kSize);
}

}  // namespace
