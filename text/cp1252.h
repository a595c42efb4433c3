// Windows-1252 and Unicode: the one table between the program's 8-bit text
// and everything that speaks Unicode (chat lines labelled UTF-16 or UTF-8,
// the window's widgets, the leaderboard page and the history's CSV).
#pragma once

#include <string>
#include <string_view>

namespace text {

// The character of a Windows-1252 byte. The five bytes the code page leaves
// undefined keep their own value, as Windows converts them.
char16_t ToUnicode(unsigned char byte);

// The Windows-1252 byte of a character; '?' where the code page has none.
char FromUnicode(char32_t code);

// UTF-8 for readers outside the program (a web page, a CSV file): the
// undefined bytes become U+FFFD, the replacement character.
std::string Utf8FromCp1252(std::string_view cp1252);

}  // namespace text
