#include "oscar/text_number.h"

namespace oscar {

long long LeadingNumber(std::string_view text) {
    std::size_t i = text.find_first_not_of(' ');
    long long value = 0;
    for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
        if (value > 100000000000LL) break;
        value = value * 10 + (text[i] - '0');
    }
    return value;
}

}  // namespace oscar
