// Text helpers shared by the client, the game and the window. Text is 8-bit
// Windows-1252, one byte per char, exactly as it travels in packets.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace text {

// Lower case in Windows-1252: A-Z, the accented capitals and the four
// capitals of the 0x80 row (Š Œ Ž Ÿ).
std::string LowerCase(std::string_view text);

// Leading and trailing spaces removed; spaces only, not tabs or line breaks.
std::string TrimSpaces(std::string_view text);

// Lower case with every space removed: how screen names, ops and topic names
// are compared ("My Name 1" -> "myname1").
std::string NormalizeName(std::string_view text);

// Every run from a '<' to the next '>' removed. A '>' before the first '<'
// stays, and so does an unclosed '<' with everything after it. Entities are
// left as they are.
std::string StripTags(std::string_view text);

// The longest screen name taken from a chat command.
inline constexpr std::size_t kMaxScreenName = 32;

// Whether `name` can be a screen name: 1 to kMaxScreenName characters, each a
// letter (Windows-1252 letters included), a digit, a space or one of "@._-".
// Control characters, markup, colons and the like never are: names end up in
// the bot's own lines and, one per line, in the settings file.
bool IsScreenName(std::string_view name);

// "<", ">", "&" and '"' written as entities, so that text from elsewhere
// shows as written inside a line of markup.
std::string EscapeMarkup(std::string_view text);

// Every control character (below 0x20, and 0x7F) written in caret notation
// ("^M" for CR, "^J" for LF), so that text from the room always shows as
// the one line it was and cannot pass for lines of its own.
std::string VisibleControls(std::string_view text);

}  // namespace text
