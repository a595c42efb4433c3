// Reading numbers out of text the way the program's fields and servers
// write them.
#pragma once

#include <string_view>

namespace oscar {

// The number made by the leading digits of `text` (after leading spaces),
// 0 when there are none. Stops before it would overflow.
long long LeadingNumber(std::string_view text);

}  // namespace oscar
