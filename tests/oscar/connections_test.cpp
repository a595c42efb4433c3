// The client's connections against a fake socket layer: frames written and
// cut, index allocation, lost connections, resets and the admin queue; and
// joining a room through chat navigation and the chat server, and what the
// chat connection reports.
#include <gtest/gtest.h>

#include "oscar/bodies.h"
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
    EXPECT_EQ(std::pair(sockets.Exists(2), sockets.Tag(2)), std::pair(true, std::string()));
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
    client.Chat() = {{.ChatName = "One", .Cookie = {}, .ChatIndex = 2, .PeopleHere = {}},
                     {.ChatName = "Two", .Cookie = {}, .ChatIndex = 3, .PeopleHere = {}},
                     {.ChatName = "Three", .Cookie = {}, .ChatIndex = 2, .PeopleHere = {}}};
    client.LeaveChat(2);
    EXPECT_EQ(events.Take(), (Lines{"LeftChat(One, 0, 0, 2)", "LeftChat(Three, 0, 0, 2)"}));
    EXPECT_EQ(sockets.sockets[2].closes, 1);
    EXPECT_EQ(std::tuple(client.Chat().size(), client.Chat().at(0).ChatName),
              std::tuple(1u, "Two"));
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

using ChatRoomsTest = ClientTest;

TEST_F(ChatRoomsTest, AJoinTakesNavigationThenTheChatServer) {
    SignOn();
    client.JoinChat("  Word Games ", 4, 9);
    EXPECT_EQ(sockets.TakePayloads(0), Lines{"00010004000000000001000D"});

    // Navigation: redirect, greeting with its cookie, setup.
    ASSERT_EQ(OpenService("000D", "NAVCOOKIE"), 1);
    sockets.Deliver(1, SnacFrame("000D0009000000000000000200010A"));
    EXPECT_EQ(
        sockets.TakePayloads(1),
        (Lines{"00000001000600094E4156434F4F4B4945", "00010017000000000017", "00010006000000000006",
               "0001000800000000000800010002000300040005", "000D0002000000000002",
               "0001000200000000000100010004001008E5000D0001001008E5",
               "0001000200000000000100010004001008E5000D0001001008E5",
               "000D0008000000000008000406637265617465000901000300D6000875732D617363696900D3000A"
               "576F72642047616D657300D70002656E"}));

    // The room block names the cookie; the service request carries the
    // pending exchange (not the block's), that cookie and instance 00 00.
    sockets.Deliver(1, Frame(2, HexToBytes("000D0009000000000000") +
                                    MakeTLV("0004", 2,
                                            HexToBytes("0005") + MakeTLV("", 1, "4-0-Word Games") +
                                                HexToBytes("000902"))));
    EXPECT_EQ(sockets.TakePayloads(0), Lines{"00010004000000000001000E0001001300040E" +
                                             BytesToHex("4-0-Word Games") + "0000"});

    // The chat server: its setup makes the room's record.
    ASSERT_EQ(OpenService("000E", "CHATCOOKIE"), 2);
    ASSERT_EQ(client.Chat().size(), 1u);
    EXPECT_EQ(sockets.TakePayloads(2).back(),
              "0001000200000000000100010004001008E5000E0001001008E5");
    EXPECT_TRUE(events.log.empty()) << "nothing is reported until the room information";

    // Room information: a 20-byte cookie, max length 04 00, max people 01 64
    // (its low byte counts).
    const std::string cookie = "4-1234-Word Games!!!";
    sockets.Deliver(2, Frame(2, HexToBytes("000E00020000000000000004") + MakeTLV("", 1, cookie) +
                                    HexToBytes("0000020003") + MakeTLV("006A", 2, "Word Games") +
                                    MakeTLV("00D1", 2, HexToBytes("0400")) +
                                    MakeTLV("00D2", 2, HexToBytes("0164"))));
    EXPECT_EQ(events.Take(), Lines{"JoinedChat(Word Games, 4, 9, 2, 100, 1024)"});
    EXPECT_EQ(std::pair(client.Chat()[0].Cookie, client.Chat()[0].DetailLevel),
              std::pair(cookie, 2));

    // Occupants, each record with TLVs to skip.
    sockets.Deliver(
        2, Frame(2, HexToBytes("000E0003000000000000") + MakeTLV("", 1, "Ann") +
                        HexToBytes("00000001") + MakeTLV("0001", 2, HexToBytes("0010")) +
                        UserRecord("Bob") + MakeTLV("", 1, "Cat Z") + HexToBytes("00000002") +
                        MakeTLV("0001", 2, HexToBytes("0010")) +
                        MakeTLV("000F", 2, HexToBytes("00000001"))));
    sockets.Deliver(2, Frame(2, HexToBytes("000E0004000000000000") + UserRecord("Bob")));
    EXPECT_EQ(events.Take(), (Lines{"UserJoinedChat(2, Ann)", "UserJoinedChat(2, Bob)",
                                    "UserJoinedChat(2, Cat Z)", "UserLeftChat(2, Bob)"}));
}

