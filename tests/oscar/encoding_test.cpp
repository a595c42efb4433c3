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

TEST(Numbers, RefuseOutOfRangeAndShortInput) {
    EXPECT_EQ(BytesToHex(*MakeWord(65535)), "FFFF");
    EXPECT_FALSE(MakeWord(65536));
    EXPECT_FALSE(MakeWord(-1));
    EXPECT_EQ(BytesToHex(*MakeDWord(4294967295.0)), "FFFFFFFF");
    EXPECT_FALSE(MakeDWord(4294967296.0));
    EXPECT_FALSE(MakeDWord(-1.0));
    EXPECT_EQ(MakeByte(256), "");
    EXPECT_EQ(MakeByte(-1), "");
    EXPECT_EQ(ReadWord(HexToBytes("FFFE03")), 0xFFFE);
    EXPECT_FALSE(ReadWord(HexToBytes("01")));
    EXPECT_EQ(ReadDWord(HexToBytes("80000001")), 0x80000001u);
    EXPECT_FALSE(ReadDWord(HexToBytes("010203")));
}

TEST(MakeTLV, RefusesValuesTooLongForTheirLengthField) {
    EXPECT_EQ(BytesToHex(MakeTLV("0001", 4, "a")), "00010000000161");
    EXPECT_EQ(MakeTLV("0001", 3, "abc"), "");
    EXPECT_EQ(MakeTLV("", 1, std::string(256, 'x')), "");
    EXPECT_EQ(MakeTLV("", 1, std::string(255, 'x')).size(), 256u);
    EXPECT_EQ(MakeTLV("0002", 2, std::string(65536, 'x')), "");
    EXPECT_EQ(MakeTLV("0002", 2, std::string(65535, 'x')).substr(0, 4), HexToBytes("0002FFFF"));
}

TEST(ParseTLVs, ReadsAtMost101AndLeavesTheRest) {
    std::string data;
    for (int i = 0; i < 150; ++i)
        data += HexToBytes("00") + static_cast<char>(i) + HexToBytes("0001") + static_cast<char>(i);
    TLVList list = {"kept"};
    ParseTLVs(data, list);
    ASSERT_EQ(list.size(), 1u + 202u);
    EXPECT_EQ(list[0], "kept");
    EXPECT_EQ(BytesToHex(list[201] + list[202]), "006464");
    EXPECT_EQ(BytesToHex(data.substr(0, 5)), "0065000165");
    EXPECT_EQ(data.size(), 49u * 5u);
}

TEST(ParseTLVs, KeepsWhatATruncatedTLVHoldsAndCountedBlocksStop) {
    // Length 5 but one value byte follows; then a tail too short for a length.
    for (const auto& [hex, expected] :
         {std::pair<const char*, const char*>{"0002000578", "0002|78"}, {"000100", "0001|"}}) {
        std::string data = HexToBytes(hex);
        TLVList list;
        ParseTLVs(data, list);
        ASSERT_EQ(list.size(), 2u) << hex;
        EXPECT_EQ(BytesToHex(list[0]) + "|" + BytesToHex(list[1]), expected);
        EXPECT_TRUE(data.empty());
    }

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
