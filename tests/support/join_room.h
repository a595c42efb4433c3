// Puts a client on fake sockets in a room the way a real server does: the
// service redirect for chat navigation, that connection's setup, the rights
// reply, the room reply, the redirect for the room and its setup, and the
// room information. The client tests start from there, and so does fuzz
// input, which then reaches every room handler.
#pragma once

#include <string>

#include "oscar/encoding.h"
#include "oscar/tolsock.h"
#include "support/fake_sockets.h"
#include "support/frames.h"

namespace testing_support {

using testing_support::FakeSocketLayer;
using testing_support::Frame;
using testing_support::Greeting;
using testing_support::SnacFrame;

// Answers a redirect for `familyHex` on the BOS connection through the whole
// service setup; gives the index the service got, 0 when none.
inline int OpenService(FakeSocketLayer& sockets, const std::string& familyHex,
                       const std::string& cookie) {
    const std::size_t before = sockets.connectLog.size();
    sockets.Deliver(0, Frame(2, oscar::HexToBytes("00010005000000000000") +
                                    oscar::MakeTLV("000D", 2, oscar::HexToBytes(familyHex)) +
                                    oscar::MakeTLV("0005", 2, "svc.example.net:5192") +
                                    oscar::MakeTLV("0006", 2, cookie)));
    if (sockets.connectLog.size() == before) return 0;
    const int index = sockets.connectLog.back().first;
    sockets.Deliver(index, Greeting());
    sockets.Deliver(index, SnacFrame("000100030000000000000001" + familyHex));
    sockets.Deliver(index, SnacFrame("0001001800000000000000010004" + familyHex + "0001"));
    sockets.Deliver(index, SnacFrame("000100070000000000000000"));
    return index;
}

// Completes the join that JoinChat(name, 4, 0) started on a signed-on
// client; gives the room's index, 0 when the client made no room.
inline int JoinRoom(FakeSocketLayer& sockets, oscar::TolSock& client, const std::string& name) {
    const std::string cookie = "4-0-" + name;
    if (client.ChatNavIndex() == 0) {
        const int nav = OpenService(sockets, "000D", "NAV");
        if (nav == 0) return 0;
        sockets.Deliver(nav, SnacFrame("000D0009000000000000"));
    }
    sockets.Deliver(
        client.ChatNavIndex(),
        Frame(2, oscar::HexToBytes("000D0009000000000000") +
                     oscar::MakeTLV("0004", 2,
                                    oscar::HexToBytes("0004") + oscar::MakeTLV("", 1, cookie) +
                                        oscar::HexToBytes("0000"))));
    const int room = OpenService(sockets, "000E", cookie);
    if (room == 0) return 0;
    sockets.Deliver(room,
                    Frame(2, oscar::HexToBytes("000E00020000000000000004") +
                                 oscar::MakeTLV("", 1, cookie) + oscar::HexToBytes("0000020002") +
                                 oscar::MakeTLV("00D1", 2, oscar::HexToBytes("0400")) +
                                 oscar::MakeTLV("00D2", 2, oscar::HexToBytes("0064"))));
    return client.Chat().empty() ? 0 : room;
}

}  // namespace testing_support
