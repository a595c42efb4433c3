#include "game/style.h"

#include "game/product.h"

namespace game {

std::string MakeFontTag(std::string& background, std::string& color, std::string& face) {
    background = "<html><body bgcolor=\"" + background + "\">";
    color = "<font color=\"" + color + "\"";
    face = " face=\"" + face + "\">";
    return background + color + face;
}

void LineStyle::cmdSetFont_Click() {
    std::string background = fields.txtBGColor;
    std::string color = fields.txtFontColor;
    std::string face = fields.txtFontType;
    fontChange_ = MakeFontTag(background, color, face);
    if (fields.chkBold) fontChange_ += "<b>";
    if (fields.chkItalics) fontChange_ += "<i>";
    if (fields.chkUnderline) fontChange_ += "<u>";
    if (fields.chkStrike) fontChange_ += "<s>";
}

void LineStyle::cmdResetFont_Click() {
    fields = FontFields{};
    cmdSetFont_Click();
}

std::string JoinBanner() {
    // 0xAB and 0xBB are the guillemets in Windows-1252.
    return "\xAB " + std::string(kProductTitle) + ", get it at " + std::string(kProductSite) +
           " \xBB";
}

}  // namespace game
