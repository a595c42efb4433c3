#include "oscar/charset.h"

#include <algorithm>
#include <cstdint>

#include "text/cp1252.h"

namespace oscar {

namespace {

using text::FromUnicode;
using text::ToUnicode;

std::string FromUtf16(std::string_view bytes) {
    std::string text;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const char32_t unit =
            static_cast<unsigned char>(bytes[i]) << 8 | static_cast<unsigned char>(bytes[i + 1]);
        const bool high = unit >= 0xD800 && unit <= 0xDBFF;
        const bool nextLow =
            i + 3 < bytes.size() && (static_cast<unsigned char>(bytes[i + 2]) & 0xFC) == 0xDC;
        // A pair stands for one character beyond the 16-bit range: one '?'.
        if (high && nextLow) i += 2;
        text.push_back(unit >= 0xD800 && unit <= 0xDFFF ? '?' : FromUnicode(unit));
    }
    // An odd byte at the end is half a character.
    if (bytes.size() % 2 != 0) text.push_back('?');
    return text;
}

std::string FromUtf8(std::string_view bytes) {
    std::string text;
    for (std::size_t i = 0; i < bytes.size();) {
        const auto lead = static_cast<unsigned char>(bytes[i]);
        const int extra = lead < 0x80    ? 0
                          : lead >= 0xF0 ? 3
                          : lead >= 0xE0 ? 2
                          : lead >= 0xC0 ? 1
                                         : -1;
        if (extra < 0 || i + static_cast<std::size_t>(extra) >= bytes.size()) {
            text.push_back('?');
            ++i;
            continue;
        }
        char32_t code = extra == 0 ? lead : lead & (0x3F >> extra);
        bool valid = true;
        for (int k = 1; k <= extra; ++k) {
            const auto next = static_cast<unsigned char>(bytes[i + static_cast<std::size_t>(k)]);
            valid = valid && (next & 0xC0) == 0x80;
            code = code << 6 | (next & 0x3F);
        }
        if (!valid) {
            text.push_back('?');
            ++i;
            continue;
        }
        text.push_back(FromUnicode(code));
        i += static_cast<std::size_t>(extra) + 1;
    }
    return text;
}

bool SameLabel(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
        return (x >= 'A' && x <= 'Z' ? x + 32 : x) == (y >= 'A' && y <= 'Z' ? y + 32 : y);
    });
}

}  // namespace

LabelledText LabelChatText(std::string_view cp1252) {
    const auto byteAt = [](char c) { return static_cast<unsigned char>(c); };
    if (std::all_of(cp1252.begin(), cp1252.end(), [&](char c) { return byteAt(c) < 0x80; })) {
        return {"us-ascii", std::string(cp1252)};
    }
    if (std::all_of(cp1252.begin(), cp1252.end(),
                    [&](char c) { return ToUnicode(byteAt(c)) <= 0xFF; })) {
        return {"iso-8859-1", std::string(cp1252)};
    }
    std::string utf16;
    utf16.reserve(cp1252.size() * 2);
    for (char c : cp1252) {
        const char16_t code = ToUnicode(byteAt(c));
        utf16.push_back(static_cast<char>(code >> 8));
        utf16.push_back(static_cast<char>(code & 0xFF));
    }
    return {"unicode-2-0", utf16};
}

std::string DecodeChatText(std::string_view bytes, std::string_view charset) {
    if (SameLabel(charset, "unicode-2-0")) return FromUtf16(bytes);
    if (SameLabel(charset, "utf-8")) return FromUtf8(bytes);
    return std::string(bytes);
}

}  // namespace oscar
