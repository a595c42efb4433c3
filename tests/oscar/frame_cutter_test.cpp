#include "oscar/frame_cutter.h"

#include <gtest/gtest.h>

#include "oscar/encoding.h"

namespace oscar {
namespace {

std::string FrameOf(int channel, const std::string& payload) {
    return "*" + MakeByte(channel) + Word(7) + Word(static_cast<std::uint16_t>(payload.size())) +
           payload;
}

std::vector<std::string> Drain(FrameCutter& cutter) {
    std::vector<std::string> frames;
    while (auto frame = cutter.Next())
        frames.push_back(*frame);
    return frames;
}

const std::string kStream = FrameOf(2, "first") + FrameOf(2, std::string(300, 'x')) +
                            FrameOf(1, HexToBytes("00000001")) + FrameOf(4, "");

const std::vector<std::string> kFrames = {FrameOf(2, "first"), FrameOf(2, std::string(300, 'x')),
                                          FrameOf(1, HexToBytes("00000001")), FrameOf(4, "")};

TEST(FrameCutter, GivesTheSameFramesWhateverTheReadSizes) {
    for (std::size_t piece :
         {kStream.size(), std::size_t{1}, std::size_t{3}, std::size_t{7}, std::size_t{64}}) {
        FrameCutter cutter;
        std::vector<std::string> frames;
        for (std::size_t pos = 0; pos < kStream.size(); pos += piece) {
            cutter.Append(std::string_view(kStream).substr(pos, piece));
            for (auto& f : Drain(cutter))
                frames.push_back(f);
        }
        EXPECT_EQ(frames, kFrames) << "reads of " << piece;
        EXPECT_EQ(cutter.Waiting(), 0u);
    }
}

TEST(FrameCutter, HandsAFrameOverOnlyWhenItIsWhole) {
    const std::string frame = FrameOf(2, "hello world");
    FrameCutter cutter;
    cutter.Append(frame.substr(0, 3));
    EXPECT_FALSE(cutter.Next());
    cutter.Append(frame.substr(3, 5));
    EXPECT_FALSE(cutter.Next());
    cutter.Append(frame.substr(8));
    EXPECT_EQ(cutter.Next(), frame);
    EXPECT_FALSE(cutter.Next());

    // A 4-byte fragment (a cut-short sign-off frame) waits and spoils nothing.
    cutter.Append(HexToBytes("2A040001"));
    EXPECT_FALSE(cutter.Next());
    EXPECT_EQ(cutter.Waiting(), 4u);
    cutter.Clear();
    cutter.Append(frame);
    EXPECT_EQ(cutter.Next(), frame);
}

TEST(FrameCutter, CutsByTheLengthFieldAlone) {
    // No check of the start byte: the length decides.
    FrameCutter cutter;
    cutter.Append(HexToBytes("00000000000161") + HexToBytes("FF0200000000"));
    EXPECT_EQ(cutter.Next(), HexToBytes("00000000000161"));
    EXPECT_EQ(cutter.Next(), HexToBytes("FF0200000000"));
    // The largest frame a length field can give.
    const std::string big = FrameOf(2, std::string(0xFFFF, 'b'));
    cutter.Append(big);
    EXPECT_EQ(cutter.Next(), big);
}

}  // namespace
}  // namespace oscar
