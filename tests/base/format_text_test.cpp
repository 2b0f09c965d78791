#include "base/format_text.h"

#include <gtest/gtest.h>

#include "base/text_ids.h"

namespace {

TEST(FormatText, FillsThePlaceholders) {
  EXPECT_EQ(FormatText(kTextPointCount, 12), "12 points");
  EXPECT_EQ(FormatText(kTextColumn, 3), "Column 03");
  EXPECT_EQ(FormatText(kTextWrongValue, "maybe", "AUTO_CALC", "0, 1"),
            "The value \"maybe\" of AUTO_CALC is not allowed. Allowed: 0, 1");
}

TEST(FormatText, ShowsControlCharactersAndBrokenBytesAsReplacements) {
  EXPECT_EQ(FormatText(kTextReason, "\x1B[2J \xC3\xA9 \xFF"), "Reason: \uFFFD[2J \u00E9 \uFFFD");
}

TEST(Printable, KeepsTextAndReplacesCommands) {
  EXPECT_EQ(Printable("Gr\u00FC\u00DFe"), "Gr\u00FC\u00DFe");
  EXPECT_EQ(Printable("a\nb\x7F\u0085"), "a\uFFFDb\uFFFD\uFFFD");
}

}  // namespace
