// Reading pieces of an incoming frame by 1-based byte position, as the
// handlers describe them. A read past the end gives an empty piece or
// nullopt, never a fault, so a short or garbled frame only leaves fields
// unset.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace oscar {

// Bytes from 1-based position `pos` to the end (empty past the end).
inline std::string_view From(std::string_view frame, std::size_t pos) {
    return pos >= 1 && pos <= frame.size() ? frame.substr(pos - 1) : std::string_view();
}

// Up to `count` bytes from 1-based position `pos`.
inline std::string_view Piece(std::string_view frame, std::size_t pos, std::size_t count) {
    return From(frame, pos).substr(0, count);
}

// The byte at 1-based position `pos`.
inline std::optional<unsigned char> ByteAt(std::string_view frame, std::size_t pos) {
    if (pos < 1 || pos > frame.size()) return std::nullopt;
    return static_cast<unsigned char>(frame[pos - 1]);
}

// The SNAC data of a channel-2 frame: everything from position 17.
inline std::string SnacData(std::string_view frame) {
    return std::string(From(frame, 17));
}

// The flags' high byte (position 11) says an optional block comes first.
inline bool HasOptionalBlock(std::string_view frame) {
    return ByteAt(frame, 11) == 0x80;
}

}  // namespace oscar
