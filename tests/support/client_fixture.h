// A client wired to a fake socket layer and an event recorder, with the
// server's side of the common exchanges written out frame by frame.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "oscar/encoding.h"
#include "oscar/tolsock.h"
#include "support/fake_sockets.h"
#include "support/frames.h"
#include "support/recording_events.h"

namespace testing_support {

class ClientTest : public ::testing::Test {
  protected:
    ClientTest() { client.SetObserver(&events); }

    // Signs on as "Bot Name" with password "secret1" through the whole
    // exchange; returns with every event and frame so far taken.
    void SignOn() {
        client.Login("Bot Name", "secret1", 5190, false, false, "Login.Example.net");
        for (const std::string& frame : SignOnFrames())
            sockets.Deliver(0, frame);
        sockets.written.clear();
        events.Take();
    }

    // A redirect for `familyHex` answered through the whole service setup;
    // returns the index the service got.
    int OpenService(const std::string& familyHex, const std::string& cookie = "SVC") {
        const std::size_t before = sockets.connectLog.size();
        sockets.Deliver(0, RedirectFrame(familyHex, "svc.example.net:5192", cookie));
        if (sockets.connectLog.size() == before) return 0;
        const int index = sockets.connectLog.back().first;
        sockets.Deliver(index, Greeting());
        sockets.Deliver(index, SnacFrame("000100030000000000000001" + familyHex));
        sockets.Deliver(index, SnacFrame("0001001800000000000000010004" + familyHex + "0001"));
        sockets.Deliver(index, SnacFrame("000100070000000000000000"));
        return index;
    }

    // JoinChat through chat navigation and the chat server up to the room
    // information; returns the room's index.
    int JoinRoom(const std::string& name, int exchange) {
        client.JoinChat(name, exchange, 0);
        if (client.ChatNavIndex() == 0) {
            const int nav = OpenService("000D", "NAV");
            sockets.Deliver(nav, SnacFrame("000D0009000000000000"));
        }
        const int nav = client.ChatNavIndex();
        const std::string cookie = "4-0-" + name;
        sockets.Deliver(
            nav, Frame(2, oscar::HexToBytes("000D0009000000000000") +
                              oscar::MakeTLV("0004", 2,
                                             oscar::Word(static_cast<std::uint16_t>(exchange)) +
                                                 oscar::MakeTLV("", 1, cookie) +
                                                 oscar::HexToBytes("0000"))));
        const int room = OpenService("000E", cookie);
        sockets.Deliver(
            room, Frame(2, oscar::HexToBytes("000E0002000000000000") +
                               oscar::Word(static_cast<std::uint16_t>(exchange)) +
                               oscar::MakeTLV("", 1, cookie) + oscar::HexToBytes("0000020002") +
                               oscar::MakeTLV("00D1", 2, oscar::HexToBytes("0400")) +
                               oscar::MakeTLV("00D2", 2, oscar::HexToBytes("0064"))));
        return room;
    }

    FakeSocketLayer sockets;
    RecordingEvents events;
    oscar::TolSock client{sockets};
};

}  // namespace testing_support
