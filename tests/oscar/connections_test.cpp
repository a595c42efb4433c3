// The client's connections against a fake socket layer: frames written and
// cut, index allocation, lost connections, resets and the admin queue.
#include <gtest/gtest.h>

#include "support/client_fixture.h"

namespace oscar {
namespace {

using testing_support::ChatLineFrame;
using testing_support::ClientTest;
using testing_support::Frame;
using testing_support::Greeting;
using testing_support::SnacFrame;

using ConnectionsTest = ClientTest;

TEST_F(ConnectionsTest, SendPacketFramesWithPerIndexSequenceNumbers) {
    sockets.sockets[0].connected = true;
    client.SendPacket(0, 2, HexToBytes("00010002"));
    client.SendPacket(0, 1, HexToBytes("00000001"));
    ASSERT_EQ(sockets.written.size(), 2u);
    EXPECT_EQ(BytesToHex(sockets.written[0].second),
              "2A02000000040001"
              "0002");
    EXPECT_EQ(BytesToHex(sockets.written[1].second),
              "2A01000100040000"
              "0001");

    // The 65537th frame on one index carries 0 again.
    sockets.written.clear();
    for (int i = 2; i < 65536; ++i)
        client.SendPacket(0, 2, "");
    EXPECT_EQ(BytesToHex(sockets.written.back().second), "2A02FFFF0000");
    client.SendPacket(0, 2, "");
    EXPECT_EQ(BytesToHex(sockets.written.back().second), "2A0200000000");

    // A payload too long for the length field writes nothing but uses a number.
    sockets.written.clear();
    client.SendPacket(0, 2, std::string(65536, 'x'));
    EXPECT_TRUE(sockets.written.empty());
    client.SendPacket(0, 2, "");
    EXPECT_EQ(BytesToHex(sockets.written.back().second), "2A0200020000");

    // Indexes count on their own; one beyond 50 has no socket and no number.
    sockets.Create(3);
    sockets.sockets[3].connected = true;
    client.SendPacket(3, 2, "");
    EXPECT_EQ(BytesToHex(sockets.written.back().second), "2A0200000000");
    sockets.written.clear();
    client.SendPacket(51, 2, "x");
    client.SendPacket(-1, 2, "x");
    EXPECT_TRUE(sockets.written.empty());
}

TEST_F(ConnectionsTest, TheBosConnectionContinuesTheAuthorizationNumbering) {
    client.Login("Bot", "pw", 5190, false, false, "auth.example.net");
    sockets.Deliver(0, Greeting());  // numbers 0 and 1
    sockets.Deliver(0, SnacFrame("00170007000000000000"
                                 "0002"
                                 "4B59"));  // number 2
    sockets.Deliver(
        0, Frame(2, HexToBytes("00170003000000000000") +
                        MakeTLV("0005", 2, "bos.example.net:5190") + MakeTLV("0006", 2, "C")));
    sockets.written.clear();
    sockets.Deliver(0, Greeting());
    ASSERT_EQ(sockets.written.size(), 1u);
    EXPECT_EQ(BytesToHex(sockets.written[0].second.substr(0, 6)), "2A0100030009");
}

TEST_F(ConnectionsTest, DataArrivalHandsOverWholeFramesInOrder) {
    sockets.Create(2);
    const std::string a = ChatLineFrame("ann", "one");
    const std::string b = ChatLineFrame("bob", "two");
    const std::string c = ChatLineFrame("cat", "three");
    const std::vector<std::string> expected = {
        "ChatMessage(2, ann, one)", "ChatMessage(2, bob, two)", "ChatMessage(2, cat, three)"};

    // Two frames in one read, then one frame over three reads.
    sockets.Deliver(2, a + b);
    sockets.Deliver(2, c.substr(0, 4));
    sockets.Deliver(2, c.substr(4, 10));
    EXPECT_EQ(events.log.size(), 2u);
    sockets.Deliver(2, c.substr(14));
    EXPECT_EQ(events.Take(), expected);

    // Three bytes, then the rest.
    sockets.Deliver(2, a.substr(0, 3));
    EXPECT_TRUE(events.log.empty());
    sockets.Deliver(2, a.substr(3));
    EXPECT_EQ(events.Take(), std::vector<std::string>{expected[0]});

    // The whole stream one byte per read.
    const std::string stream = a + b + c;
    for (char byte : stream)
        sockets.Deliver(2, std::string(1, byte));
    EXPECT_EQ(events.Take(), expected);
}

TEST_F(ConnectionsTest, ClosingAConnectionDropsItsWaitingBytes) {
    const int room = [&] {
        SignOn();
        return JoinRoom("Lobby", 4);
    }();
    const std::string line = ChatLineFrame("ann", "hello");
    sockets.Deliver(room, line.substr(0, 10));
    client.LeaveChat(room);
    events.Take();
    // The index is reused by a new connection: the old half frame is gone.
    sockets.Create(room);
    sockets.Deliver(room, line);
    EXPECT_EQ(events.Take(),
              std::vector<std::string>{"ChatMessage(" + std::to_string(room) + ", ann, hello)"});

    // A frame whose handler closes its own connection ends that read.
    events.onEvent = [&](const std::string& e) {
        if (e.starts_with("ChatMessage")) client.CloseSock(room);
    };
    sockets.Deliver(room, line + line);
    EXPECT_EQ(events.Take().size(), 1u);
}

TEST_F(ConnectionsTest, RedirectsPickTheHighestFreeIndexOrANewOne) {
    SignOn();
    client.JoinChat("Lobby", 4, 0);
    const int nav = OpenService("000D");
    EXPECT_EQ(nav, 1);
    EXPECT_EQ(sockets.Tag(1), "[Chat_Navigation]connected");
    EXPECT_EQ(sockets.sockets[1].host, "svc.example.net");
    EXPECT_EQ(sockets.sockets[1].port, 5192);

    // A room's redirect while 0 and 1 are connected: a new index, 2.
    sockets.Deliver(
        0, Frame(2, HexToBytes("00010005000000000000") + MakeTLV("000D", 2, HexToBytes("000E")) +
                        MakeTLV("0005", 2, "chat.example.net") + MakeTLV("0006", 2, "K")));
    EXPECT_EQ(sockets.connectLog.back(), (std::pair<int, std::string>{2, "chat.example.net:5190"}));
    EXPECT_EQ(sockets.Tag(2), "[Chat]connecting");

    // Index 3 exists too; closing 2 keeps its element, tag emptied.
    const int admin = OpenService("0007");
    EXPECT_EQ(admin, 3);
    client.CloseSock(2);
    EXPECT_TRUE(sockets.Exists(2));
    EXPECT_EQ(sockets.Tag(2), "");
    EXPECT_EQ(OpenService("0010"), 2) << "the kept element is the first choice";

    // Closing the highest index destroys its element.
    client.CloseSock(3);
    EXPECT_FALSE(sockets.Exists(3));
    client.CloseSock(0);
    EXPECT_TRUE(sockets.Exists(0)) << "element 0 is only closed";
}

TEST_F(ConnectionsTest, AConnectionStillOpeningIsNotReused) {
    SignOn();
    sockets.connectAtOnce = false;
    auto redirect = [&](const char* family) {
        sockets.Deliver(
            0,
            Frame(2, HexToBytes("00010005000000000000") + MakeTLV("000D", 2, HexToBytes(family)) +
                         MakeTLV("0005", 2, "s.example.net:1") + MakeTLV("0006", 2, family)));
        return sockets.connectLog.back().first;
    };
    EXPECT_EQ(redirect("0007"), 1);
    EXPECT_EQ(redirect("0010"), 2);
    // Each greeting is answered with its own redirect's cookie.
    sockets.sockets[1].connected = sockets.sockets[2].connected = true;
    sockets.Deliver(1, Greeting());
    EXPECT_EQ(sockets.TakePayloads(1), std::vector<std::string>{"00000001"
                                                                "0006"
                                                                "0004"
                                                                "30303037"});
    sockets.Deliver(2, Greeting());
    EXPECT_EQ(sockets.TakePayloads(2), std::vector<std::string>{"00000001"
                                                                "0006"
                                                                "0004"
                                                                "30303130"});
}

TEST_F(ConnectionsTest, NoIndexBeyondFiftyIsCreated) {
    SignOn();
    for (int i = 1; i <= 50; ++i)
        sockets.sockets[i].connected = true;
    const std::size_t connects = sockets.connectLog.size();
    sockets.Deliver(
        0, Frame(2, HexToBytes("00010005000000000000") + MakeTLV("000D", 2, HexToBytes("0007")) +
                        MakeTLV("0005", 2, "s.example.net:1")));
    EXPECT_EQ(sockets.connectLog.size(), connects);
    EXPECT_FALSE(sockets.Exists(51));
}

TEST_F(ConnectionsTest, LostConnectionsAreReportedByRole) {
    SignOn();
    const int room = JoinRoom("Lobby", 4);
    const int admin = OpenService("0007");
    const int icon = OpenService("0010");
    const int email = OpenService("0018");
    events.Take();
    ASSERT_EQ(client.Chat().size(), 1u);

    sockets.Fail(room);
    EXPECT_EQ(
        events.Take(),
        (std::vector<std::string>{
            "LeftChat(Lobby, 4, 0, " + std::to_string(room) + ")",
            "ConnectionLost(" + std::to_string(room) +
                ", Connection to chat Name: Lobby, Exchange: 4, Instance: 0 has been lost.)"}));
    EXPECT_TRUE(client.Chat().empty());

    const int nav = client.ChatNavIndex();
    sockets.Fail(admin);
    sockets.Fail(icon);
    sockets.Fail(email);
    sockets.Fail(nav);
    sockets.Fail(42);
    EXPECT_EQ(events.Take(),
              (std::vector<std::string>{
                  "ConnectionLost(" + std::to_string(admin) +
                      ", Connection to the admin server has been lost.)",
                  "ConnectionLost(" + std::to_string(icon) +
                      ", Connection to the buddy icon server has been lost.)",
                  "ConnectionLost(" + std::to_string(email) +
                      ", Connection to the email server has been lost.)",
                  "ConnectionLost(" + std::to_string(nav) +
                      ", Connection to the chat navigation server has been lost.)",
                  "ConnectionLost(42, Connection to sock index 42 has been lost.)"}));
    EXPECT_EQ(client.AdminIndex(), 0);
    EXPECT_EQ(client.ChatNavIndex(), 0);

    sockets.Fail(0);
    EXPECT_EQ(events.Take(),
              (std::vector<std::string>{
                  "ConnectionLost(0, Connection to the main BOS server has been lost.)"}));
}

TEST_F(ConnectionsTest, LeaveChatByIndexRaisesLeftChatPerRoomAndClosesOnce) {
    sockets.Create(2);
    sockets.Create(3);
    Chats a, b, c;
    a.ChatName = "One";
    a.ChatIndex = 2;
    b.ChatName = "Two";
    b.ChatIndex = 3;
    c.ChatName = "Three";
    c.ChatIndex = 2;
    client.Chat() = {a, b, c};

    client.LeaveChat(2);
    EXPECT_EQ(events.Take(),
              (std::vector<std::string>{"LeftChat(One, 0, 0, 2)", "LeftChat(Three, 0, 0, 2)"}));
    EXPECT_EQ(sockets.sockets[2].closes, 1);
    ASSERT_EQ(client.Chat().size(), 1u);
    EXPECT_EQ(client.Chat()[0].ChatName, "Two");

    client.LeaveChat(0);
    client.LeaveChat(49);
    EXPECT_TRUE(events.log.empty());

    // By name: every room of that name, whatever its index.
    client.LeaveChat(0, " t W o");
    EXPECT_EQ(events.Take(), std::vector<std::string>{"LeftChat(Two, 0, 0, 3)"});
}

TEST_F(ConnectionsTest, ResetsCloseEverythingAndLogOffSaysSo) {
    SignOn();
    JoinRoom("Lobby", 4);
    events.Take();
    client.LogOff();
    EXPECT_EQ(events.Take(), std::vector<std::string>{"LoggedOff()"});
    EXPECT_TRUE(client.Chat().empty());
    EXPECT_EQ(client.ChatNavIndex(), 0);
    EXPECT_FALSE(client.LoggedInState());
    EXPECT_EQ(sockets.sockets.size(), 1u) << "only element 0 is left";
    EXPECT_FALSE(sockets.IsConnected(0));

    // A sign-off frame on index 0 once signed on ends the session, saying so.
    SignOn();
    sockets.Deliver(0, Frame(4, ""));
    EXPECT_EQ(events.Take(), std::vector<std::string>{"ConnectionLost(0, Signed off by the "
                                                      "server: the server is stopping or "
                                                      "restarting.)"});
    EXPECT_FALSE(client.LoggedInState());
    EXPECT_FALSE(sockets.IsConnected(0));
}

TEST_F(ConnectionsTest, QueuedAdminRequestsWaitForTheAdminConnection) {
    SignOn();
    client.ChangeEmail(" new@example.net ");
    client.FormatScreenname("Bot Name");
    client.ChangePassword("newpw");
    client.NewRegStatus(3);
    client.RequestEmail();
    client.RequestNick();
    client.RequestRegistrationStatus();
    EXPECT_EQ(sockets.TakePayloads(0), std::vector<std::string>(7, "000100040000000000010007"));

    const int admin = OpenService("0007");
    const std::vector<std::string> sent = sockets.TakePayloads(admin);
    ASSERT_GE(sent.size(), 7u);
    const std::vector<std::string> queued(sent.end() - 7, sent.end());
    EXPECT_EQ(queued, (std::vector<std::string>{"00070004000000000004"
                                                "0011"
                                                "000F"
                                                "6E6577406578616D706C652E6E6574",
                                                "00070004000000000004"
                                                "0001"
                                                "0008"
                                                "426F74204E616D65",
                                                "00070004000000000004"
                                                "0012"
                                                "0007"
                                                "73656372657431"
                                                "0002"
                                                "0005"
                                                "6E65777077",
                                                "00070004000000000004"
                                                "0013"
                                                "0002"
                                                "0003",
                                                "00070002000000000002"
                                                "0011"
                                                "0000",
                                                "00070002000000000002"
                                                "0001"
                                                "0000",
                                                "00070002000000000002"
                                                "0013"
                                                "0000"}));

    // Once the connection is there, requests go at once.
    client.ChangePassword("pw2");
    client.RequestNick();
    EXPECT_EQ(sockets.TakePayloads(admin), (std::vector<std::string>{"00070004000000000004"
                                                                     "0002"
                                                                     "0003"
                                                                     "707732"
                                                                     "0012"
                                                                     "0007"
                                                                     "73656372657431",
                                                                     "00070002000000000004"
                                                                     "0001"
                                                                     "0000"}));
}

TEST_F(ConnectionsTest, SendPendingAdminWithoutAConnectionForgetsTheQueue) {
    SignOn();
    client.FormatScreenname("Bot Name");
    client.RequestNick();
    sockets.written.clear();
    client.SendPendingAdmin();
    EXPECT_TRUE(sockets.written.empty());
    const int admin = OpenService("0007");
    for (const std::string& payload : sockets.TakePayloads(admin)) {
        EXPECT_FALSE(payload.starts_with("0007")) << payload;
    }
}

}  // namespace
}  // namespace oscar
