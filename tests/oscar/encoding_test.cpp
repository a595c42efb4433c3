// The byte-level helpers the packet code rests on (the hand-written hex of
// the packet tests checks the common cases, these check the edges), the
// cutting of frames, the character sets of chat text and the login request
// with its hash.
#include "oscar/encoding.h"

#include <gtest/gtest.h>

#include <QCryptographicHash>

#include "oscar/bodies.h"
#include "oscar/charset.h"
#include "oscar/frame_cutter.h"
#include "oscar/login_request.h"
#include "oscar/md5.h"
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
    EXPECT_EQ(list, (TLVList{HexToBytes("0001"), "a", HexToBytes("0002"), "b"}));
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

// Chat text out and in: the label each line gets, and the text each label
// gives.
TEST(Charset, EachLineGetsTheNarrowestLabelAndEachLabelItsText) {
    struct Case {
        const char* cp1252Hex;
        const char* charset;
        const char* bytesHex;
    };
    const Case labelled[] = {
        {"48692021", "us-ascii", "48692021"},
        {"E9A0FF", "iso-8859-1", "E9A0FF"},
        // The euro sign is Windows-1252's own: UTF-16BE; an undefined byte
        // keeps its value.
        {"803541", "unicode-2-0", "20AC00350041"},
        {"8180", "unicode-2-0", "008120AC"},
    };
    for (const Case& c : labelled) {
        const LabelledText out = LabelChatText(HexToBytes(c.cp1252Hex));
        EXPECT_EQ(std::pair(out.charset, BytesToHex(out.bytes)),
                  std::pair(std::string(c.charset), std::string(c.bytesHex)))
            << c.cp1252Hex;
    }
    const Case decoded[] = {
        {"C761206180", "UNICODE-2-0", "00C700610020006120AC"},
        // Beyond Windows-1252 (a CJK character, an emoji's surrogate pair,
        // a lone surrogate, an odd last byte): one '?' each.
        {"3F413F3F3F", "unicode-2-0", "4E2D0041D83DDE00DC0000"},
        {"E980413F3F", "utf-8", "C3A9E282AC41F09F9880FF"},
        // Other labels leave the bytes alone.
        {"00480069", "us-ascii", "00480069"},
    };
    for (const Case& c : decoded) {
        EXPECT_EQ(BytesToHex(DecodeChatText(HexToBytes(c.bytesHex), c.charset)), c.cp1252Hex)
            << c.bytesHex << " " << c.charset;
    }
}

std::string QtMd5(const std::string& bytes) {
    return QCryptographicHash::hash(QByteArray::fromStdString(bytes), QCryptographicHash::Md5)
        .toStdString();
}

TEST(LoginRequest, CarriesThirteenTLVsInOrder) {
    const std::string key = "1234567890";
    const std::string request = BuildLoginRequest("Abc Def", "hunter22", key);
    const std::string expected = HexToBytes(
                                     "00170002000000000001"       // SNAC 0017/0002, request id 1
                                     "0001000741626320446566") +  // screen name as typed
                                 HexToBytes("00250010") +
                                 QtMd5(key + QtMd5("hunter22") + "AOL Instant Messenger (SM)") +
                                 HexToBytes("004C0000") + HexToBytes("0003002D") +
                                 "AOL Instant Messenger, version 5.5.3599/WIN32" +
                                 HexToBytes(
                                     "00160002006D001700020005001800020005001900020000001A00020E0F"
                                     "001400040000010A000F0002656E000E00027573004A000101");
    EXPECT_EQ(BytesToHex(request), BytesToHex(expected));
}

// Every length to 200 (each padding case and block boundary), fed whole and
// in pieces, against Qt's MD5.
TEST(Md5, AgreesWithQtWhateverTheLengthAndFeedSizes) {
    std::string input;
    for (int length = 0; length <= 200; ++length) {
        const std::string expected = QtMd5(input);
        ASSERT_EQ(MD5Digest(input), expected) << "length " << length;
        for (std::size_t piece : {1u, 3u, 63u, 64u, 65u}) {
            Md5 md5;
            for (std::size_t pos = 0; pos < input.size(); pos += piece)
                md5.Update(std::string_view(input).substr(pos, piece));
            ASSERT_EQ(md5.Finish(), expected) << "length " << length << " in pieces of " << piece;
        }
        input.push_back(static_cast<char>(length * 97 + 13));
    }
}

}  // namespace
}  // namespace oscar
