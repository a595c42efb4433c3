// The character sets of chat text. The program's text is Windows-1252; a
// chat line travels labelled with the narrowest set that holds it, and lines
// from other clients arrive in whatever set their label names.
#pragma once

#include <string>
#include <string_view>

namespace oscar {

struct LabelledText {
    std::string charset;  // "us-ascii", "iso-8859-1" or "unicode-2-0"
    std::string bytes;    // the text in that set (UTF-16BE for unicode-2-0)
};

// us-ascii when every byte is below 0x80; iso-8859-1 when every character
// is also a Latin-1 one (Windows-1252 differs from Latin-1 only in
// 0x80-0x9F); else unicode-2-0.
LabelledText LabelChatText(std::string_view cp1252);

// The Windows-1252 text of `bytes` labelled `charset` (case ignored):
// unicode-2-0 is UTF-16BE and utf-8 is UTF-8, each converted with '?' for
// characters Windows-1252 cannot hold; any other label leaves the bytes as
// they are.
std::string DecodeChatText(std::string_view bytes, std::string_view charset);

}  // namespace oscar
