// Every request's bytes, compared with hex written out by hand.
#include <gtest/gtest.h>

#include "support/client_fixture.h"

namespace oscar {
namespace {

using testing_support::ClientTest;
using testing_support::Frame;
using testing_support::SnacFrame;

using RequestsTest = ClientTest;

TEST_F(RequestsTest, LoginResetsAndConnectsToTheNormalizedServer) {
    SignOn();
    JoinRoom("Lobby", 4);
    events.Take();
    client.Login("Bot", "pw", 5190, true, true, " Login.Example.NET ");
    EXPECT_EQ(events.Take(), std::vector<std::string>{"LoginStatus(Connecting to Auth server...)"})
        << "no LoggedOff";
    EXPECT_TRUE(client.Chat().empty());
    EXPECT_EQ(sockets.Tag(0), "[Auth]connecting");
    EXPECT_EQ(sockets.connectLog.back(),
              (std::pair<int, std::string>{0, "login.example.net:5190"}));
    EXPECT_EQ(sockets.sockets.size(), 1u);
    EXPECT_TRUE(client.Authorizing());
}

TEST_F(RequestsTest, BosRequestsHaveTheirExactBytes) {
    SignOn();
    client.SendIM("Bob", "hi");
    client.EmailLookup("a@b.c");
    client.GetUserInfo("Bob", 1);
    client.SetIdle(600);
    client.SetIdle(1);
    client.SetIdle(0);
    client.SetCapabilities({"094601054C7F11D18222444553540000"});
    client.InviteChatBuddy("Bob");
    EXPECT_EQ(
        sockets.TakePayloads(0),
        (std::vector<std::string>{"0004000600000000000400000000000000010001"
                                  "03426F62"
                                  "0002"
                                  "0011"
                                  "0501"
                                  "0003"
                                  "010102"
                                  "0101"
                                  "0006"
                                  "00000000"
                                  "6869",
                                  "000A0002000000000002"
                                  "6140622E63",
                                  "00020015000000000015"
                                  "00000001"
                                  "03426F62",
                                  "0001001100000000001100000001", "0001001100000000001100000001",
                                  "0001001100000000001100000000",
                                  "00020004000000000004"
                                  "0005"
                                  "0010"
                                  "094601054C7F11D18222444553540000",
                                  "00040006000000000006"
                                  "00000000000000010002"
                                  "03426F62"}));

    client.SetProfile("P");
    ASSERT_EQ(sockets.written.size(), 1u);
    EXPECT_EQ(sockets.written[0].second.substr(6), HexToBytes("00020004000000000004"
                                                              "0001"
                                                              "0021") +
                                                       "text/x-aolrtf; charset=\"us-ascii\"" +
                                                       HexToBytes("0002"
                                                                  "0001"
                                                                  "50"));
}

TEST_F(RequestsTest, JoinChatAsksForChatNavigationFirst) {
    SignOn();
    client.JoinChat("  My Room ", 4, 7);
    EXPECT_EQ(sockets.TakePayloads(0), std::vector<std::string>{"00010004000000000001000D"});

    const int nav = OpenService("000D");
    sockets.written.clear();
    sockets.Deliver(nav, SnacFrame("000D0009000000000000"));
    // A second client ready naming 0001 and 000D, then the room request with
    // the trimmed name.
    EXPECT_EQ(sockets.TakePayloads(nav),
              (std::vector<std::string>{"0001000200000000000100010004001008E5000D0001001008E5",
                                        "000D0008000000000008"
                                        "0004"
                                        "06637265617465"
                                        "0007"
                                        "010003"
                                        "00D6"
                                        "0008"
                                        "75732D6173636969"
                                        "00D3"
                                        "0007"
                                        "4D7920526F6F6D"
                                        "00D7"
                                        "0002"
                                        "656E"}));
    EXPECT_EQ(client.ChatNavIndex(), nav);

    // With navigation open, a join sends its room request at once (once the
    // first join has ended, here refused).
    sockets.Deliver(nav, SnacFrame("000D0001000000000000"
                                   "0014"));
    client.JoinChat("Lobby", 5, 0);
    EXPECT_EQ(sockets.TakePayloads(nav), (std::vector<std::string>{"000D0008000000000008"
                                                                   "0005"
                                                                   "06637265617465"
                                                                   "0000"
                                                                   "010003"
                                                                   "00D6"
                                                                   "0008"
                                                                   "75732D6173636969"
                                                                   "00D3"
                                                                   "0005"
                                                                   "4C6F626279"
                                                                   "00D7"
                                                                   "0002"
                                                                   "656E"}));
}

TEST_F(RequestsTest, SendChatCountsItsCookieAndNeedsARoom) {
    SignOn();
    const int room = JoinRoom("Lobby", 4);
    sockets.written.clear();
    client.SendChat(room, "hi");
    EXPECT_EQ(sockets.TakePayloads(room),
              (std::vector<std::string>{"000E0005000000000005000000000000"
                                        "0000"
                                        "0003"
                                        "00010000"
                                        "00060000"
                                        "0005"
                                        "0018"
                                        "0002"
                                        "0008"
                                        "75732D6173636969"
                                        "0003"
                                        "0002"
                                        "656E"
                                        "0001"
                                        "0002"
                                        "6869"}));
    // Counter 1 .. 32000, then 1 again.
    for (int i = 1; i <= 32000; ++i)
        client.SendChat(room, "x");
    ASSERT_EQ(sockets.written.size(), 32000u);
    EXPECT_EQ(BytesToHex(sockets.written[0].second.substr(6 + 16, 2)), "0001");
    EXPECT_EQ(BytesToHex(sockets.written.back().second.substr(6 + 16, 2)), "7D00");
    sockets.written.clear();
    client.SendChat(room, "x");
    EXPECT_EQ(BytesToHex(sockets.written.back().second.substr(6 + 16, 2)), "0001");

    sockets.written.clear();
    client.SendChat(0, "nobody hears");
    client.SendChat(49, "no such socket");
    EXPECT_TRUE(sockets.written.empty());
    client.SendChat(0, "by name", "LOB BY");
    EXPECT_EQ(sockets.written.size(), 1u);
    client.SendChat(0, "other exchange", "Lobby", 5);
    EXPECT_EQ(sockets.written.size(), 1u);
}

TEST_F(RequestsTest, BuddyIconsWaitForTheIconConnection) {
    SignOn();
    client.GetBuddyIcon("Bob", HexToBytes("00112233445566778899AABBCCDDEEFF"));
    EXPECT_EQ(sockets.TakePayloads(0), std::vector<std::string>{"000100040000000000010010"});
    const int icon = OpenService("0010");
    const std::vector<std::string> sent = sockets.TakePayloads(icon);
    ASSERT_FALSE(sent.empty());
    EXPECT_EQ(sent.back(),
              "00100004000000000004"
              "03426F62"
              "01000101"
              "10"
              "00112233445566778899AABBCCDDEEFF");
}

TEST_F(RequestsTest, InvitationsNameTheJoinedRoom) {
    SignOn();
    JoinRoom("Lobby", 4);
    sockets.written.clear();
    client.InviteChatBuddy("Bob");
    const std::vector<std::string> sent = sockets.TakePayloads(0);
    ASSERT_EQ(sent.size(), 1u);
    // "4-0-Lobby" is the room cookie the test server side gave.
    EXPECT_EQ(sent[0],
              "00040006000000000006"
              "00000000000000010002"
              "03426F62"
              "0005"
              "004F"
              "0000"
              "0000000000000001"
              "748F2420628711D18222444553540000"
              "000A"
              "0002"
              "0001"
              "000F"
              "0000"
              "000C"
              "0015"
              "4A6F696E206D6520696E207468697320636861742E"
              "2711"
              "000E"
              "0004"
              "09"
              "342D302D4C6F626279"
              "0000");
}

TEST_F(RequestsTest, RequestsTooLongForTheirFieldsAreNotSent) {
    SignOn();
    client.SendIM(std::string(256, 'n'), "hi");
    client.GetUserInfo(std::string(300, 'n'), 0);
    client.SetProfile(std::string(70000, 'p'));
    client.JoinChat("Lobby", 70000, 0);
    client.NewRegStatus(-1);
    const auto sent = sockets.TakePayloads(0);
    // Only the join's service request: the room request waits for navigation.
    EXPECT_EQ(sent, std::vector<std::string>{"00010004000000000001000D"});
}

}  // namespace
}  // namespace oscar
