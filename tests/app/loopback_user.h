// A user of the loopback OSCAR server: the real client on Qt sockets with
// its own event log.
#pragma once

#include <algorithm>
#include <string>

#include "app/qt_socket_layer.h"
#include "oscar/tolsock.h"
#include "support/qt_wait.h"
#include "support/recording_events.h"

namespace testing_support {

struct LoopbackUser {
    LoopbackUser() { client.SetObserver(&events); }

    int Count(const std::string& prefix) const {
        return static_cast<int>(
            std::count_if(events.log.begin(), events.log.end(),
                          [&](const auto& l) { return l.starts_with(prefix); }));
    }

    // Signs on at 127.0.0.1; whether the client got signed on in time.
    bool SignOn(int port, const std::string& name = "Scramble Bot",
                const std::string& password = "secret1") {
        client.Login(name, password, port, false, false, "127.0.0.1");
        WaitFor([&] { return client.LoggedInState() || Count("LoginError(") > 0; });
        return client.LoggedInState();
    }

    // Joins `room` with the events so far taken; the event that ended the
    // join, or "" when none came in time.
    std::string Join(const std::string& room, int exchange = 4) {
        events.Take();
        client.JoinChat(room, exchange, 0);
        WaitFor([&] { return Count("JoinedChat(") > 0 || Count("Error(") > 0; });
        for (const std::string& e : events.log) {
            if (e.starts_with("JoinedChat(") || e.starts_with("Error(")) return e;
        }
        return "";
    }
    int RoomIndex() const { return client.Chat().empty() ? 0 : client.Chat().front().ChatIndex; }

    QtSocketLayer sockets;
    RecordingEvents events;
    oscar::TolSock client{sockets};
};

}  // namespace testing_support
