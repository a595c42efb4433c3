// Cuts one connection's byte stream into whole FLAP frames: bytes in,
// frames out, no sockets. The payload length at bytes 5-6 alone decides where
// a frame ends. Each byte is copied once into the buffer and once into its
// frame, so a burst of many frames costs time in proportion to its size.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace oscar {

class FrameCutter {
  public:
    // The FLAP header: '*', channel, sequence number, payload length.
    static constexpr std::size_t kHeaderSize = 6;

    void Append(std::string_view bytes);
    // The next whole frame, header included; nullopt until one is complete.
    std::optional<std::string> Next();
    // Drops whatever is waiting (the connection closed).
    void Clear();
    // Bytes received and not yet handed out as a frame.
    std::size_t Waiting() const { return buffer_.size() - offset_; }

  private:
    std::string buffer_;
    std::size_t offset_ = 0;  // start of the first byte not handed out
};

}  // namespace oscar
