// Where the game's lines go: the client's chat rooms.
#pragma once

#include <string>

namespace game {

class ChatSender {
  public:
    virtual ~ChatSender() = default;
    // Sends one line to the room on connection `chatIndex`.
    virtual void SendChat(int chatIndex, const std::string& message) = 0;
    // The connection of the first joined room, or 0 when no room is joined.
    virtual int FirstRoomIndex() const = 0;
};

}  // namespace game
