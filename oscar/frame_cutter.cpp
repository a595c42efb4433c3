#include "oscar/frame_cutter.h"

namespace oscar {

namespace {
// A buffer this large that empties is given back to the allocator.
constexpr std::size_t kKeepCapacity = 1 << 20;
}  // namespace

void FrameCutter::Append(std::string_view bytes) {
    if (offset_ > 0) {
        buffer_.erase(0, offset_);
        offset_ = 0;
    }
    buffer_.append(bytes);
}

std::optional<std::string> FrameCutter::Next() {
    const std::size_t waiting = Waiting();
    if (waiting < kHeaderSize) return std::nullopt;
    const auto* header = reinterpret_cast<const unsigned char*>(buffer_.data() + offset_);
    const std::size_t length = kHeaderSize + (std::size_t{header[4]} << 8 | header[5]);
    if (waiting < length) return std::nullopt;
    std::string frame = buffer_.substr(offset_, length);
    offset_ += length;
    if (offset_ == buffer_.size()) {
        buffer_.clear();
        offset_ = 0;
        if (buffer_.capacity() > kKeepCapacity) buffer_.shrink_to_fit();
    }
    return frame;
}

void FrameCutter::Clear() {
    buffer_.clear();
    offset_ = 0;
    if (buffer_.capacity() > kKeepCapacity) buffer_.shrink_to_fit();
}

}  // namespace oscar
