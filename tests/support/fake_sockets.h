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
    int closes = 0;
    std::string inbox;
};

class FakeSocketLayer : public oscar::SocketLayer {
  public:
    void SetListener(oscar::SocketListener* listener) override { listener_ = listener; }
    void Create(int index) override { sockets[index]; }
    void Destroy(int index) override {
        if (index == 0) return Close(0);
        sockets.erase(index);
    }
    bool Exists(int index) const override { return sockets.count(index) > 0; }
    void Connect(int index, const std::string& host, int port) override {
        sockets[index].connected = connectAtOnce;
        connectLog.push_back({index, host + ":" + std::to_string(port)});
    }
    void Send(int index, const std::string& bytes) override {
        if (IsConnected(index)) written.push_back({index, bytes});
    }
    std::string ReadAll(int index) override {
        return Exists(index) ? std::exchange(sockets[index].inbox, {}) : std::string();
    }
    void Close(int index) override {
        if (!Exists(index)) return;
        sockets[index].connected = false;
        ++sockets[index].closes;
    }
    bool IsConnected(int index) const override {
        return Exists(index) && sockets.at(index).connected;
    }
    std::string Tag(int index) const override {
        return Exists(index) ? sockets.at(index).tag : std::string();
    }
    void SetTag(int index, const std::string& tag) override {
        if (Exists(index)) sockets[index].tag = tag;
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