TEST_F(ChatRoomsTest, ChatTextFollowsTheCharacterSetAndNeedsNoRoom) {
    sockets.Create(3);
    sockets.Deliver(3, ChatLineFrame("Ann", HexToBytes("00480069"), "unicode-2-0"));
    // A packet without a character set is us-ascii, whatever came before;
    // one without text says nothing.
    const std::string head = HexToBytes("000E000600000000000000000000000000000003") +
                             MakeTLV("0003", 2, UserRecord("Bob"));
    sockets.Deliver(3, Frame(2, head + MakeTLV("0005", 2, MakeTLV("0001", 2, "OK"))));
    sockets.Deliver(3, Frame(2, head + MakeTLV("0005", 2, MakeTLV("0002", 2, "us-ascii"))));
    EXPECT_EQ(events.Take(), (Lines{"ChatMessage(3, Ann, Hi)", "ChatMessage(3, Bob, OK)"}));
}

// Which navigation reply is taken for a room: a chat service request with a
// wrong or empty cookie makes real servers end the whole session.
using JoinRulesTest = ClientTest;

std::string RoomReply(const std::string& cookie) {
    return Frame(2, HexToBytes("000D0009000000000000") +
                        MakeTLV("0004", 2,
                                HexToBytes("0004") + MakeTLV("", 1, cookie) + HexToBytes("0000")));
}

TEST_F(JoinRulesTest, OnlyAReplyCarryingARoomAnswersTheJoin) {
    SignOn();
    client.JoinChat("Lobby", 4, 0);
    const int nav = OpenService("000D", "NAV");
    // The rights reply (room limit, exchanges) sends the room request.
    const std::string rights = SnacFrame(
        "000D0009000000000000"
        "000200010A"
        "0003000400040000");
    sockets.Deliver(nav, rights);
    ASSERT_EQ(client.ChatNavIndex(), nav);
    sockets.written.clear();

    // Another reply without a room is no room: nothing is asked of BOS.
    sockets.Deliver(nav, rights);
    EXPECT_TRUE(sockets.TakePayloads(0).empty());
    EXPECT_TRUE(client.JoinPending());

    // A room without a cookie ends the join, not the session.
    sockets.Deliver(nav, RoomReply(""));
    EXPECT_TRUE(sockets.TakePayloads(0).empty());
    EXPECT_EQ(events.Take(),
              Lines{"Error(Join chat failed, the chat navigation server "
                    "svc.example.net:5192 sent a room without a cookie., 0, 0, 000D)"});
}

// A join that stops getting answers fails after 15 s of silence, counted
// afresh at each step: no real server test waits that long.
TEST_F(JoinRulesTest, EachStepOfAJoinHasItsOwnDeadline) {
    SignOn();
    client.JoinChat("Lobby", 4, 0);
    const int nav = OpenService("000D", "NAV");
    for (int i = 1; i < TolSock::kStepSeconds; ++i)
        client.TickSecond();
    sockets.Deliver(nav, SnacFrame("000D0009000000000000"));
    sockets.Deliver(nav, RoomReply("4-0-Lobby"));
    for (int i = 1; i < TolSock::kStepSeconds; ++i)
        client.TickSecond();
    EXPECT_TRUE(events.log.empty());
    client.TickSecond();
    EXPECT_EQ(events.Take(), Lines{"Error(Join chat failed, no answer within 15 seconds while "
                                   "asking the BOS server for the chat service., 0, 0, )"});
    EXPECT_FALSE(client.JoinPending());
}

}  // namespace
}  // namespace oscar
