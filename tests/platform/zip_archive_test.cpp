#include "platform/zip_archive.h"

#include <gtest/gtest.h>

#include "tests/stopped_clock.h"
#include "tests/zip_bytes.h"

namespace {

// What an entry unpacks to, read by a few bytes at a time.
std::optional<std::string> Content(ZipArchive& archive, size_t index) {
  if (!archive.Open(index)) return std::nullopt;
  std::string content;
  for (;;) {
    char piece[7];
    const std::optional<size_t> count = archive.Read(piece, sizeof piece);
    if (!count) return std::nullopt;
    if (*count == 0) return content;
    content.append(piece, *count);
  }
}

TEST(ZipArchive, GivesNamesAndContents) {
  const std::string large(100000, 'x');
  const std::string bytes =
      ZipBytes({{"doc.kml", "first"}, {"files/", ""}, {"files/é.png", large}, {"empty", ""}});
  const auto archive = OpenZipArchive(bytes);
  ASSERT_TRUE(archive);
  ASSERT_EQ(archive->Count(), 4u);
  EXPECT_EQ(archive->Name(0), "doc.kml");
  EXPECT_EQ(archive->Name(1), "files/");
  EXPECT_EQ(archive->Name(2), "files/é.png");
  EXPECT_EQ(Content(*archive, 0), "first");
  EXPECT_TRUE(Content(*archive, 2) == large);
  EXPECT_LT(archive->PackedSize(2), 1000u);
  EXPECT_EQ(Content(*archive, 3), "");
  EXPECT_EQ(Content(*archive, 0), "first");
}

TEST(ZipArchive, IsMadeAtAnyTime) {
  // The years 0, 1970, 2038, 2108, for which the entries' own dates are too small, and 9999.
  for (const char* const now : {"-62167219200", "0", "2147483648", "4354819200", "253402300799"}) {
    const StoppedClock clock(now);
    std::string bytes;
    ASSERT_EQ(MakeZipArchive({{"a.itn", "first"}, {"b.itn", "second"}}, bytes), 0u) << now;
    const auto archive = OpenZipArchive(bytes);
    ASSERT_TRUE(archive) << now;
    EXPECT_EQ(archive->Name(1), "b.itn");
    EXPECT_EQ(Content(*archive, 1), "second");
  }
}

TEST(ZipArchive, RefusesWhatIsNoArchive) {
  for (const std::string& bytes :
       {std::string("PK\x03\x04"), std::string("<kml/>"), ZipBytes({{"a", "b"}}).substr(0, 30)})
    EXPECT_FALSE(OpenZipArchive(bytes)) << bytes;
}

TEST(ZipArchive, RefusesLockedAndMissingEntries) {
  const std::string bytes = ZipBytes({{"a", "content"}}, "secret");
  const auto archive = OpenZipArchive(bytes);
  ASSERT_TRUE(archive);
  EXPECT_EQ(archive->Count(), 1u);
  EXPECT_EQ(Content(*archive, 0), std::nullopt);
  EXPECT_EQ(Content(*archive, 1), std::nullopt);
  EXPECT_EQ(archive->Name(1), "");
  char byte = 0;
  EXPECT_EQ(archive->Read(&byte, 1), std::nullopt);
}

TEST(ZipArchive, TellsOfDamage) {
  std::string content;
  for (int i = 0; i < 1000; ++i) content += std::to_string(i * i);
  std::string bytes = ZipBytes({{"a", content}});
  bytes[200] = static_cast<char>(bytes[200] ^ 0x55);
  const auto archive = OpenZipArchive(bytes);
  ASSERT_TRUE(archive);
  EXPECT_EQ(Content(*archive, 0), std::nullopt);
}

}  // namespace
