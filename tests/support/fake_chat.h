// Records the lines the game sends, with the room each went to.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "game/chat_sender.h"

namespace testing_support {

struct SentLine {
    int room;
    std::string text;
};

class FakeChat : public game::ChatSender {
  public:
    void SendChat(int chatIndex, const std::string& message) override {
        sent.push_back({chatIndex, message});
    }
    int FirstRoomIndex() const override { return firstRoom; }

    // The lines sent since the last call, and forgets them.
    std::vector<SentLine> Take() { return std::exchange(sent, {}); }

    int firstRoom = 1;
    std::vector<SentLine> sent;
};

}  // namespace testing_support
