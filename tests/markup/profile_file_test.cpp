#include "markup/profile_file.h"

#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

namespace {

using std::string_literals::operator""s;

std::string Text(std::string_view bytes, std::string_view section, std::string_view key,
                 ProfileText unmarked = ProfileText::kNarrow) {
  return ProfileFile(bytes, unmarked).Section(section).GetText(key);
}

TEST(ProfileFile, FindsValuesOfSections) {
  const std::string file = "[One]\r\nkey=first\r\n[Two]\nkey=second\nother=third";
  EXPECT_EQ(Text(file, "One", "key"), "first");
  EXPECT_EQ(Text(file, "Two", "key"), "second");
  EXPECT_EQ(Text(file, "Two", "other"), "third");
  EXPECT_EQ(Text(file, "One", "other"), "R_ERROR");
  EXPECT_EQ(Text(file, "Three", "key"), "R_ERROR");
}

TEST(ProfileFile, TakesTheDefaultOfTheCaller) {
  const ProfileFile file("[a]\nb=\n", ProfileText::kNarrow);
  EXPECT_EQ(file.Section("a").GetText("c", "none"), "none");
  EXPECT_EQ(file.Section("x").GetText("b", ""), "");
  EXPECT_EQ(file.Section("a").GetText("b", "none"), "");
}

TEST(ProfileFile, ComparesNamesWithoutCase) {
  EXPECT_EQ(Text("[cLIENT]\nReQuest=TRUE\n", "CLIENT", "REQUEST"), "TRUE");
  EXPECT_EQ(Text("[CLIENT]\nREQUEST=TRUE\n", "client", "request"), "TRUE");
  EXPECT_EQ(Text("[Z[]\nk@=v\n", "z{", "k@"), "R_ERROR");
}

TEST(ProfileFile, CutsBlanksAroundNamesAndValues) {
  EXPECT_EQ(Text(" \t[ a b ] \n \tkey one\t =\t value two \t\r\n", "a b", "key one"), "value two");
}

TEST(ProfileFile, CutsOnePairOfQuotes) {
  const std::string file =
      "[s]\n1=\"  two \"\n2='x'\n3=\"\"y\"\"\n4=\"open\n5='mixed\"\n6=\"\n7=\"\"\n8=a \"b\" c\n";
  EXPECT_EQ(Text(file, "s", "1"), "  two ");
  EXPECT_EQ(Text(file, "s", "2"), "x");
  EXPECT_EQ(Text(file, "s", "3"), "\"y\"");
  EXPECT_EQ(Text(file, "s", "4"), "\"open");
  EXPECT_EQ(Text(file, "s", "5"), "'mixed\"");
  EXPECT_EQ(Text(file, "s", "6"), "\"");
  EXPECT_EQ(Text(file, "s", "7"), "");
  EXPECT_EQ(Text(file, "s", "8"), "a \"b\" c");
}

TEST(ProfileFile, SkipsCommentsAndLinesWithoutValue) {
  const std::string file = "k=outside\n[s]\n;k=one\n  ;k=two\nk\n\n[half\nk=three;kept\n";
  EXPECT_EQ(Text(file, "s", "k"), "three;kept");
  EXPECT_EQ(Text(file, "s", ";k"), "R_ERROR");
  EXPECT_EQ(Text(file, "half", "k"), "R_ERROR");
  EXPECT_EQ(Text(";[a]\nk=v\n", "a", "k"), "R_ERROR");
}

TEST(ProfileFile, CutsAtTheFirstEqualsSign) {
  EXPECT_EQ(Text("[s]\na=b=c\n", "s", "a"), "b=c");
  EXPECT_EQ(Text("[s]\n=v\n", "s", ""), "v");
}

TEST(ProfileFile, TheFirstOfEqualNamesCounts) {
  const std::string file = "[s]\nk=one\nK=two\nb=x\nk=three\n[S]\nk=four\nonly=here\n";
  EXPECT_EQ(Text(file, "s", "k"), "one");
  EXPECT_EQ(Text(file, "s", "b"), "x");
  EXPECT_EQ(Text(file, "S", "only"), "R_ERROR");
}

TEST(ProfileFile, FindsNamesInAnyOrder) {
  const ProfileFile file("[s]\nz=1\nb10=2\nb9=3\na=4\nb10=5\nbb=6\n", ProfileText::kNarrow);
  const ProfileSection section = file.Section("s");
  EXPECT_EQ(section.GetText("z"), "1");
  EXPECT_EQ(section.GetText("b10"), "2");
  EXPECT_EQ(section.GetText("b9"), "3");
  EXPECT_EQ(section.GetText("a"), "4");
  EXPECT_EQ(section.GetText("bb"), "6");
  EXPECT_EQ(section.GetText("b"), "R_ERROR");
  ASSERT_EQ(section.Keys().Entries().size(), 5u);
  EXPECT_EQ(section.Keys().Entries()[0].name, "a");
  EXPECT_EQ(section.Keys().Entries()[4].name, "b10");
}

TEST(ProfileFile, FindsNamesWhateverWasLookedUpBefore) {
  const ProfileFile file("[s]\nk1=a\nk2=b\nk3=c\n", ProfileText::kNarrow);
  const ProfileSection section = file.Section("s");
  const std::pair<const char*, const char*> lookUps[] = {
      {"k1", "a"}, {"k2", "b"},      {"K3", "c"}, {"k4", "R_ERROR"}, {"k3", "c"},
      {"k3", "c"}, {"k2", "b"},      {"k1", "a"}, {"k3", "c"},       {"k0", "R_ERROR"},
      {"k1", "a"}, {"k", "R_ERROR"}, {"k2", "b"}};
  for (const auto& [key, value] : lookUps) EXPECT_EQ(section.GetText(key), value) << key;
}

TEST(ProfileFile, WidensTextWithoutAMark) {
  const std::string latin = "[s]\nk=Caf\xE9\n";
  const std::string utf8 = "[s]\nk=Caf\xC3\xA9\n";
  EXPECT_EQ(Text(latin, "s", "k", ProfileText::kNarrow), "Caf\u00e9");
  EXPECT_EQ(Text(latin, "s", "k", ProfileText::kUtf8OrNarrow), "Caf\u00e9");
  EXPECT_EQ(Text(utf8, "s", "k", ProfileText::kNarrow), "Caf\u00c3\u00a9");
  EXPECT_EQ(Text(utf8, "s", "k", ProfileText::kUtf8OrNarrow), "Caf\u00e9");
  // One byte that is no UTF-8 decides for the whole file.
  EXPECT_EQ(Text(utf8 + "x=\xFF\n", "s", "k", ProfileText::kUtf8OrNarrow), "Caf\u00c3\u00a9");
}

TEST(ProfileFile, UnderstandsMarks) {
  const std::string utf8 = "\xEF\xBB\xBF[s]\nk=Caf\xC3\xA9\n";
  EXPECT_EQ(Text(utf8, "s", "k", ProfileText::kNarrow), "Caf\u00e9");
  const std::string littleEndian = "\xFF\xFE[\0s\0]\0\r\0\n\0k\0=\0\x51\x01\r\0\n\0"s;
  EXPECT_EQ(Text(littleEndian, "s", "k", ProfileText::kNarrow), "\u0151");
  const std::string bigEndian = "\xFE\xFF\0[\0s\0]\0\n\0k\0=\x01\x51"s;
  EXPECT_EQ(Text(bigEndian, "s", "k", ProfileText::kUtf8OrNarrow), "\u0151");
}

TEST(ProfileFile, ReadsOddFiles) {
  for (const std::string& odd : {""s, "["s, "]"s, "[]"s, "="s, "\n"s, "\r"s, "\xFF\xFE"s, "\xFF"s,
                                 "\xEF\xBB\xBF"s, "[s]"s, "[s]\n\0"s, "\0[s]\nk=v"s})
    EXPECT_EQ(Text(odd, "s", "k"), "R_ERROR") << odd;
  EXPECT_EQ(Text("[]\nk=v", "", "k"), "v");
  EXPECT_EQ(Text("[s]\nk=a\0b\n"s, "s", "k"), "a\0b"s);
  const std::string blanks(1 << 20, ' ');
  EXPECT_EQ(Text("[s]\n" + blanks + "k" + blanks + "=" + blanks + "v" + blanks, "s", "k"), "v");
}

TEST(ProfileFile, TakesAHundredThousandSectionsAndKeysInAnyOrder) {
  std::string file;
  for (int i = 100000; i-- > 0;)
    file += "[" + std::to_string(i) + "]\nn=" + std::to_string(i) + "\n";
  file += "[keys]\n";
  for (int i = 100000; i-- > 0;) file += "k" + std::to_string(i) + "=" + std::to_string(i) + "\n";
  const ProfileFile profile(file, ProfileText::kNarrow);
  const ProfileSection keys = profile.Section("keys");
  for (int i = 0; i < 100000; ++i) {
    const std::string number = std::to_string(i);
    ASSERT_EQ(profile.Section(number).GetText("n"), number);
    ASSERT_EQ(keys.GetText("K" + number), number);
  }
}

}  // namespace
