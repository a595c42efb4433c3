// MD5 message digest (RFC 1321).
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace oscar {

// Incremental MD5: feed bytes with Update, then take the 16-byte digest.
class Md5 {
  public:
    Md5();
    void Update(std::string_view bytes);
    // The raw 16-byte digest (A, B, C, D, each least significant byte first).
    // The object must not be updated afterwards.
    std::string Finish();

  private:
    void Transform(const unsigned char* block);

    std::array<std::uint32_t, 4> state_;
    std::array<unsigned char, 64> buffer_{};
    std::uint64_t length_ = 0;  // bytes fed so far
};

// The raw 16-byte digest of `bytes`.
std::string MD5Digest(std::string_view bytes);

}  // namespace oscar
