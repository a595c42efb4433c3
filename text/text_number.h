// Reading numbers out of text the way the program's fields and servers
// write them.
#pragma once

#include <string_view>

namespace text {

// The number made by the leading digits of `text` (after leading spaces),
// 0 when there are none. Stops before it would overflow.
long long LeadingNumber(std::string_view text);

}  // namespace text

namespace text {

// The leading number of `text` after leading blanks, sign and decimal
// fraction included ("9.5x" gives 9.5, "-1" gives -1); 0 when the text does
// not start with a number.
double LeadingDecimal(std::string_view text);

// LeadingDecimal rounded to the nearest whole number, halves to even, as
// numbers typed by the operator are read ("9.5" gives 10, "2.5" gives 2).
long long WholeNumber(std::string_view text);

}  // namespace text
