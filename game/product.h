// The program's name and web address, as the room, the profile and the
// window show them.
#pragma once

#include <string_view>

namespace game {

inline constexpr std::string_view kProductTitle = "Vexmor Scrambler 2.0";
inline constexpr std::string_view kProductSite = "http://www.vexmor.com";

}  // namespace game
