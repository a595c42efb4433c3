// Chat text out and in: the label each line gets, and the text each label gives.
#include "oscar/charset.h"

#include <gtest/gtest.h>

#include "oscar/encoding.h"

namespace {

using oscar::BytesToHex;
using oscar::HexToBytes;

TEST(Charset, EachLineGetsTheNarrowestLabelThatHoldsIt) {
    struct Case {
        const char* cp1252Hex;
        const char* charset;
        const char* bytesHex;
    } cases[] = {
        {"48692021", "us-ascii", "48692021"},
        {"E9A0FF", "iso-8859-1", "E9A0FF"},
        // The euro sign is Windows-1252's own: UTF-16BE; an undefined byte
        // keeps its value.
        {"803541", "unicode-2-0", "20AC00350041"},
        {"8180", "unicode-2-0", "008120AC"},
    };
    for (const Case& c : cases) {
        const oscar::LabelledText out = oscar::LabelChatText(HexToBytes(c.cp1252Hex));
        EXPECT_EQ(out.charset, c.charset) << c.cp1252Hex;
        EXPECT_EQ(BytesToHex(out.bytes), c.bytesHex) << c.cp1252Hex;
    }
}

TEST(Charset, IncomingTextIsDecodedByItsLabel) {
    struct Case {
        const char* bytesHex;
        const char* charset;
        const char* cp1252Hex;
    } cases[] = {
        {"00C700610020006120AC", "UNICODE-2-0", "C761206180"},
        // Beyond Windows-1252 (a CJK character, an emoji's surrogate pair,
        // a lone surrogate, an odd last byte): one '?' each.
        {"4E2D0041D83DDE00DC0000", "unicode-2-0", "3F413F3F3F"},
        {"C3A9E282AC41F09F9880FF", "utf-8", "E980413F3F"},
        // Other labels leave the bytes alone.
        {"00480069", "us-ascii", "00480069"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(BytesToHex(oscar::DecodeChatText(HexToBytes(c.bytesHex), c.charset)), c.cp1252Hex)
            << c.bytesHex << " " << c.charset;
    }
}

}  // namespace
