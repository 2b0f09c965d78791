#include "net/network_error.h"

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "base/localized_text.h"
#include "base/text.h"

namespace {

class RecordingFront final : public NetworkErrorFront {
 public:
  uint32_t AskToRetry(const WideString& text) override {
    texts.push_back(WideToUtf8(text));
    return answer;
  }
  uint32_t answer = kAnswerRetry;
  std::vector<std::string> texts;
};

// The text in the box for a code.
std::string TextFor(uint32_t code) {
  RecordingFront front;
  ReportNavigationError(code, front);
  return front.texts.empty() ? "" : front.texts.front();
}

TEST(NetworkError, TellsEveryFailureOfANavigation) {
  const std::vector<std::pair<uint32_t, std::string>> texts{
      {0x800C0002, "The URL could not be parsed."},
      {0x800C0003, "No Internet session was established."},
      {0x800C0004, "The attempt to connect to the Internet has failed."},
      {0x800C0005, "The server or proxy was not found."},
      {0x800C0006, "The object was not found."},
      {0x800C0007, "An Internet connection was established, but the data cannot be retrieved."},
      {0x800C0008, "The download has failed (the connection was interrupted)."},
      {0x800C0009, "Authentication is needed to access the object."},
      {0x800C000A, "The object is not in one of the acceptable MIME types."},
      {0x800C000B, "The Internet connection has timed out."},
      {0x800C000C, "The request was invalid."},
      {0x800C000D,
       "The protocol is not known and no pluggable protocols have been entered that match."},
      {0x800C000E, "A security problem was encountered."},
      {0x800C000F, "The object could not be loaded."},
      {0x800C0010, "CoCreateInstance failed."},
      {0x800C0011, "Use the default protocol handler."},
      {0x800C0012, "Use the default settings."},
      {0x800C0013, "The requested option is unknown."},
      {0x800C0014, "The request is being redirected."},
      {0x800C0015, "The request is being redirected to a directory."},
      {0x800C0016, "The requested resource could not be locked."},
  };
  for (const auto& [code, text] : texts) EXPECT_EQ(NetworkErrorText(code), text);
  EXPECT_EQ(NetworkErrorText(0x800C0001), "Internal error.");
  EXPECT_EQ(NetworkErrorText(0x800C0017), "Internal error.");
  EXPECT_EQ(NetworkErrorText(0x80004005), "Internal error.");
}

TEST(NetworkError, PutsCodeAndTextIntoTheQuestion) {
  EXPECT_EQ(TextFor(0x800C000B),
            "Corvane Map detected a network error. Please check your network connection an try "
            "again.\n Error 0x800C000B (The Internet connection has timed out.)");
}

TEST(NetworkError, TellsFailuresOfRequests) {
  EXPECT_TRUE(TextFor(12007).ends_with(
      " Error 0x00002EE7 (The server was not found. Check its address and the connection to the "
      "Internet.)"));
  for (const uint32_t code : {122u, 12002u, 12005u, 12006u, 12007u, 12029u, 12030u, 12037u, 12038u,
                              12045u, 12152u, 12156u, 12157u}) {
    EXPECT_NE(NetworkErrorText(code), "Internal error.") << code;
    EXPECT_EQ(NetworkErrorText(0x80070000 + code), NetworkErrorText(code));
  }
}

TEST(NetworkError, GivesTheAnswer) {
  RecordingFront front;
  EXPECT_EQ(ReportNavigationError(0x800C0005, front), 4u);
  front.answer = kAnswerCancel;
  EXPECT_EQ(ReportNavigationError(0x800C0005, front), 2u);
}

TEST(NetworkError, SuccessAsksNobody) {
  RecordingFront front;
  EXPECT_EQ(ReportNavigationError(0, front), 1u);
  EXPECT_TRUE(front.texts.empty());
}

TEST(NetworkError, SpeaksTheLanguageOfTheUser) {
  SetLanguage(Language::kGerman);
  EXPECT_EQ(NetworkErrorText(0x800C0016),
            "Die angeforderte Ressource konnte nicht gesperrt werden.");
  EXPECT_NE(TextFor(0x800C0016).find("0x800C0016 (Die angeforderte Ressource"), std::string::npos);
  SetLanguage(Language::kEnglish);
}

}  // namespace
