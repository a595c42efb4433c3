// A socket layer for tests: records every connect, close and byte written,
// and lets a test deliver bytes or fail a connection on any index.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "oscar/encoding.h"
#include "oscar/socket_layer.h"
#include "oscar/tolsock.h"

namespace testing_support {

struct FakeSocket {
    bool connected = false;
    std::string tag;
    std::string host;
    int port = 0;
    int connects = 0;
    int closes = 0;
    std::string inbox;
};

class FakeSocketLayer : public oscar::SocketLayer {
  public:
    void SetListener(oscar::SocketListener* listener) override { listener_ = listener; }
    void Create(int index) override { sockets[index]; }
    void Destroy(int index) override {
        if (index == 0) {
            Close(0);
        } else {
            sockets.erase(index);
        }
    }
    bool Exists(int index) const override { return sockets.count(index) > 0; }
    void Connect(int index, const std::string& host, int port) override {
        FakeSocket& s = sockets[index];
        s.host = host;
        s.port = port;
        ++s.connects;
        s.connected = connectAtOnce;
        connectLog.push_back({index, host + ":" + std::to_string(port)});
    }
    void Send(int index, const std::string& bytes) override {
        auto it = sockets.find(index);
        if (it == sockets.end() || !it->second.connected) return;
        written.push_back({index, bytes});
    }
    std::string ReadAll(int index) override {
        auto it = sockets.find(index);
        if (it == sockets.end()) return {};
        std::string bytes;
        bytes.swap(it->second.inbox);
        return bytes;
    }
    void Close(int index) override {
        auto it = sockets.find(index);
        if (it == sockets.end()) return;
        it->second.connected = false;
        ++it->second.closes;
    }
    bool IsConnected(int index) const override {
        auto it = sockets.find(index);
        return it != sockets.end() && it->second.connected;
    }
    std::string Tag(int index) const override {
        auto it = sockets.find(index);
        return it == sockets.end() ? std::string() : it->second.tag;
    }
    void SetTag(int index, const std::string& tag) override {
        auto it = sockets.find(index);
        if (it != sockets.end()) it->second.tag = tag;
    }

    // The server side of a test.
    void Deliver(int index, const std::string& bytes) {
        sockets[index].inbox += bytes;
        if (listener_) listener_->OnDataArrival(index);
    }
    void Fail(int index) {
        if (listener_) listener_->OnSocketError(index);
    }

    // The payloads (frames without their 6-byte header) written on `index`
    // since the last call, as hex, and forgets every frame written.
    std::vector<std::string> TakePayloads(int index) {
        std::vector<std::string> payloads;
        for (const auto& [i, frame] : written) {
            if (i == index) payloads.push_back(oscar::BytesToHex(frame.substr(6)));
        }
        written.clear();
        return payloads;
    }

    bool connectAtOnce = true;
    std::map<int, FakeSocket> sockets;
    std::vector<std::pair<int, std::string>> written;
    std::vector<std::pair<int, std::string>> connectLog;

  private:
    oscar::SocketListener* listener_ = nullptr;
};

// Puts `client` in a room whose connection is `index` on `sockets`, as a
// finished join leaves it.
inline void EnterFakeRoom(FakeSocketLayer& sockets, oscar::TolSock& client, int index = 2) {
    sockets.Create(index);
    sockets.sockets[index].connected = true;
    oscar::Chats room;
    room.ChatIndex = index;
    client.Chat().push_back(room);
}

}  // namespace testing_support
