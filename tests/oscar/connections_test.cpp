// The client's connections against a fake socket layer: frames written and
// cut, index allocation, lost connections, resets and the admin queue.
#include <gtest/gtest.h>

#include "support/client_fixture.h"

namespace oscar {
namespace {

using Lines = std::vector<std::string>;

using namespace testing_support;

using ConnectionsTest = ClientTest;

TEST_F(ConnectionsTest, SendPacketFramesWithPerIndexSequenceNumbers) {
    sockets.sockets[0].connected = true;
    client.SendPacket(0, 2, HexToBytes("00010002"));
    client.SendPacket(0, 1, HexToBytes("00000001"));
    ASSERT_EQ(sockets.written.size(), 2u);
    EXPECT_EQ(BytesToHex(sockets.written[0].second), "2A020000000400010002");
    EXPECT_EQ(BytesToHex(sockets.written[1].second), "2A010001000400000001");

    // The 65537th frame on one index carries 0 again.
    for (int i = 2; i < 65536; ++i)
        client.SendPacket(0, 2, "");
    EXPECT_EQ(BytesToHex(sockets.written.back().second), "2A02FFFF0000");
    client.SendPacket(0, 2, "");
    EXPECT_EQ(BytesToHex(sockets.written.back().second), "2A0200000000");

    // Indexes count on their own; one beyond 50 has no socket, and a payload
    // too long for the length field is not written.
    sockets.Create(3);
    sockets.sockets[3].connected = true;
    client.SendPacket(3, 2, "");
    EXPECT_EQ(BytesToHex(sockets.written.back().second), "2A0200000000");
    sockets.written.clear();
    client.SendPacket(51, 2, "x");
    client.SendPacket(3, 2, std::string(65536, 'x'));
    EXPECT_TRUE(sockets.written.empty());
}

TEST_F(ConnectionsTest, WholeFramesAreHandedOverInOrderOneHandlerAtATime) {
    sockets.Create(2);
    const std::string a = ChatLineFrame("ann", "one");
    const std::string b = ChatLineFrame("bob", "two");
    const Lines expected = {"ChatMessage(2, ann, one)", "ChatMessage(2, bob, two)"};

    // Two frames in one read, a third over two reads.
    sockets.Deliver(2, a + b + a.substr(0, 4));
    EXPECT_EQ(events.log, expected);
    sockets.Deliver(2, a.substr(4));
    EXPECT_EQ(events.Take().size(), 3u);

    // Bytes that arrive while a frame is handled wait for that handler to end.
    events.onEvent = [&](const std::string& e) {
        if (e == expected[0]) sockets.Deliver(2, b);
        events.log.push_back("end of " + e);
    };
    sockets.Deliver(2, a);
    events.onEvent = nullptr;
    EXPECT_EQ(events.Take(),
              (Lines{expected[0], "end of " + expected[0], expected[1], "end of " + expected[1]}));

    // Closing drops the waiting half frame: the index's next connection
    // starts clean; a handler that closes its own connection ends the read.
    sockets.Deliver(2, a.substr(0, 10));
    client.CloseSock(2);
    sockets.Create(2);
    events.onEvent = [&](const std::string&) { client.CloseSock(2); };
    sockets.Deliver(2, a + a);
    EXPECT_EQ(events.Take(), Lines{expected[0]});
}

TEST_F(ConnectionsTest, RedirectsPickTheHighestFreeIndexOrANewOne) {
    SignOn();
    client.JoinChat("Lobby", 4, 0);
    EXPECT_EQ(OpenService("000D"), 1);
    EXPECT_EQ(sockets.connectLog.back(), (std::pair<int, std::string>{1, "svc.example.net:5192"}));

    // A room's redirect while 0 and 1 are connected: a new index, 2; no
    // port means 5190.
    sockets.Deliver(0, RedirectFrame("000E", "chat.example.net", "K"));
    EXPECT_EQ(sockets.connectLog.back(), (std::pair<int, std::string>{2, "chat.example.net:5190"}));
    // Flags 80 00: the TLVs start after the optional block.
    sockets.Deliver(0, Frame(2, HexToBytes("000100058000000000000006") +
                                    MakeTLV("000D", 2, HexToBytes("0010")) +
                                    MakeTLV("0005", 2, "icon.example.net:5195")));
    EXPECT_EQ(sockets.connectLog.back(), (std::pair<int, std::string>{3, "icon.example.net:5195"}));
    client.CloseSock(3);

    // Index 3 exists too; closing 2 keeps its element, tag emptied.
    EXPECT_EQ(OpenService("0007"), 3);
    client.CloseSock(2);
    EXPECT_TRUE(sockets.Exists(2));
    EXPECT_EQ(sockets.Tag(2), "");
    EXPECT_EQ(OpenService("0010"), 2) << "the kept element is the first choice";

    // Once 50 indexes are taken, a redirect is dropped.
    for (int i = 0; i <= 50; ++i)
        sockets.sockets[i].connected = true;
    const std::size_t connects = sockets.connectLog.size();
    sockets.Deliver(0, RedirectFrame("0007", "s.example.net:1"));
    EXPECT_EQ(sockets.connectLog.size(), connects);
    EXPECT_FALSE(sockets.Exists(51));
}

TEST_F(ConnectionsTest, EachGreetingIsAnsweredWithItsOwnRedirectsCookie) {
    SignOn();
    sockets.connectAtOnce = false;
    sockets.Deliver(0, RedirectFrame("0007", "s.example.net:1", "0007"));
    sockets.Deliver(0, RedirectFrame("0010", "s.example.net:1", "0010"));
    sockets.sockets[1].connected = sockets.sockets[2].connected = true;
    sockets.Deliver(1, Greeting());
    EXPECT_EQ(sockets.TakePayloads(1), Lines{"000000010006000430303037"});
    sockets.Deliver(2, Greeting());
    EXPECT_EQ(sockets.TakePayloads(2), Lines{"000000010006000430303130"});
}

TEST_F(ConnectionsTest, LostConnectionsAreReportedByRole) {
    SignOn();
    const int room = JoinRoom("Lobby", 4);
    const int admin = OpenService("0007");
    events.Take();

    sockets.Fail(room);
    EXPECT_EQ(
        events.Take(),
        (Lines{"LeftChat(Lobby, 4, 0, " + std::to_string(room) + ")",
               "ConnectionLost(" + std::to_string(room) +
                   ", Connection to chat Name: Lobby, Exchange: 4, Instance: 0 has been lost.)"}));
    EXPECT_TRUE(client.Chat().empty());

    const std::pair<int, std::string> roles[] = {{admin, "the admin server"},
                                                 {42, "sock index 42"}};
    for (const auto& [index, name] : roles) {
        sockets.Fail(index);
        EXPECT_EQ(events.Take(), Lines{"ConnectionLost(" + std::to_string(index) +
                                       ", Connection to " + name + " has been lost.)"});
    }
    EXPECT_EQ(client.AdminIndex(), 0);
}

TEST_F(ConnectionsTest, LeaveChatLeavesEveryRoomOfTheIndex) {
    sockets.Create(2);
    sockets.Create(3);
    auto room = [](const char* name, int index) {
        Chats c;
        c.ChatName = name;
        c.ChatIndex = index;
        return c;
    };
    client.Chat() = {room("One", 2), room("Two", 3), room("Three", 2)};
    client.LeaveChat(2);
    EXPECT_EQ(events.Take(), (Lines{"LeftChat(One, 0, 0, 2)", "LeftChat(Three, 0, 0, 2)"}));
    EXPECT_EQ(sockets.sockets[2].closes, 1);
    ASSERT_EQ(client.Chat().size(), 1u);
    EXPECT_EQ(client.Chat()[0].ChatName, "Two");
}

TEST_F(ConnectionsTest, ServiceRequestsWaitForTheirConnection) {
    SignOn();
    client.GetBuddyIcon("Bob", HexToBytes("00112233445566778899AABBCCDDEEFF"));
    client.ChangeEmail(" new@example.net ");
    client.FormatScreenname("Bot Name");
    client.ChangePassword("newpw");
    client.NewRegStatus(3);
    client.RequestEmail();
    client.RequestNick();
    client.RequestRegistrationStatus();
    Lines services(8, "000100040000000000010007");
    services[0] = "000100040000000000010010";
    EXPECT_EQ(sockets.TakePayloads(0), services);

    const int admin = OpenService("0007");
    const Lines sent = sockets.TakePayloads(admin);
    ASSERT_GE(sent.size(), 7u);
    EXPECT_EQ(Lines(sent.end() - 7, sent.end()),
              (Lines{"000700040000000000040011000F6E6577406578616D706C652E6E6574",
                     "0007000400000000000400010008426F74204E616D65",
                     "000700040000000000040012000773656372657431000200056E65777077",
                     "00070004000000000004001300020003", "0007000200000000000200110000",
                     "0007000200000000000200010000", "0007000200000000000200130000"}));
    // (The admin connection first: any other one forgets the admin queue.)
    const int icon = OpenService("0010");
    EXPECT_EQ(sockets.TakePayloads(icon).back(),
              "0010000400000000000403426F62010001011000112233445566778899AABBCCDDEEFF");

    // Once the connection is there, requests go at once.
    client.ChangePassword("pw2");
    client.RequestNick();
    EXPECT_EQ(sockets.TakePayloads(admin),
              (Lines{"00070004000000000004000200037077320012000773656372657431",
                     "0007000200000000000400010000"}));
}

}  // namespace
}  // namespace oscar
