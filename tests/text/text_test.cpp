#include "text/text.h"

#include <gtest/gtest.h>

namespace text {
namespace {

TEST(StripTags, RemovesClosedTagsAndKeepsStrayBrackets) {
    EXPECT_EQ(StripTags("<html><body bgcolor=\"000000\"><font color=\"00bfff\">Paris</font>"),
              "Paris");
    EXPECT_EQ(StripTags("a<<b>>c"), "a>c");
    EXPECT_EQ(StripTags("x<>y"), "xy");
    EXPECT_EQ(StripTags("2 > 1 <i>yes</i>"), "2 > 1 yes");
    EXPECT_EQ(StripTags("<b>bold</b> and <unclosed"), "bold and <unclosed");
}

TEST(Names, NormalizeToLowerCaseWithoutSpaces) {
    EXPECT_EQ(NormalizeName("  Some  Body 1"), "somebody1");
    // Windows-1252 capitals fold too: É, Š, Ÿ; the multiplication sign is
    // not a letter.
    EXPECT_EQ(NormalizeName("\xC9t\x8A \x9F"), "\xE9t\x9A\xFF");
    EXPECT_EQ(LowerCase("\xD7"), "\xD7");
}

TEST(TrimSpaces, TrimsSpacesOnly) {
    EXPECT_EQ(std::tuple(TrimSpaces("  new york  "), TrimSpaces("   "), TrimSpaces("\tx\t")),
              std::tuple("new york", "", "\tx\t"));
}

}  // namespace
}  // namespace text
