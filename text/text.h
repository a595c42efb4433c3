// Text helpers shared by the client, the game and the window. Text is 8-bit
// Windows-1252, one byte per char, exactly as it travels in packets.
#pragma once

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

}  // namespace text
