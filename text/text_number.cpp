#include "text/text_number.h"

namespace text {

long long LeadingNumber(std::string_view text) {
    std::size_t i = text.find_first_not_of(' ');
    long long value = 0;
    for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
        if (value > 100000000000LL) break;
        value = value * 10 + (text[i] - '0');
    }
    return value;
}

}  // namespace text

#include <cmath>

namespace text {

double LeadingDecimal(std::string_view text) {
    std::size_t i = text.find_first_not_of(" \t");
    if (i == std::string_view::npos) return 0;
    double sign = 1;
    if (text[i] == '+' || text[i] == '-') {
        sign = text[i] == '-' ? -1 : 1;
        ++i;
    }
    double value = 0;
    bool digits = false;
    for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
        value = value * 10 + (text[i] - '0');
        digits = true;
    }
    if (i < text.size() && text[i] == '.') {
        double scale = 0.1;
        for (++i; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i, scale /= 10) {
            value += (text[i] - '0') * scale;
            digits = true;
        }
    }
    return digits ? sign * std::min(value, 1e15) : 0;
}

long long WholeNumber(std::string_view text) {
    // nearbyint rounds halves to even in the default rounding mode.
    return static_cast<long long>(std::nearbyint(LeadingDecimal(text)));
}

}  // namespace text
