#include "io/incoming_lines.h"

#include <algorithm>
#include <string>

#include <gtest/gtest.h>

namespace {

// Hands `text` over in pieces of at most `piece` bytes.
IncomingLines Arriving(std::string_view text, size_t piece) {
  return IncomingLines([text, piece](char* data, size_t size) mutable -> std::optional<size_t> {
    const size_t count = text.copy(data, std::min(piece, size));
    text.remove_prefix(count);
    return count;
  });
}

// The lines, each behind a "|".
std::string LinesOf(IncomingLines lines) {
  std::string taken;
  for (std::string_view line; lines.Next(line);) taken.append("|").append(line);
  return taken;
}

TEST(IncomingLinesTest, SplitsAsTextIsSplitWhereverItIsCut) {
  for (const size_t piece : {size_t{1}, size_t{2}, size_t{3}, size_t{5}, size_t{100}}) {
    EXPECT_EQ(LinesOf(Arriving("", piece)), "");
    EXPECT_EQ(LinesOf(Arriving("one", piece)), "|one");
    EXPECT_EQ(LinesOf(Arriving("one\r\n\ntwo\n", piece)), "|one||two");
    EXPECT_EQ(LinesOf(Arriving("\n\r\n \rx", piece)), "||| \rx");
  }
}

TEST(IncomingLinesTest, ShowsTheStartWithoutTakingIt) {
  IncomingLines lines = Arriving(
      "\xEF\xBB\xBF"
      "a\nb",
      2);
  EXPECT_EQ(lines.Peek(4).substr(0, 4),
            "\xEF\xBB\xBF"
            "a");
  lines.Skip(3);
  EXPECT_EQ(LinesOf(std::move(lines)), "|a|b");
  EXPECT_EQ(Arriving("ab", 1).Peek(4), "ab");
}

TEST(IncomingLinesTest, TakesALineThatIsLongerThanAnyPiece) {
  const std::string longLine(300000, 'x');
  EXPECT_TRUE(LinesOf(Arriving("a\n" + longLine + "\nb", 1000)) == "|a|" + longLine + "|b");
}

TEST(IncomingLinesTest, EndsWhereTheSourceFails) {
  int calls = 0;
  IncomingLines lines([&calls](char* data, size_t) -> std::optional<size_t> {
    if (++calls > 1) return std::nullopt;
    data[0] = 'a';
    return 1;
  });
  EXPECT_EQ(LinesOf(std::move(lines)), "|a");
  EXPECT_EQ(calls, 2);
}

}  // namespace
