#include "game/style.h"

#include <gtest/gtest.h>

namespace game {
namespace {

constexpr const char* kDefaultPrefix =
    "<html><body bgcolor=\"000000\"><font color=\"00bfff\" face=\"Times New Roman\">";

TEST(MakeFontTag, WrapsEachArgumentInPlace) {
    std::string bg = "ffffff", color = "ff0000", face = "Arial";
    EXPECT_EQ(MakeFontTag(bg, color, face),
              "<html><body bgcolor=\"ffffff\"><font color=\"ff0000\" face=\"Arial\">");
    EXPECT_EQ(bg, "<html><body bgcolor=\"ffffff\">");
    EXPECT_EQ(color, "<font color=\"ff0000\"");
    EXPECT_EQ(face, " face=\"Arial\">");
}

TEST(LineStyle, BuildsThePrefixFromTheFields) {
    LineStyle style;
    EXPECT_EQ(style.FontChange(), kDefaultPrefix);
    EXPECT_EQ(style.Styled("Hint: c*t"), std::string(kDefaultPrefix) + "Hint: c*t");
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

TEST(JoinBanner, NamesTheProgramBetweenGuillemets) {
    const std::string banner = JoinBanner();
    EXPECT_EQ(banner.rfind("\xAB Vexmor Scrambler 2.0, get it at http", 0), 0u);
    EXPECT_EQ(banner.substr(banner.size() - 2), " \xBB");
}

}  // namespace
}  // namespace game
