#include "text/cp1252.h"

#include <algorithm>
#include <array>

namespace text {

namespace {

// 0x80-0x9F; the undefined bytes (0x81, 0x8D, 0x8F, 0x90, 0x9D) map to
// themselves.
constexpr std::array<char16_t, 32> kHigh = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

void AppendUtf8(std::string& out, char32_t c) {
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

}  // namespace

char16_t ToUnicode(unsigned char byte) {
    return byte >= 0x80 && byte <= 0x9F ? kHigh[byte - 0x80] : byte;
}

char FromUnicode(char32_t code) {
    if (code < 0x80 || (code >= 0xA0 && code <= 0xFF)) return static_cast<char>(code);
    const auto at = std::find(kHigh.begin(), kHigh.end(), code);
    return at == kHigh.end() ? '?' : static_cast<char>(0x80 + (at - kHigh.begin()));
}

std::string Utf8FromCp1252(std::string_view cp1252) {
    std::string out;
    out.reserve(cp1252.size());
    for (const char ch : cp1252) {
        const auto byte = static_cast<unsigned char>(ch);
        const char16_t c = ToUnicode(byte);
        AppendUtf8(out, c == byte && byte >= 0x80 && byte <= 0x9F ? char32_t{0xFFFD} : c);
    }
    return out;
}

}  // namespace text
