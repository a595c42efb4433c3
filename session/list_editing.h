// The operator's editing of the game's lists by hand (scramble list, ops,
// disallowed users, players and scores) and the manual puzzle.
#pragma once

#include <string>

#include "game/chat_commands.h"
#include "game/game.h"
#include "game/operator_dialogs.h"
#include "game/timer.h"
#include "oscar/tolsock.h"

namespace session {

class ListEditing {
  public:
    ListEditing(game::Game& game, game::ChatCommands& commands, oscar::TolSock& client,
                game::OperatorDialogs& dialogs, game::StringList& errors, game::Timer& tmrMsgPause,
                game::Timer& tmrIdle);

    // "Scramble" (`blank` false) or "Word Blank" (`blank` true) of Manual Send.
    void ManualSend(const std::string& txtWord, const std::string& txtHint, bool blank);
    // Enter in the direct-add boxes; the caller empties both boxes after.
    void AddDirectly(const std::string& txtManualAddWord, const std::string& txtManualAddHint);

    void mnuAddScramble_Click();
    void mnuRemoveScramble_Click();
    void mnuEditScramble_Click();

    // Enter in txtAddOp / txtAddDisallow (or their menu items); the caller
    // empties the box after.
    void AddOp(const std::string& text) { AddName(commands_.Ops(), text); }
    void AddDisallow(const std::string& text) { AddName(commands_.Disallows(), text); }
    void mnuRemoveOp_Click() { RemoveSelected(commands_.Ops()); }
    void mnuRemoveDis_Click() { RemoveSelected(commands_.Disallows()); }

    void mnuAddPlayer_Click();
    void mnuRemovePlayer_Click();
    void mnuEditScore_Click();

  private:
    void AddName(game::NameList& list, const std::string& text);
    void RemoveSelected(game::NameList& list);
    // The player named by the selected row of lstPlayers, "" when none.
    std::string SelectedPlayer() const;

    game::Game& game_;
    game::ChatCommands& commands_;
    oscar::TolSock& client_;
    game::OperatorDialogs& dialogs_;
    game::StringList& errors_;
    game::Timer& tmrMsgPause_;
    game::Timer& tmrIdle_;
};

}  // namespace session
