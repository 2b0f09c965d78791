// What the page catches when a call into the program fails, and what its traces leave.

#include <functional>
#include <new>
#include <stdexcept>

#include <gtest/gtest.h>

#include "net/internet_exception.h"
#include "tests/planner/bridge_fixture.h"
#include "tests/stopped_clock.h"

namespace {

/// Services that fail as they are told to.
class FailingServices : public PlayedServices {
 public:
  using PlayedServices::PlayedServices;

  std::string Get(const std::string&, const std::string&, const std::string&) override {
    failure();
    return body;
  }
  WideString Download(const std::string&, const std::string&, const WideString&) override {
    failure();
    return {};
  }
  void Enqueue(int32_t, const std::string&, const std::string&, const std::string&,
               ScriptFunctionPtr) override {
    failure();
  }

  std::function<void()> failure;
};

class ExternalFailures : public BridgeTest {
 protected:
  uint32_t NumberOf(std::string_view name, const ScriptArray& arguments) {
    try {
      external.Invoke(name, arguments);
    } catch (const ScriptError& failure) {
      return failure.number;
    }
    return 0;
  }
  void Fail(std::function<void()> failure) { failing.failure = std::move(failure); }

  FailingServices failing{log};
  PlannerExternal external{
      {std::make_shared<PlannerLists>(), settings, window, failing, posts, {}, {}, {}}};
};

TEST_F(ExternalFailures, TransportErrorsKeepTheirNumbers) {
  const ScriptArray address{"http://a.example/"};
  Fail([] { throw CInternetException(12029); });  // 0x2EFD
  EXPECT_EQ(NumberOf("HttpRequest", address), 0x80072EFD);
  EXPECT_EQ(NumberOf("HttpDownload", address), 0x80072EFD);
  Fail([] { throw CInternetException(122); });
  EXPECT_EQ(NumberOf("HttpRequest", address), 0x8007007A);
  // A request that cannot be sent at all fails at once, callback or not.
  Fail([] { throw CInternetException(12006); });  // 0x2EE6
  const auto options =
      std::make_shared<ScriptRecord>(std::vector<std::pair<std::string, ScriptValue>>{
          {"callback", std::make_shared<PlayedFunction>(log)}});
  EXPECT_EQ(NumberOf("HttpRequest", {"x://a.example/", options}), 0x80072EE6);
}

TEST_F(ExternalFailures, EverythingElseHasANumberToo) {
  const ScriptArray address{"http://a.example/"};
  Fail([] { throw std::runtime_error("no"); });
  EXPECT_EQ(NumberOf("HttpRequest", address), 0x80004005);
  Fail([] { throw std::bad_alloc(); });
  EXPECT_EQ(NumberOf("HttpRequest", address), 0x8007000E);
  Fail([] { throw ScriptError(kScriptWrongType); });
  EXPECT_EQ(NumberOf("HttpRequest", address), 0x80020008);
  Fail([] {});
  EXPECT_EQ(NumberOf("HttpRequest", address), 0u);
}

TEST_F(ExternalFailures, TracesGoToTheDebugLogWithTheirTime) {
  const StoppedClock clock("1700000000");  // 2023-11-14 22:13:20 UTC
  setenv("CORVANE_DEBUG", "1", 1);
  testing::internal::CaptureStderr();
  external.Invoke("Trace", ScriptArray{"pin 7 is gone"});
  unsetenv("CORVANE_DEBUG");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "2023-11-14 22:13:20 page: pin 7 is gone\n");
  testing::internal::CaptureStderr();
  external.Invoke("Trace", ScriptArray{"pin 8 is gone"});
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

}  // namespace
