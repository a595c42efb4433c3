// The byte-level helpers the packet code rests on (the hand-written hex of
// the packet tests checks the common cases, these check the edges) and the
// cutting of frames.
#include "oscar/encoding.h"

#include <gtest/gtest.h>

#include "oscar/bodies.h"
#include "oscar/frame_cutter.h"
#include "support/frames.h"

namespace oscar {
namespace {

using testing_support::Frame;

// (Words and TLVs too long for their fields: the requests tests.)
TEST(Numbers, RefuseOutOfRangeAndShortInput) {
    EXPECT_FALSE(MakeDWord(4294967296.0));
    EXPECT_FALSE(ReadWord(HexToBytes("01")));
    EXPECT_EQ(ReadDWord(HexToBytes("80000001")), 0x80000001u);
    EXPECT_FALSE(ReadDWord(HexToBytes("010203")));
}

TEST(ParseTLVs, CountedBlocksStopAfterTheirCount) {
    std::string data = HexToBytes("00010001610002000162000300016300");
    TLVList list;
    ParseTLVsCounted(data, 2, list);
    ASSERT_EQ(list.size(), 4u);
    EXPECT_EQ(list[3], "b");
    EXPECT_EQ(BytesToHex(data), "000300016300");
    EXPECT_EQ(FindTLV(list, HexToBytes("0002")), "b");
    EXPECT_FALSE(FindTLV(list, HexToBytes("0004")));
}

TEST(FrameCutter, GivesTheSameWholeFramesWhateverTheReadSizes) {
    // No check of the start byte: the length field alone decides; the
    // largest frame a length field can give comes whole too.
    const std::vector<std::string> frames = {Frame(2, "first"), Frame(2, std::string(0xFFFF, 'x')),
                                             Frame(1, "\1"), Frame(4, ""),
                                             HexToBytes("00000000000161")};
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

}  // namespace
}  // namespace oscar
