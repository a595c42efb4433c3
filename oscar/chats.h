// One joined chat room, as the client keeps it.
#pragma once

#include <string>

#include "oscar/name_sequence.h"

namespace oscar {

struct Chats {
    std::string ChatName;
    int Exchange = 0;
    int Instance = 0;
    int DetailLevel = 0;
    int MaxMessageLength = 0;
    int MaxPeople = 0;
    std::string Cookie;
    int ChatIndex = 0;  // the socket index of the room's connection
    // The people in the room, normalized; kept by the window, not the client.
    NameSequence PeopleHere;
};

}  // namespace oscar
