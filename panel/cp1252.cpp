#include "panel/cp1252.h"

namespace {

// 0x80..0x9F; 0 marks the five codes Windows-1252 leaves undefined, which are
// shown as the control characters of the same value.
constexpr char16_t kHigh[32] = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178,
};

}  // namespace

QString FromCp1252(const std::string& bytes) {
    QString text;
    text.reserve(static_cast<qsizetype>(bytes.size()));
    for (unsigned char b : bytes) {
        const char16_t high = b >= 0x80 && b <= 0x9F ? kHigh[b - 0x80] : 0;
        text.append(QChar(high ? high : char16_t{b}));
    }
    return text;
}

std::string ToCp1252(const QString& text) {
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(text.size()));
    for (QChar c : text) {
        const char16_t u = c.unicode();
        if (u < 0x80 || (u >= 0xA0 && u <= 0xFF)) {
            bytes.push_back(static_cast<char>(u));
            continue;
        }
        char out = '?';
        for (int i = 0; i < 32; ++i) {
            if (kHigh[i] == u || (kHigh[i] == 0 && u == 0x80 + i))
                out = static_cast<char>(0x80 + i);
        }
        bytes.push_back(out);
    }
    return bytes;
}
