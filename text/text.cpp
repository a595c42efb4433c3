#include "text/text.h"

namespace text {

namespace {

char LowerChar(char c) {
    const auto b = static_cast<unsigned char>(c);
    if ((b >= 'A' && b <= 'Z') || (b >= 0xC0 && b <= 0xDE && b != 0xD7)) {
        return static_cast<char>(b + 0x20);
    }
    switch (b) {
        case 0x8A:  // Š
        case 0x8C:  // Œ
        case 0x8E:  // Ž
            return static_cast<char>(b + 0x10);
        case 0x9F:  // Ÿ
            return static_cast<char>(0xFF);
        default:
            return c;
    }
}

}  // namespace

std::string LowerCase(std::string_view text) {
    std::string lower(text);
    for (char& c : lower)
        c = LowerChar(c);
    return lower;
}

std::string TrimSpaces(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    const auto last = text.find_last_not_of(' ');
    return std::string(text.substr(first, last - first + 1));
}

std::string NormalizeName(std::string_view text) {
    std::string name;
    name.reserve(text.size());
    for (char c : text) {
        if (c != ' ') name.push_back(LowerChar(c));
    }
    return name;
}

std::string StripTags(std::string_view text) {
    // One pass gives the same result as removing the first tag over and over:
    // after a removal nothing before the removed tag holds a '<'.
    std::string out;
    out.reserve(text.size());
    std::size_t pos = 0;
    while (pos < text.size()) {
        const auto open = text.find('<', pos);
        const auto close = open == std::string_view::npos ? open : text.find('>', open + 1);
        if (close == std::string_view::npos) break;
        out.append(text.substr(pos, open - pos));
        pos = close + 1;
    }
    out.append(text.substr(std::min(pos, text.size())));
    return out;
}

namespace {

bool ScreenNameChar(unsigned char c) {
    if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')) return true;
    switch (c) {
        case ' ':
        case '@':
        case '.':
        case '_':
        case '-':
        case 0x8A:  // Š š Œ œ Ž ž Ÿ
        case 0x9A:
        case 0x8C:
        case 0x9C:
        case 0x8E:
        case 0x9E:
        case 0x9F:
            return true;
        default:
            // The accented letters, less the multiplication and division signs.
            return c >= 0xC0 && c != 0xD7 && c != 0xF7;
    }
}

}  // namespace

bool IsScreenName(std::string_view name) {
    if (name.empty() || name.size() > kMaxScreenName) return false;
    for (char c : name) {
        if (!ScreenNameChar(static_cast<unsigned char>(c))) return false;
    }
    return true;
}

std::string EscapeMarkup(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (char c : text) {
        switch (c) {
            case '<':
                out += "&lt;";
                break;
            case '>':
                out += "&gt;";
                break;
            case '&':
                out += "&amp;";
                break;
            case '"':
                out += "&quot;";
                break;
            default:
                out.push_back(c);
        }
    }
    return out;
}

std::string VisibleControls(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (char c : text) {
        const auto b = static_cast<unsigned char>(c);
        if (b < 0x20 || b == 0x7F) {
            out.push_back('^');
            out.push_back(static_cast<char>(b ^ 0x40));
        } else {
            out.push_back(c);
        }
    }
    return out;
}

}  // namespace text
