// A client wired to a fake socket layer and an event recorder, with the
// server's side of the common exchanges written out frame by frame.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "oscar/encoding.h"
#include "oscar/tolsock.h"
#include "support/fake_sockets.h"
#include "support/recording_events.h"

namespace testing_support {

// A whole FLAP frame around `payload` (sequence number 0).
inline std::string Frame(int channel, const std::string& payload) {
    return "*" + oscar::MakeByte(channel) + oscar::Word(0) +
           oscar::Word(static_cast<std::uint16_t>(payload.size())) + payload;
}

// A channel-2 frame whose payload is given as hex.
inline std::string SnacFrame(const std::string& hex) {
    return Frame(2, oscar::HexToBytes(hex));
}

inline std::string Greeting() {
    return Frame(1, oscar::HexToBytes("00000001"));
}

// A user record: name length, name, warning level, no TLVs.
inline std::string UserRecord(const std::string& name) {
    return oscar::MakeTLV("", 1, name) + oscar::HexToBytes("00000000");
}

// A chat line said by `sender` as the chat server relays it.
inline std::string ChatLineFrame(const std::string& sender, const std::string& text,
                                 const std::string& charset = "us-ascii") {
    using oscar::HexToBytes;
    using oscar::MakeTLV;
    return Frame(2, HexToBytes("000E00060000000000000000000000000000"
                               "0003") +
                        MakeTLV("0003", 2, UserRecord(sender)) +
                        MakeTLV("0005", 2, MakeTLV("0002", 2, charset) + MakeTLV("0001", 2, text)));
}

class ClientTest : public ::testing::Test {
  protected:
    ClientTest() { client.SetObserver(&events); }

    // Signs on as "Bot Name" with password "secret1" through the whole
    // exchange; returns with every event and frame so far taken.
    void SignOn() {
        client.Login("Bot Name", "secret1", 5190, false, false, "Login.Example.net");
        sockets.Deliver(0, Greeting());
        sockets.Deliver(0, SnacFrame("00170007000000000000"
                                     "0004"
                                     "6B657931"));
        sockets.Deliver(0, Frame(2, oscar::HexToBytes("00170003000000000000") +
                                        oscar::MakeTLV("0001", 2, "botname") +
                                        oscar::MakeTLV("0005", 2, "bos.example.net:5191") +
                                        oscar::MakeTLV("0006", 2, "COOKIE") +
                                        oscar::MakeTLV("0011", 2, "bot@example.net")));
        sockets.Deliver(0, Greeting());
        sockets.Deliver(0, SnacFrame("00010003000000000000"
                                     "00010002"));
        sockets.Deliver(0, SnacFrame("00010018000000000000"
                                     "00010004"));
        sockets.Deliver(0, SnacFrame("00010007000000000000"
                                     "0000"));
        sockets.Deliver(0, SnacFrame("00040005000000000000"
                                     "00020000000B1F4003E703E700000000"));
        sockets.Deliver(0, SnacFrame("00090003000000000000"));
        sockets.written.clear();
        events.Take();
    }

    // A redirect for `familyHex` answered through the whole service setup;
    // returns the index the service got.
    int OpenService(const std::string& familyHex, const std::string& cookie = "SVC") {
        const std::size_t before = sockets.connectLog.size();
        sockets.Deliver(0, Frame(2, oscar::HexToBytes("00010005000000000000") +
                                        oscar::MakeTLV("000D", 2, oscar::HexToBytes(familyHex)) +
                                        oscar::MakeTLV("0005", 2, "svc.example.net:5192") +
                                        oscar::MakeTLV("0006", 2, cookie)));
        if (sockets.connectLog.size() == before) return 0;
        const int index = sockets.connectLog.back().first;
        sockets.Deliver(index, Greeting());
        sockets.Deliver(index, SnacFrame("00010003000000000000"
                                         "0001" +
                                         familyHex));
        sockets.Deliver(index, SnacFrame("00010018000000000000"
                                         "00010004" +
                                         familyHex + "0001"));
        sockets.Deliver(index, SnacFrame("00010007000000000000"
                                         "0000"));
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
        sockets.Deliver(room, Frame(2, oscar::HexToBytes("000E0002000000000000") +
                                           oscar::Word(static_cast<std::uint16_t>(exchange)) +
                                           oscar::MakeTLV("", 1, cookie) +
                                           oscar::HexToBytes("0000"
                                                             "02"
                                                             "0002") +
                                           oscar::MakeTLV("00D1", 2, oscar::HexToBytes("0400")) +
                                           oscar::MakeTLV("00D2", 2, oscar::HexToBytes("0064"))));
        return room;
    }

    FakeSocketLayer sockets;
    RecordingEvents events;
    oscar::TolSock client{sockets};
};

}  // namespace testing_support
