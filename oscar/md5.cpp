#include "oscar/md5.h"

#include <cstring>

namespace oscar {

namespace {

// Per-round shift amounts and the sine-derived constants of RFC 1321.
constexpr std::uint32_t kShift[64] = {
    7,  12, 17, 22, 7,  12, 17, 22, 7,  12, 17, 22, 7,  12, 17, 22, 5,  9,  14, 20, 5,  9,
    14, 20, 5,  9,  14, 20, 5,  9,  14, 20, 4,  11, 16, 23, 4,  11, 16, 23, 4,  11, 16, 23,
    4,  11, 16, 23, 6,  10, 15, 21, 6,  10, 15, 21, 6,  10, 15, 21, 6,  10, 15, 21,
};

constexpr std::uint32_t kSine[64] = {
    0xd76aa478, 0xe8c7b756, 0x242070db, 0xc1bdceee, 0xf57c0faf, 0x4787c62a, 0xa8304613, 0xfd469501,
    0x698098d8, 0x8b44f7af, 0xffff5bb1, 0x895cd7be, 0x6b901122, 0xfd987193, 0xa679438e, 0x49b40821,
    0xf61e2562, 0xc040b340, 0x265e5a51, 0xe9b6c7aa, 0xd62f105d, 0x02441453, 0xd8a1e681, 0xe7d3fbc8,
    0x21e1cde6, 0xc33707d6, 0xf4d50d87, 0x455a14ed, 0xa9e3e905, 0xfcefa3f8, 0x676f02d9, 0x8d2a4c8a,
    0xfffa3942, 0x8771f681, 0x6d9d6122, 0xfde5380c, 0xa4beea44, 0x4bdecfa9, 0xf6bb4b60, 0xbebfbc70,
    0x289b7ec6, 0xeaa127fa, 0xd4ef3085, 0x04881d05, 0xd9d4d039, 0xe6db99e5, 0x1fa27cf8, 0xc4ac5665,
    0xf4292244, 0x432aff97, 0xab9423a7, 0xfc93a039, 0x655b59c3, 0x8f0ccc92, 0xffeff47d, 0x85845dd1,
    0x6fa87e4f, 0xfe2ce6e0, 0xa3014314, 0x4e0811a1, 0xf7537e82, 0xbd3af235, 0x2ad7d2bb, 0xeb86d391,
};

std::uint32_t RotateLeft(std::uint32_t x, std::uint32_t n) {
    return (x << n) | (x >> (32 - n));
}

std::uint32_t LoadLittleEndian(const unsigned char* p) {
    return static_cast<std::uint32_t>(p[0]) | static_cast<std::uint32_t>(p[1]) << 8 |
           static_cast<std::uint32_t>(p[2]) << 16 | static_cast<std::uint32_t>(p[3]) << 24;
}

}  // namespace

Md5::Md5() : state_{0x67452301, 0xefcdab89, 0x98badcfe, 0x10325476} {}

void Md5::Transform(const unsigned char* block) {
    std::uint32_t x[16];
    for (int i = 0; i < 16; ++i)
        x[i] = LoadLittleEndian(block + 4 * i);

    std::uint32_t a = state_[0], b = state_[1], c = state_[2], d = state_[3];
    for (int i = 0; i < 64; ++i) {
        std::uint32_t f;
        int k;
        if (i < 16) {  // FF
            f = (b & c) | (~b & d);
            k = i;
        } else if (i < 32) {  // GG
            f = (b & d) | (c & ~d);
            k = (5 * i + 1) % 16;
        } else if (i < 48) {  // HH
            f = b ^ c ^ d;
            k = (3 * i + 5) % 16;
        } else {  // II
            f = c ^ (b | ~d);
            k = (7 * i) % 16;
        }
        const std::uint32_t rotated = b + RotateLeft(a + f + kSine[i] + x[k], kShift[i]);
        a = d;
        d = c;
        c = b;
        b = rotated;
    }
    state_[0] += a;
    state_[1] += b;
    state_[2] += c;
    state_[3] += d;
}

void Md5::Update(std::string_view bytes) {
    auto data = reinterpret_cast<const unsigned char*>(bytes.data());
    std::size_t size = bytes.size();
    std::size_t used = length_ % 64;
    length_ += size;

    if (used > 0) {
        const std::size_t take = std::min(size, 64 - used);
        std::memcpy(buffer_.data() + used, data, take);
        data += take;
        size -= take;
        if (used + take < 64) return;
        Transform(buffer_.data());
    }
    for (; size >= 64; data += 64, size -= 64)
        Transform(data);
    if (size > 0) std::memcpy(buffer_.data(), data, size);
}

std::string Md5::Finish() {
    const std::uint64_t bits = length_ * 8;
    const std::size_t used = length_ % 64;
    const std::size_t padding = used < 56 ? 56 - used : 120 - used;
    std::string tail(padding + 8, '\0');
    tail[0] = static_cast<char>(0x80);
    for (int i = 0; i < 8; ++i)
        tail[padding + i] = static_cast<char>(bits >> (8 * i));
    Update(tail);

    std::string digest(16, '\0');
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; ++j)
            digest[4 * i + j] = static_cast<char>(state_[i] >> (8 * j));
    }
    return digest;
}

std::string MD5Digest(std::string_view bytes) {
    Md5 md5;
    md5.Update(bytes);
    return md5.Finish();
}

}  // namespace oscar
