// The program's name and web address, as the room, the profile and the
// window show them.
#pragma once

#include <string_view>

namespace game {

inline constexpr std::string_view kProductTitle = "Vexmor Scrambler 2.0";
inline constexpr std::string_view kProductSite = "http://www.vexmor.com";

}  // namespace game

namespace game {

// Where the profile's "DOWNLOAD NOW" link points.
inline constexpr std::string_view kProductDownload = "http://www.vexmor.com";
// A reference of colour codes for the Fonts panel's colour fields.
inline constexpr std::string_view kHexColorList =
    "https://developer.mozilla.org/en-US/docs/Web/CSS/color_value";
// The login server offered at start, and the one a settings load resets to:
// this machine, where the local OSCAR server or a self-hosted one answers.
inline constexpr std::string_view kDefaultLoginServer = "127.0.0.1";
inline constexpr std::string_view kSecondLoginServer = "localhost";

}  // namespace game
