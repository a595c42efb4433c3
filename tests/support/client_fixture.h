// A client wired to a fake socket layer and an event recorder, with the
// server's side of the common exchanges written out frame by frame.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "oscar/encoding.h"
#include "oscar/tolsock.h"
#include "support/fake_sockets.h"
#include "support/frames.h"
#include "support/join_room.h"
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
        return testing_support::OpenService(sockets, familyHex, cookie);
    }

    // JoinChat through chat navigation and the chat server up to the room
    // information; returns the room's index. The replies name exchange 4.
    int JoinRoom(const std::string& name, int exchange) {
        client.JoinChat(name, exchange, 0);
        return testing_support::JoinRoom(sockets, client, name);
    }

    FakeSocketLayer sockets;
    RecordingEvents events;
    oscar::TolSock client{sockets};
};

}  // namespace testing_support
