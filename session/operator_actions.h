// The window's own actions: checking the timing and limit fields when the
// operator leaves them, the help and credits boxes, and the two links.
#pragma once

#include <functional>
#include <string>

#include "game/game.h"
#include "game/operator_dialogs.h"
#include "game/timer.h"

namespace session {

class OperatorActions {
  public:
    OperatorActions(game::Game& game, game::OperatorDialogs& dialogs, game::Timer& tmrIdle,
                    std::function<void(const std::string&)> openUrl);

    // Each check applies the field's number to the game and returns the text
    // the field shows afterwards.
    std::string txtSendPause_LostFocus(const std::string& text);
    std::string txtScoreLimit_LostFocus(const std::string& text);
    std::string txtIdleTime_LostFocus(const std::string& text);

    // The "?" button of a panel: 0 Scramble List, 1 Main Game, 2 Topics.
    void cmdHelp_Click(int Index);
    void cmdCredits_Click();
    void lblHexList_Click();
    void lblSite_Click();

  private:
    game::Game& game_;
    game::OperatorDialogs& dialogs_;
    game::Timer& tmrIdle_;
    std::function<void(const std::string&)> openUrl_;
};

}  // namespace session
