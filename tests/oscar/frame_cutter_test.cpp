#include "oscar/frame_cutter.h"

#include <gtest/gtest.h>

#include "oscar/encoding.h"

namespace oscar {
namespace {

std::string FrameOf(int channel, const std::string& payload) {
    return "*" + MakeByte(channel) + Word(7) + Word(static_cast<std::uint16_t>(payload.size())) +
           payload;
}

TEST(FrameCutter, GivesTheSameWholeFramesWhateverTheReadSizes) {
    // No check of the start byte: the length field alone decides; the
    // largest frame a length field can give comes whole too.
    const std::vector<std::string> frames = {FrameOf(2, "first"),
                                             FrameOf(2, std::string(0xFFFF, 'x')), FrameOf(1, "\1"),
                                             FrameOf(4, ""), HexToBytes("00000000000161")};
    std::string stream;
    for (const std::string& f : frames)
        stream += f;
    for (std::size_t piece : {stream.size(), std::size_t{1}, std::size_t{3}, std::size_t{64}}) {
        FrameCutter cutter;
        std::vector<std::string> cut;
        for (std::size_t pos = 0; pos < stream.size(); pos += piece) {
            cutter.Append(std::string_view(stream).substr(pos, piece));
            while (auto frame = cutter.Next())
                cut.push_back(*frame);
        }
        EXPECT_EQ(cut, frames) << "reads of " << piece;
        EXPECT_EQ(cutter.Waiting(), 0u);
    }
}

TEST(FrameCutter, AFragmentWaitsUntilCleared) {
    // A 4-byte fragment (a cut-short sign-off frame) waits and spoils nothing.
    FrameCutter cutter;
    cutter.Append(HexToBytes("2A040001"));
    EXPECT_FALSE(cutter.Next());
    EXPECT_EQ(cutter.Waiting(), 4u);
    cutter.Clear();
    const std::string frame = FrameOf(2, "hello");
    cutter.Append(frame);
    EXPECT_EQ(cutter.Next(), frame);
    EXPECT_FALSE(cutter.Next());
}

}  // namespace
}  // namespace oscar
