// The game's only input from the room: every chat line goes through
// ChatMessage, which logs it, ignores disallowed participants, checks it as
// an answer or a topic choice, and serves "/hint", "/score" and the ops'
// slash commands, paced by two ten-second timers.
#pragma once

#include <string>

#include "game/console.h"
#include "game/game.h"
#include "game/name_list.h"
#include "game/timer.h"
#include "history/history.h"

namespace game {

class ChatCommands {
  public:
    // `tmrCcoms` pauses op commands and `tmrCcom2` "/hint" and "/score"; both
    // are 10000 ms and switch themselves off on their tick.
    ChatCommands(Game& game, Console& console, Timer& tmrCcoms, Timer& tmrCcom2);

    // The handler of the client's ChatMessage event.
    void ChatMessage(int intChatIndex, const std::string& strScreenname,
                     const std::string& strMessage);

    NameList& Ops() { return ops_; }
    NameList& Disallows() { return disallows_; }
    bool chkHint = false;  // "Disable Hint Ccom"
    // The record "/top" and "/stats NAME" answer from; without one they are
    // ordinary lines.
    void SetHistory(const history::History* record) { history_ = record; }

    static constexpr const char* kHelpText =
        "<B><U>COMMANDS</U></B>: /Op, /Deop, /Start, /Stop, /New Game, /New Topic, /Score, "
        "/Answer, /Hint, /Skip, /Disallow, /Allow, /End Game";
    // The reply to a name command whose name is no screen name.
    static constexpr const char* kNotAScreenName = "That is not a screen name.";

  private:
    // Runs the first op command that `cmd` begins with; true when the
    // command asks for the ten-second pause.
    bool RunOpCommand(int chatIndex, const std::string& cmd);

    Game& game_;
    Console& console_;
    Timer& tmrCcoms_;
    Timer& tmrCcom2_;
    NameList ops_;
    NameList disallows_;
    const history::History* history_ = nullptr;
};

// "&gt;", "&lt;", "&amp;" and "&quot;" decoded in that order, each over the
// whole line (so "&amp;gt;" becomes "&gt;").
std::string DecodeEntities(std::string_view line);

}  // namespace game
