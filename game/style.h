// The look of the bot's lines: an HTML prefix put before every line it sends.
#pragma once

#include <string>
#include <string_view>

namespace game {

// Wraps each argument in its fixed markup, in place, and returns the three
// joined: <html><body bgcolor="BG"><font color="FG" face="FACE">.
std::string MakeFontTag(std::string& background, std::string& color, std::string& face);

// The fields of the Fonts panel, with their defaults.
struct FontFields {
    std::string txtBGColor = "000000";
    std::string txtFontColor = "00bfff";
    std::string txtFontType = "Times New Roman";
    bool chkBold = false;
    bool chkItalics = false;
    bool chkUnderline = false;
    bool chkStrike = false;
};

class LineStyle {
  public:
    LineStyle() { cmdSetFont_Click(); }

    FontFields fields;

    // Rebuilds the prefix from the fields.
    void cmdSetFont_Click();
    // Puts the default fields back, then rebuilds the prefix.
    void cmdResetFont_Click();

    const std::string& FontChange() const { return fontChange_; }
    // The prefix followed by `text`, unescaped, no closing tags.
    std::string Styled(std::string_view text) const { return fontChange_ + std::string(text); }

  private:
    std::string fontChange_;
};

// The line announced on joining a room (without the style prefix), in
// Windows-1252: guillemets around the program's name and web address.
std::string JoinBanner();

}  // namespace game
