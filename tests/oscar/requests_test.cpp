// Every request's bytes, compared with hex written out by hand, and the
// events the services' replies raise.
#include <gtest/gtest.h>

#include "support/client_fixture.h"

namespace oscar {
namespace {

using Lines = std::vector<std::string>;

using namespace testing_support;

using RequestsTest = ClientTest;

TEST_F(RequestsTest, LoginResetsAndConnectsToTheNormalizedServer) {
    SignOn();
    JoinRoom("Lobby", 4);
    events.Take();
    client.Login("Bot", "pw", 5190, true, true, " Login.Example.NET ");
    EXPECT_EQ(events.Take(), Lines{"LoginStatus(Connecting to Auth server...)"}) << "no LoggedOff";
    EXPECT_TRUE(client.Chat().empty());
    EXPECT_EQ(sockets.connectLog.back(),
              (std::pair<int, std::string>{0, "login.example.net:5190"}));
    EXPECT_EQ(sockets.sockets.size(), 1u);
}

TEST_F(RequestsTest, BosRequestsHaveTheirExactBytesOrAreNotSent) {
    SignOn();
    // Too long for their fields: nothing but the join's service request
    // (the room request waits for navigation).
    client.SendIM(std::string(256, 'n'), "hi");
    client.GetUserInfo(std::string(300, 'n'), 0);
    client.SetProfile(std::string(70000, 'p'));
    client.JoinChat("Lobby", 70000, 0);
    client.NewRegStatus(-1);

    client.SendIM("Bob", "hi");
    client.EmailLookup("a@b.c");
    client.GetUserInfo("Bob", 1);
    client.SetIdle(600);
    client.SetIdle(0);
    client.SetCapabilities({"094601054C7F11D18222444553540000"});
    client.InviteChatBuddy("Bob");
    EXPECT_EQ(sockets.TakePayloads(0),
              (Lines{"00010004000000000001000D",
                     "000400060000000000040000000000000001000103426F62"
                     "000200110501000301010201010006000000006869",
                     "000A00020000000000026140622E63", "000200150000000000150000000103426F62",
                     "0001001100000000001100000001", "0001001100000000001100000000",
                     "0002000400000000000400050010094601054C7F11D18222444553540000",
                     "000400060000000000060000000000000001000203426F62"}));

    client.SetProfile("P");
    ASSERT_EQ(sockets.written.size(), 1u);
    EXPECT_EQ(sockets.written[0].second.substr(6), HexToBytes("0002000400000000000400010021") +
                                                       "text/x-aolrtf; charset=\"us-ascii\"" +
                                                       HexToBytes("0002000150"));
}

TEST_F(RequestsTest, InARoomInvitationsNameItAndAJoinAsksNavigationAtOnce) {
    SignOn();
    JoinRoom("Lobby", 4);
    const int nav = client.ChatNavIndex();
    sockets.written.clear();
    client.InviteChatBuddy("Bob");
    // "4-0-Lobby" is the room cookie the test server side gave.
    EXPECT_EQ(sockets.TakePayloads(0),
              Lines{"000400060000000000060000000000000001000203426F62"
                    "0005004F00000000000000000001748F2420628711D18222444553540000"
                    "000A00020001000F0000000C00154A6F696E206D6520696E207468697320636861742E"
                    "2711000E000409342D302D4C6F6262790000"});
    client.JoinChat("My Room", 5, 0);
    EXPECT_EQ(sockets.TakePayloads(nav),
              (Lines{"000D00080000000000080005066372656174650000010003"
                     "00D6000875732D617363696900D300074D7920526F6F6D00D70002656E"}));
}

TEST_F(RequestsTest, SendChatCountsItsCookieAndNeedsARoom) {
    SignOn();
    const int room = JoinRoom("Lobby", 4);
    sockets.written.clear();
    client.SendChat(room, "hi");
    EXPECT_EQ(sockets.TakePayloads(room),
              (Lines{"000E000500000000000500000000000000000003000100000006000000050018"
                     "0002000875732D617363696900030002656E000100026869"}));
    // Counter 1 .. 32000, then 1 again.
    for (int i = 1; i <= 32000; ++i)
        client.SendChat(room, "x");
    ASSERT_EQ(sockets.written.size(), 32000u);
    EXPECT_EQ(BytesToHex(sockets.written[0].second.substr(6 + 16, 2)), "0001");
    EXPECT_EQ(BytesToHex(sockets.written.back().second.substr(6 + 16, 2)), "7D00");
    sockets.written.clear();
    client.SendChat(room, "x");
    EXPECT_EQ(BytesToHex(sockets.written.back().second.substr(6 + 16, 2)), "0001");

    // A line that goes nowhere or is too long still uses up its number.
    sockets.written.clear();
    client.SendChat(0, "nobody hears");
    client.SendChat(49, "no such socket");
    client.SendChat(room, std::string(70000, 'x'));
    EXPECT_TRUE(sockets.written.empty());
    client.SendChat(room, "x");
    EXPECT_EQ(BytesToHex(sockets.written.back().second.substr(6 + 16, 2)), "0005");
}

// Instant messages, user information, e-mail lookup, admin, buddy icons and
// the errors that end a join.
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
}

TEST_F(ServicesTest, RepliesAndErrorsOfTheServicesRaiseTheirEvents) {
    const auto deliver = [&](int index, const char* snacHex, const std::string& tlvs = "") {
        sockets.Deliver(index, Frame(2, HexToBytes(snacHex) + tlvs));
    };
    const auto code = [](const char* hex) { return MakeTLV("0008", 2, HexToBytes(hex)); };
    sockets.Create(1);
    sockets.Create(4);
    // Navigation errors raise one event per code; the BOS connection's
    // generic error (after its optional block) looks at its first TLV only.
    deliver(1, "000D00010000000000000002", code("0033") + code("0099"));
    deliver(0, "000100018000000000000003AABBCC0004", code("002E"));
    deliver(0, "000100010000000000000005", MakeTLV("0001", 2, "") + code("004A"));
    deliver(0, "000400010000000000000004");
    deliver(0, "000A00010000000000000021");
    deliver(4, "00070001000000000000000E");
    deliver(4, "000700010000000000000014");
    deliver(0, "000A0003000000000000", MakeTLV("0009", 2, "ann") + MakeTLV("0009", 2, "bob"));
    // Admin replies: one event per TLV.
    deliver(4, "0007000300000000000000030003",
            MakeTLV("0001", 2, "Bot Name") + MakeTLV("0011", 2, "a@b.c") +
                MakeTLV("0013", 2, HexToBytes("0002")));
    deliver(4, "0007000500000000000000010002",
            MakeTLV("0001", 2, "") + MakeTLV("0008", 2, HexToBytes("0001")));
    deliver(4, "0007000500000000000000030004",
            MakeTLV("0001", 2, "") + MakeTLV("0011", 2, "") + MakeTLV("0013", 2, "") +
                MakeTLV("0002", 2, ""));
    EXPECT_EQ(events.Take(),
              (Lines{"Error(Join chat failed, invalid chat name., 51, 0, 0002)",
                     "Error(Join chat failed, unknown error., 153, 0, 0002)",
                     "Error(Join chat failed, you are already in this chat., 46, 0, 0004)",
                     "Error(User not available, 4, 0, 0004)",
                     "Error(Unknown e-mail lookup error., 33, 0, 000A)",
                     "Error(No e-mail entered., 14, 0, 0007)",
                     "Error(Unknown Admin Error., 20, 0, 0007)", "EmailLookupResults(ann, bob)",
                     "FormattedScreennameResults(Bot Name, 3)", "EmailResults(a@b.c, 3)",
                     "RegistrationResults(2, 3)", "ScreennameFormatted(false, 1)",
                     "ScreennameFormatted(true, 3)", "EmailUpdated(true, 3)",
                     "RegistrationStatusUpdated(true, 3)", "PasswordUpdated(true, 3)"}));
}

TEST_F(ServicesTest, BuddyIconsReadTheLengthAfterTheName) {
    sockets.Create(6);
    // After a 5-byte name, the length is at positions 44-45 of the frame.
    sockets.Deliver(6, Frame(2, HexToBytes("00100005000000000000") + MakeTLV("", 1, "abcde") +
                                    std::string(21, '\x01') + HexToBytes("0003") + "ICO" + "junk"));
    sockets.Deliver(6, Frame(2, HexToBytes("00100007000000000000") + MakeTLV("", 1, "x") +
                                    std::string(21, '\0') + HexToBytes("0000")));
    EXPECT_EQ(events.Take(), (Lines{"IncomingBuddyIcon(abcde, ICO)", "IncomingBuddyIcon(x, )"}));
}

}  // namespace
}  // namespace oscar
