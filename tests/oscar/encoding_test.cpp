#include "oscar/encoding.h"

#include <gtest/gtest.h>

namespace oscar {
namespace {

std::string Bytes(std::initializer_list<int> values) {
    std::string s;
    for (int v : values)
        s.push_back(static_cast<char>(v));
    return s;
}

TEST(HexText, ConvertsBothWaysInEitherCase) {
    EXPECT_EQ(HexToBytes("000d0008"), Bytes({0x00, 0x0D, 0x00, 0x08}));
    EXPECT_EQ(HexToBytes("000D0008"), Bytes({0x00, 0x0D, 0x00, 0x08}));
    EXPECT_EQ(BytesToHex(Bytes({0x00, 0x0D, 0x00, 0x08})), "000D0008");
    EXPECT_EQ(BytesToHex(Bytes({0x0A})), "0A");
    EXPECT_EQ(BytesToHex(""), "");

    std::string all;
    for (int b = 0; b < 256; ++b)
        all.push_back(static_cast<char>(b));
    EXPECT_EQ(HexToBytes(BytesToHex(all)), all);
    EXPECT_EQ(BytesToHex(all).substr(0x7F * 2, 6), "7F8081");
}

TEST(HexText, SkipsBadPairsAndReadsAnOddTail) {
    EXPECT_EQ(HexToBytes("00zz01"), Bytes({0x00, 0x01}));
    EXPECT_EQ(HexToBytes("0G"), "");
    EXPECT_EQ(HexToBytes("0A1"), Bytes({0x0A, 0x01}));
    EXPECT_EQ(HexToBytes("F"), Bytes({0x0F}));
}

TEST(Numbers, WriteBigEndianAndRefuseOutOfRange) {
    EXPECT_EQ(MakeWord(65535), Bytes({0xFF, 0xFF}));
    EXPECT_EQ(MakeWord(256), Bytes({0x01, 0x00}));
    EXPECT_EQ(MakeWord(0), Bytes({0x00, 0x00}));
    EXPECT_FALSE(MakeWord(65536));
    EXPECT_FALSE(MakeWord(-1));

    EXPECT_EQ(MakeDWord(266), Bytes({0x00, 0x00, 0x01, 0x0A}));
    EXPECT_EQ(MakeDWord(4294967295.0), Bytes({0xFF, 0xFF, 0xFF, 0xFF}));
    EXPECT_EQ(MakeDWord(65536.0), Bytes({0x00, 0x01, 0x00, 0x00}));
    EXPECT_FALSE(MakeDWord(4294967296.0));
    EXPECT_FALSE(MakeDWord(-1.0));

    EXPECT_EQ(MakeByte(255), Bytes({0xFF}));
    EXPECT_EQ(MakeByte(256), "");
    EXPECT_EQ(MakeByte(-1), "");
}

TEST(Numbers, ReadBigEndianAndFailOnShortInput) {
    EXPECT_EQ(ReadWord(Bytes({0x01, 0x02, 0x03})), 0x0102);
    EXPECT_EQ(ReadWord(Bytes({0xFF, 0xFE})), 0xFFFE);
    EXPECT_FALSE(ReadWord(Bytes({0x01})));
    EXPECT_EQ(ReadDWord(Bytes({0x80, 0x00, 0x00, 0x01})), 0x80000001u);
    EXPECT_FALSE(ReadDWord(Bytes({0x01, 0x02, 0x03})));
}

TEST(SnacKeys, NameFamilyAndSubtype) {
    EXPECT_EQ(SnacKey(HexToBytes("00170003000000000000")), "00170003");
    EXPECT_EQ(SnacKey(HexToBytes("000E0006")), "000E0006");
    // Too short for a whole key: a shorter text that matches no handler.
    EXPECT_EQ(SnacKey(HexToBytes("000E00")), "000E00");
    EXPECT_EQ(SnacKey(""), "");
}

TEST(MakeTLV, WritesTypeLengthAndValue) {
    EXPECT_EQ(MakeTLV("0001", 2, "abc"), HexToBytes("00010003616263"));
    EXPECT_EQ(MakeTLV("", 1, "abc"), HexToBytes("03616263"));
    EXPECT_EQ(MakeTLV("0001", 4, "abc"), HexToBytes("000100000003616263"));
    EXPECT_EQ(MakeTLV("0001", 3, "abc"), "");
    EXPECT_EQ(MakeTLV("004C", 2, ""), HexToBytes("004C0000"));
    // Values too long for their length field are refused.
    EXPECT_EQ(MakeTLV("", 1, std::string(256, 'x')), "");
    EXPECT_EQ(MakeTLV("", 1, std::string(255, 'x')).size(), 256u);
    EXPECT_EQ(MakeTLV("0002", 2, std::string(65536, 'x')), "");
    EXPECT_EQ(MakeTLV("0002", 2, std::string(65535, 'x')).substr(0, 4), HexToBytes("0002FFFF"));
}

TEST(ParseTLVs, ReadsAtMost101AndLeavesTheRest) {
    std::string data;
    for (int i = 0; i < 150; ++i) {
        data += Bytes({0x00, i, 0x00, 0x01, i});
    }
    TLVList list = {"kept"};
    ParseTLVs(data, list);
    ASSERT_EQ(list.size(), 1u + 202u);
    EXPECT_EQ(list[0], "kept");
    EXPECT_EQ(list[1], Bytes({0x00, 0x00}));
    EXPECT_EQ(list[2], Bytes({0x00}));
    EXPECT_EQ(list[201], Bytes({0x00, 100}));
    EXPECT_EQ(list[202], Bytes({100}));
    ASSERT_EQ(data.size(), 49u * 5u);
    EXPECT_EQ(data.substr(0, 5), Bytes({0x00, 101, 0x00, 0x01, 101}));
}

TEST(ParseTLVs, KeepsWhatATruncatedTLVHolds) {
    // Length 5 but only 2 value bytes follow.
    std::string data = HexToBytes("000100036162630002000578");
    TLVList list;
    ParseTLVs(data, list);
    ASSERT_EQ(list.size(), 4u);
    EXPECT_EQ(list[1], "abc");
    EXPECT_EQ(list[2], HexToBytes("0002"));
    EXPECT_EQ(list[3], "x");
    EXPECT_TRUE(data.empty());

    // A tail too short for a length field gives its type bytes and no value.
    std::string tail = HexToBytes("000100");
    list.clear();
    ParseTLVs(tail, list);
    ASSERT_EQ(list.size(), 2u);
    EXPECT_EQ(list[0], HexToBytes("0001"));
    EXPECT_EQ(list[1], "");
    EXPECT_TRUE(tail.empty());

    std::string empty;
    ParseTLVs(empty, list);
    EXPECT_EQ(list.size(), 2u);
}

TEST(ParseTLVs, CountedBlockStopsAfterItsCount) {
    std::string data = HexToBytes("00010001610002000162000300016300");
    TLVList list;
    ParseTLVsCounted(data, 2, list);
    ASSERT_EQ(list.size(), 4u);
    EXPECT_EQ(list[3], "b");
    EXPECT_EQ(data, HexToBytes("000300016300"));

    std::string shortData = HexToBytes("0001000161");
    list.clear();
    ParseTLVsCounted(shortData, 5, list);
    EXPECT_EQ(list.size(), 2u);
    EXPECT_TRUE(shortData.empty());

    EXPECT_EQ(FindTLV(list, HexToBytes("0001")), "a");
    EXPECT_FALSE(FindTLV(list, HexToBytes("0002")));
}

TEST(FamilyName, UsesTheTableAndABareFallback) {
    EXPECT_EQ(FamilyName(HexToBytes("000D")), "[Chat_Navigation]");
    EXPECT_EQ(FamilyName(HexToBytes("00A0")), "[Unknown[00A0]]");
    EXPECT_EQ(FamilyName(HexToBytes("0025")), "Unknown[0025]");
}

}  // namespace
}  // namespace oscar
