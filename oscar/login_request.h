// The MD5 sign-on: the login digest and the login request that carries it.
#pragma once

#include <string>
#include <string_view>

namespace oscar {

// The client's identification, sent in the login request.
inline constexpr std::string_view kClientIdentification =
    "AOL Instant Messenger, version 5.5.3599/WIN32";

// MD5(key + MD5(password) + "AOL Instant Messenger (SM)"), 16 raw bytes.
std::string LoginHash(std::string_view key, std::string_view password);

// The whole login-request SNAC (0017/0002) with its thirteen TLVs. The screen
// name goes out exactly as typed. Empty when the screen name is too long for
// its length field.
std::string BuildLoginRequest(std::string_view screenName, std::string_view password,
                              std::string_view key);

}  // namespace oscar
