#include "net/url.h"

#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

namespace {

struct SplitResult {
  std::string host = "old host";
  std::string path = "old path";
  uint16_t port = 7;
  bool secure = true;
};

SplitResult Split(std::string_view url) {
  SplitResult result;
  SplitUrl(url, result.host, result.path, result.port, result.secure);
  return result;
}

std::string Encoded(std::string_view bytes) {
  std::string encoded;
  Base64Encode(bytes, encoded);
  return encoded;
}

TEST(UrlEscape, KeepsLettersAndDigits) {
  EXPECT_EQ(UrlEscape("azAZ09", ""), "azAZ09");
  EXPECT_EQ(UrlEscape("", ""), "");
}

TEST(UrlEscape, WritesBlanksAsPercent20) { EXPECT_EQ(UrlEscape("a b", ""), "a%20b"); }

TEST(UrlEscape, WritesUpperCaseHexadecimal) {
  EXPECT_EQ(UrlEscape("Orl\xC3\xA9\x61ns", ""), "Orl%C3%A9ans");
  EXPECT_EQ(UrlEscape("\xFF\x7F", ""), "%FF%7F");
}

TEST(UrlEscape, LeavesOutTheZeroOfSmallBytes) {
  EXPECT_EQ(UrlEscape("a\nb", ""), "a%Ab");
  EXPECT_EQ(UrlEscape("\r\n\t", ""), "%D%A%9");
  EXPECT_EQ(UrlEscape(std::string(1, '\0'), ""), "%0");
  EXPECT_EQ(UrlEscape("\x0F\x10", ""), "%F%10");
}

TEST(UrlEscape, KeepsWhatItIsTold) {
  EXPECT_EQ(UrlEscape("+a+%", ""), "%2Ba%2B%25");
  EXPECT_EQ(UrlEscape("+a+%", "+"), "+a+%25");
}

TEST(UrlEscapeUri, KeepsReservedCharacters) {
  EXPECT_EQ(UrlEscapeUri("a b?c=d"), "a%20b?c=d");
  EXPECT_EQ(UrlEscapeUri(",/?:@&=+$#-_.!~*'()"), ",/?:@&=+$#-_.!~*'()");
  EXPECT_EQ(UrlEscapeUri("[;|\"<>\\^`{}%]"), "%5B%3B%7C%22%3C%3E%5C%5E%60%7B%7D%25%5D");
}

TEST(UrlEscapeOnce, LeavesEscapesAlone) {
  EXPECT_EQ(UrlEscapeOnce("a b%20c%c3%A9"), "a%20b%20c%c3%A9");
  EXPECT_EQ(UrlEscapeOnce(UrlEscapeOnce("\xC3\xA9 %")), "%C3%A9%20%25");
}

TEST(UrlEscapeOnce, EscapesAPercentThatIsNone) {
  EXPECT_EQ(UrlEscapeOnce("100%"), "100%25");
  EXPECT_EQ(UrlEscapeOnce("%4"), "%254");
  EXPECT_EQ(UrlEscapeOnce("%4g%g4"), "%254g%25g4");
}

TEST(UrlUnescape, CopiesAllElse) {
  EXPECT_EQ(UrlUnescape(""), "");
  EXPECT_EQ(UrlUnescape("a+b"), "a+b");
}

TEST(UrlUnescape, TakesUpToTwoDigits) {
  EXPECT_EQ(UrlUnescape("%C3%a9"), "\xC3\xA9");
  EXPECT_EQ(UrlUnescape("%A"), "\n");
  EXPECT_EQ(UrlUnescape("%Ab"), "\xAB");
  EXPECT_EQ(UrlUnescape("x%20y"), "x y");
}

TEST(UrlUnescape, GivesZeroForOtherText) {
  EXPECT_EQ(UrlUnescape("%zzb"), std::string("\0b", 2));
  EXPECT_EQ(UrlUnescape("%"), std::string(1, '\0'));
  EXPECT_EQ(UrlUnescape("%%41"), std::string("\0", 1) + "1");
}

TEST(UrlUnescape, ReadsLikeAStream) {
  EXPECT_EQ(UrlUnescape("%4g"), "\x04");
  EXPECT_EQ(UrlUnescape("% 4"), "\x04");
  EXPECT_EQ(UrlUnescape("%+4"), "\x04");
  EXPECT_EQ(UrlUnescape("%-1"), "\xFF");
  EXPECT_EQ(UrlUnescape("%0x"), std::string(1, '\0'));
}

TEST(SplitUrl, TakesASecureAddressApart) {
  const SplitResult url = Split("https://example:8443/a/b");
  EXPECT_EQ(url.host, "example");
  EXPECT_EQ(url.path, "a/b");
  EXPECT_EQ(url.port, 8443);
  EXPECT_TRUE(url.secure);
}

TEST(SplitUrl, KnowsThePortsOfTheSchemes) {
  EXPECT_EQ(Split("https://example/").port, 443);
  EXPECT_EQ(Split("http://example/").port, 80);
  EXPECT_FALSE(Split("http://example/").secure);
  EXPECT_EQ(Split("http://example/").path, "");
}

TEST(SplitUrl, TakesAHostAlone) {
  const SplitResult url = Split("host");
  EXPECT_EQ(url.host, "host");
  EXPECT_EQ(url.path, "old path");
  EXPECT_EQ(url.port, 80);
  EXPECT_FALSE(url.secure);
}

TEST(SplitUrl, FindsTheSchemeAnywhere) {
  const SplitResult url = Split("https://a/b?to=http://c:81/d");
  EXPECT_EQ(url.host, "c");
  EXPECT_EQ(url.path, "d");
  EXPECT_EQ(url.port, 81);
  EXPECT_FALSE(url.secure);
}

TEST(SplitUrl, KeepsTheLow16BitsOfThePort) {
  EXPECT_EQ(Split("h:65616/").port, 80);
  EXPECT_EQ(Split("h:-1").port, 65535);
  EXPECT_EQ(Split("h: +81x/").port, 81);
}

TEST(SplitUrl, LooksForThePortInTheHostOnly) {
  EXPECT_EQ(Split("host/a:b").port, 80);
  EXPECT_EQ(Split("host/a:b").path, "a:b");
}

TEST(SplitUrl, ThrowsForPortsThatAreNoNumbers) {
  const auto thrownBy = [](std::string_view url) -> std::string {
    try {
      Split(url);
    } catch (const std::invalid_argument& failure) {
      return failure.what();
    } catch (const std::out_of_range& failure) {
      return failure.what();
    }
    return "nothing";
  };
  EXPECT_EQ(thrownBy("host:"), "invalid stoi argument");
  EXPECT_EQ(thrownBy("http://[::1]:80/"), "invalid stoi argument");
  EXPECT_EQ(thrownBy("host:+-1"), "invalid stoi argument");
  EXPECT_EQ(thrownBy("host:2147483648"), "stoi argument out of range");
  EXPECT_EQ(thrownBy("host:2147483647"), "nothing");
}

TEST(Base64, PadsAtTheEnd) {
  EXPECT_EQ(Encoded(""), "");
  EXPECT_EQ(Encoded("a"), "YQ==");
  EXPECT_EQ(Encoded("ab"), "YWI=");
  EXPECT_EQ(Encoded("abc"), "YWJj");
  EXPECT_EQ(Encoded("\xFF\xEF\xBF"), "/++/");
}

TEST(Base64, Appends) {
  std::string text = "data:";
  Base64Encode("ab", text);
  EXPECT_EQ(text, "data:YWI=");
}

TEST(Base64, ReadsWhatItWrites) {
  EXPECT_EQ(Base64Decode("YWI="), "ab");
  std::string bytes;
  for (int i = 0; i < 256; ++i) {
    bytes += static_cast<char>(i);
    EXPECT_EQ(Base64Decode(Encoded(bytes)), bytes);
  }
}

TEST(Base64, StopsAtTheSign) {
  EXPECT_EQ(Base64Decode("YQ==YWJj"), "a");
  EXPECT_EQ(Base64Decode("YWI=YWJj"), "ab");
}

TEST(Base64, TakesCutGroups) {
  EXPECT_EQ(Base64Decode("YWI"), "ab");
  EXPECT_EQ(Base64Decode("YWJjYQ"), "abca");
}

// "-" on the first two places is all ones; on the others 0xFF.
TEST(Base64, GoesOnBehindForeignCharacters) {
  EXPECT_EQ(Base64Decode("-AAA"), std::string("\xFC\0\0", 3));
  EXPECT_EQ(Base64Decode("A-AA"), std::string("\x03\xF0\0", 3));
  EXPECT_EQ(Base64Decode("AA-A"), std::string("\0\x0F\xC0", 3));
  EXPECT_EQ(Base64Decode("AAA-"), std::string("\0\0\xFF", 3));
}

TEST(Base64, SkipsNoWhiteSpace) {
  // "\nYWJ" and "j": the line break is a letter of the first group.
  EXPECT_EQ(Base64Decode("\nYWJj").substr(0, 3), "\xFD\x85\x89");
}

TEST(IsHostName, TakesNamesAndNumbers) {
  for (const char* const host : {"a", "maps.example", "127.0.0.1", "my_host-2", "A.B"})
    EXPECT_TRUE(IsHostName(host)) << host;
  for (const char* const host : {"", "a b", "user@host", "host:80", "[::1]", "h\xC3\xA9", "a/b"})
    EXPECT_FALSE(IsHostName(host)) << host;
}

// Characters outside the alphabet are not the only odd ones: a group may end anywhere.
TEST(Base64, TakesSingleCharacters) {
  EXPECT_EQ(Base64Decode(""), "");
  // 'Y' is 24: 24 << 2 = 0x60, and nothing stands where b would be.
  EXPECT_EQ(Base64Decode("Y"), "\x60");
  EXPECT_EQ(Base64Decode("YQ"), "a");
  // A "=" on the first two places is like any other foreign character, and the end only behind.
  EXPECT_EQ(Base64Decode("=A=="), "\xFC");
}

// The head is lost at the other scheme, but only that of plain HTTP.
TEST(SplitUrl, LooksForPlainHttpFirst) {
  const SplitResult kept = Split("http://a:81/b?to=https://c:82/d");
  EXPECT_EQ(kept.host, "a");
  EXPECT_EQ(kept.path, "b?to=https://c:82/d");
  EXPECT_EQ(kept.port, 81);
  EXPECT_FALSE(kept.secure);
  const SplitResult lost = Split("mailto:https://c/d");
  EXPECT_EQ(lost.host, "c");
  EXPECT_EQ(lost.path, "d");
  EXPECT_EQ(lost.port, 443);
  EXPECT_TRUE(lost.secure);
}

}  // namespace
