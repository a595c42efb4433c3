// Arbitrary byte streams on several connections of a client, in each
// sign-on state. The first byte picks the state; then records of
// [index][length: 2 bytes][bytes] are delivered to the connections (an index
// with its high bit set fails that connection instead). Event handlers call
// back into the client, as the window does, to shake out re-entrancy faults.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "oscar/tolsock.h"
#include "support/fake_sockets.h"
#include "support/frames.h"
#include "support/join_room.h"

namespace {

using namespace testing_support;

// Calls the client from inside its events, as the window and the game do.
class Reentrant : public oscar::ClientEvents {
  public:
    explicit Reentrant(oscar::TolSock& client) : client_(client) {}
    void JoinedChat(const std::string&, int, int, int index, int, int) override {
        client_.SendChat(index, "banner");
    }
    void ChatMessage(int index, const std::string&, const std::string& text) override {
        if (text.size() == 3) client_.LeaveChat(index);
        if (text.size() == 4) client_.LogOff();
        client_.SendChat(index, "reply");
    }
    void UserJoinedChat(int index, const std::string& name) override {
        if (name.size() == 1) client_.LeaveChat(index);
    }
    void ConnectionLost(int index, const std::string&) override {
        if (index == 0) client_.LogOff();
    }
    void LoggedIn(const std::string&, const std::string&, const std::string&) override {
        client_.SetProfile("profile");
        client_.JoinChat("Room", 4, 0);
    }

  private:
    oscar::TolSock& client_;
};

void EnterState(std::uint8_t state, FakeSocketLayer& sockets, oscar::TolSock& client) {
    client.Login("Bot Name", "secret1", 5190, false, false, "auth.example.net");
    if (state % 4 == 0) return;  // authorizing
    const auto frames = SignOnFrames();
    const std::size_t count = state % 4 == 1 ? 4 : frames.size();  // mid-setup or signed on
    for (std::size_t i = 0; i < count; ++i)
        sockets.Deliver(0, frames[i]);
    // Joined: signing on asked for the room (see LoggedIn above); the servers
    // answer through both redirects, so the room is on the client's list and
    // its handlers run for the input below.
    if (state % 4 == 3 && testing_support::JoinRoom(sockets, client, "Room") == 0) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    FakeSocketLayer sockets;
    oscar::TolSock client(sockets);
    Reentrant events(client);
    client.SetObserver(&events);
    EnterState(data[0], sockets, client);

    std::size_t pos = 1;
    while (pos + 3 <= size) {
        const std::uint8_t index = data[pos];
        const std::size_t length = std::size_t{data[pos + 1]} << 8 | data[pos + 2];
        pos += 3;
        const std::size_t take = length < size - pos ? length : size - pos;
        if (index & 0x80) {
            sockets.Fail(index & 0x3F);
        } else if (index & 0x40) {
            // A step's time runs out.
            for (int i = 0; i < oscar::TolSock::kStepSeconds; ++i)
                client.TickSecond();
        } else {
            sockets.Deliver(index % 6,
                            std::string(reinterpret_cast<const char*>(data + pos), take));
        }
        pos += take;
    }
    return 0;
}
