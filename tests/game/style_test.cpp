#include "game/style.h"

#include <gtest/gtest.h>

namespace game {
namespace {

constexpr const char* kDefaultPrefix =
    "<html><body bgcolor=\"000000\"><font color=\"00bfff\" face=\"Times New Roman\">";

TEST(LineStyle, BuildsThePrefixFromTheFieldsOnSetFont) {
    LineStyle style;
    // The text itself is the caller's: it goes after the prefix as it is.
    EXPECT_EQ(style.Styled("salt & pepper <3"), std::string(kDefaultPrefix) + "salt & pepper <3");

    style.fields.chkStrike = true;
    style.fields.chkBold = true;
    style.fields.chkUnderline = true;
    style.fields.chkItalics = true;
    style.fields.txtFontColor = "ff00ff";
    EXPECT_EQ(style.FontChange(), kDefaultPrefix) << "fields take effect on Set Font only";
    style.cmdSetFont_Click();
    EXPECT_EQ(style.FontChange(),
              "<html><body bgcolor=\"000000\"><font color=\"ff00ff\" face=\"Times New Roman\">"
              "<b><i><u><s>");

    style.cmdResetFont_Click();
    EXPECT_EQ(style.FontChange(), kDefaultPrefix);
    EXPECT_FALSE(style.fields.chkBold);
    EXPECT_EQ(style.fields.txtFontColor, "00bfff");
}

}  // namespace
}  // namespace game
