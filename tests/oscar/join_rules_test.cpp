// Which navigation reply is taken for a room: a chat service request with a
// wrong or empty cookie makes real servers end the whole session.
#include <gtest/gtest.h>

#include "support/client_fixture.h"

namespace oscar {
namespace {

using testing_support::ClientTest;
using testing_support::Frame;
using testing_support::SnacFrame;

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
              std::vector<std::string>{
                  "Error(Join chat failed, the chat navigation server "
                  "svc.example.net:5192 sent a room without a cookie., 0, 0, 000D)"});

    // A room nobody asked for is not joined either.
    sockets.Deliver(nav, RoomReply("4-0-Lobby"));
    EXPECT_TRUE(sockets.TakePayloads(0).empty());
}

TEST_F(JoinRulesTest, EachStepOfAJoinHasItsOwnDeadline) {
    SignOn();
    client.JoinChat("Lobby", 4, 0);
    const int nav = OpenService("000D", "NAV");
    // Progress on the join's connections starts the step's time again.
    for (int i = 1; i < TolSock::kStepSeconds; ++i)
        client.TickSecond();
    sockets.Deliver(nav, SnacFrame("000D0009000000000000"));
    sockets.Deliver(nav, RoomReply("4-0-Lobby"));
    for (int i = 1; i < TolSock::kStepSeconds; ++i)
        client.TickSecond();
    EXPECT_TRUE(events.log.empty());
    client.TickSecond();
    EXPECT_EQ(events.Take(),
              std::vector<std::string>{"Error(Join chat failed, no answer within 15 seconds while "
                                       "asking the BOS server for the chat service., 0, 0, )"});
    EXPECT_FALSE(client.JoinPending());
}

}  // namespace
}  // namespace oscar
