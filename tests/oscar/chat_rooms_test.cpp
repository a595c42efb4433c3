// Joining a room through chat navigation and the chat server, and what the
// chat connection reports.
#include <gtest/gtest.h>

#include "oscar/bodies.h"
#include "support/client_fixture.h"

namespace oscar {
namespace {

using Lines = std::vector<std::string>;

using namespace testing_support;

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
    ASSERT_EQ(cookie.size(), 20u);
    sockets.Deliver(2, Frame(2, HexToBytes("000E00020000000000000004") + MakeTLV("", 1, cookie) +
                                    HexToBytes("0000020003") + MakeTLV("006A", 2, "Word Games") +
                                    MakeTLV("00D1", 2, HexToBytes("0400")) +
                                    MakeTLV("00D2", 2, HexToBytes("0164"))));
    EXPECT_EQ(events.Take(), Lines{"JoinedChat(Word Games, 4, 9, 2, 100, 1024)"});
    const Chats& room = client.Chat()[0];
    EXPECT_EQ(room.Cookie, cookie);
    EXPECT_EQ(room.DetailLevel, 2);

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
