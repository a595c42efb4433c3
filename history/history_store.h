// What the game tells the record of past games while it plays. The game calls
// these on its one thread, right after the room has seen the matching line;
// the store takes the time itself, so the game needs no clock.
#pragma once

#include <string>
#include <vector>

namespace history {

class HistoryStore {
  public:
    virtual ~HistoryStore() = default;

    // A puzzle went to the room. Opens a game first when none is open.
    virtual void PuzzlePosted(const std::string& word, const std::string& topic, int mode,
                              int scoreLimit) = 0;
    // The player who typed the answer of the last puzzle was credited.
    // `screenName` is as the room spelled it.
    virtual void AnswerCredited(const std::string& screenName) = 0;
    // The open game ended; `winnerKeys` are normalized names (several for a
    // tie, none when nobody won).
    virtual void GameEnded(const std::vector<std::string>& winnerKeys) = 0;
};

}  // namespace history
