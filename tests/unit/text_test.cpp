#include "base/text.h"

#include <gtest/gtest.h>

namespace quorvex {
namespace {

TEST(Text, CutsAtCharactersAndNotWithinThem) {
  EXPECT_EQ(FirstCharacters("abc", 2), "ab");
  EXPECT_EQ(FirstCharacters("abc", 9), "abc");
  EXPECT_EQ(FirstCharacters("\xC3\xA9\xE6\x97\xA5\xF0\x9F\x8E\xB5x", 3),
            "\xC3\xA9\xE6\x97\xA5\xF0\x9F\x8E\xB5");
  EXPECT_EQ(FirstCharacters("\xE9\xE8x", 2), "\xE9\xE8") << "bytes of an old code page count one by one";
  EXPECT_EQ(FirstCharacters("a\xE6\x97", 2), "a\xE6") << "a character that is cut short is none";
}

TEST(Text, KnowsUtf8FromOtherEncodings) {
  EXPECT_TRUE(IsUtf8("plain, \xC3\xA9, \xE6\x97\xA5, \xF0\x9F\x8E\xB5"));
  EXPECT_FALSE(IsUtf8("caf\xE9"));
  EXPECT_FALSE(IsUtf8("\xC0\x80"));
  EXPECT_FALSE(IsUtf8("\xE6\x97"));
}

TEST(Text, ComparesNamesWithoutCaseOfAsciiLetters) {
  EXPECT_TRUE(EqualNoCase("CD List", "cd lIST"));
  EXPECT_FALSE(EqualNoCase("CD List", "CD Lis"));
  EXPECT_FALSE(EqualNoCase("@", "`")) << "only letters have a case";
}

TEST(Text, ReadsLeadingDigitsOnly) {
  EXPECT_EQ(LeadingNumber("12a"), 12);
  EXPECT_EQ(LeadingNumber("x"), 0);
  EXPECT_EQ(LeadingNumber("-3"), 0);
  EXPECT_EQ(LeadingNumber("2147483647"), 2147483647);
  EXPECT_EQ(LeadingNumber("2147483648"), 0);
  EXPECT_EQ(LeadingNumber(std::string(4000, '9')), 0);
}

}  // namespace
}  // namespace quorvex
