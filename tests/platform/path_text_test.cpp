#include "platform/path_text.h"

#include <string>

#include <gtest/gtest.h>

namespace {

TEST(PathText, KeepsEveryPath) {
  for (const std::string bytes : {"/home/caf\u00e9.itn", "caf\xE9.itn", "\xFF\xFE", "a\xED\xA0\x80",
                                  "\U0001F600", "", "\xC3"}) {
    EXPECT_EQ(PathBytes(WidePath(bytes)), bytes);
  }
}

TEST(PathText, ShowsUndecodableBytesAsLoneSurrogates) {
  EXPECT_EQ(WidePath("a\xE9z"), (WideString{u'a', u'\xDCE9', u'z'}));
  EXPECT_EQ(WidePath("\u00e9\U0001F600"), u"\u00e9\U0001F600");
}

}  // namespace
