// Instant messages, user information, e-mail lookup, admin and buddy icons.
#include <gtest/gtest.h>

#include "support/client_fixture.h"

namespace oscar {
namespace {

using Lines = std::vector<std::string>;

using testing_support::ClientTest;
using testing_support::Frame;
using testing_support::UserRecord;

using ServicesTest = ClientTest;

std::string InstantMessageFrame(const char* channel, const std::string& fragment) {
    return Frame(2, HexToBytes("000400070000000000000000000000000001") + HexToBytes(channel) +
                        MakeTLV("", 1, "Some Body") + HexToBytes("00000001") +
                        MakeTLV("0001", 2, HexToBytes("0010")) +
                        MakeTLV("0002", 2,
                                MakeTLV("0501", 2, HexToBytes("01")) +
                                    MakeTLV("0101", 2, HexToBytes("00000000") + fragment)) +
                        MakeTLV("0003", 2, ""));
}

TEST_F(ServicesTest, InstantMessagesOnChannelOneOnly) {
    sockets.Deliver(0, InstantMessageFrame("0002", "<b>hi</b>"));
    EXPECT_TRUE(events.log.empty());
    sockets.Deliver(0, InstantMessageFrame("0001", "<b>hi</b>"));
    EXPECT_EQ(events.Take(), Lines{"InstantMessage(Some Body, hi, 1)"});
    // UTF-16 text keeps its zero bytes.
    sockets.Deliver(0, InstantMessageFrame("0001", HexToBytes("00680069")));
    EXPECT_EQ(events.Take(), Lines{"InstantMessage(Some Body, " + HexToBytes("00680069") + ", 1)"});
}

TEST_F(ServicesTest, UserInformationRoundsTheWarningLevel) {
    auto info = [](const char* warning, const std::string& dword) {
        return Frame(2, HexToBytes("00020006000000000000") + MakeTLV("", 1, "Ann") +
                            HexToBytes(warning) + HexToBytes("0003") +
                            MakeTLV("0001", 2, HexToBytes("0010")) +
                            MakeTLV("000F", 2, HexToBytes(dword)) +
                            MakeTLV("0003", 2, HexToBytes("80000000")) +
                            MakeTLV("0001", 2, "text/aolrtf") + MakeTLV("0002", 2, "Hello"));
    };
    sockets.Deliver(0, info("0019", "0000003C"));
    sockets.Deliver(0, info("0023", "7FFFFFFF"));
    EXPECT_EQ(events.Take(),
              (Lines{"IncomingUserInfo(Ann, 2, 60, 0, 16, text/aolrtf, Hello)",
                     "IncomingUserInfo(Ann, 4, 2147483647, 0, 16, text/aolrtf, Hello)"}));
}

TEST_F(ServicesTest, RepliesOfTheOtherServicesRaiseTheirEvents) {
    const auto deliver = [&](int index, const char* snacHex, const std::string& tlvs = "") {
        sockets.Deliver(index, Frame(2, HexToBytes(snacHex) + tlvs));
    };
    sockets.Create(4);
    deliver(0, "000400010000000000000004");
    deliver(0, "000400010000000000000005");
    deliver(0, "000A0001000000000000000E");
    deliver(0, "000A00010000000000000021");
    deliver(4, "00070001000000000000000E");
    deliver(4, "000700010000000000000014");
    deliver(0, "000A0003000000000000", MakeTLV("0009", 2, "ann") + MakeTLV("0009", 2, "bob"));
    deliver(0, "000A0003000000000000");
    // Admin replies: one event per TLV.
    deliver(4, "0007000300000000000000030003",
            MakeTLV("0001", 2, "Bot Name") + MakeTLV("0011", 2, "a@b.c") +
                MakeTLV("0013", 2, HexToBytes("0002")));
    deliver(4, "0007000500000000000000010002",
            MakeTLV("0001", 2, "") + MakeTLV("0008", 2, HexToBytes("0001")));
    deliver(4, "0007000500000000000000030004",
            MakeTLV("0001", 2, "") + MakeTLV("0011", 2, "") + MakeTLV("0013", 2, "") +
                MakeTLV("0002", 2, ""));
    EXPECT_EQ(
        events.Take(),
        (Lines{"Error(User not available, 4, 0, 0004)", "Error(No e-mail entered., 14, 0, 000A)",
               "Error(Unknown e-mail lookup error., 33, 0, 000A)",
               "Error(No e-mail entered., 14, 0, 0007)", "Error(Unknown Admin Error., 20, 0, 0007)",
               "EmailLookupResults(ann, bob)", "EmailLookupResults()",
               "FormattedScreennameResults(Bot Name, 3)", "EmailResults(a@b.c, 3)",
               "RegistrationResults(2, 3)", "ScreennameFormatted(false, 1)",
               "ScreennameFormatted(true, 3)", "EmailUpdated(true, 3)",
               "RegistrationStatusUpdated(true, 3)", "PasswordUpdated(true, 3)"}));
}

TEST_F(ServicesTest, BuddyIconsReadTheLengthAfterTheName) {
    sockets.Create(6);
    const std::string frame =
        Frame(2, HexToBytes("00100005000000000000") + MakeTLV("", 1, "abcde") +
                     std::string(21, '\x01') + HexToBytes("0003") + "ICO" + "junk");
    ASSERT_EQ(BytesToHex(frame.substr(43, 2)), "0003") << "length at positions 44-45";
    sockets.Deliver(6, frame);
    sockets.Deliver(6, Frame(2, HexToBytes("00100007000000000000") + MakeTLV("", 1, "x") +
                                    std::string(21, '\0') + HexToBytes("0000")));
    EXPECT_EQ(events.Take(), (Lines{"IncomingBuddyIcon(abcde, ICO)", "IncomingBuddyIcon(x, )"}));
}

}  // namespace
}  // namespace oscar
