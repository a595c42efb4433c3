// The round cycle: posting puzzles, checking answers, crediting players,
// the pause after a solved word, the idle time of an unsolved one, new games
// and topic choices. Driven by three timers, the operator's buttons and the
// room's chat lines, one at a time on the one thread.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "game/chat_sender.h"
#include "game/operator_dialogs.h"
#include "game/puzzle.h"
#include "game/random.h"
#include "game/scores.h"
#include "game/string_list.h"
#include "game/style.h"
#include "game/timer.h"
#include "game/word_lists.h"
#include "history/history_store.h"

namespace game {

// What the game needs from the program around it.
struct GameEnvironment {
    OperatorDialogs& dialogs;
    ChatSender& chat;
    RandomSource& random;
    StringList& errors;  // the error log
    Timer& tmrMsgPause;  // 1000 ms
    Timer& tmrIdle;      // 1000 ms
    Timer& tmrTopics;    // 25000 ms
    std::function<void()> openTopicPicker;
};

class Game {
  public:
    explicit Game(GameEnvironment environment);

    // --- State the window shows and edits --------------------------------
    WordLists& Lists() { return lists_; }
    ScoreTable& Scores() { return scores_; }
    LineStyle& Style() { return style_; }
    GameModes& Modes() { return modes_; }
    // Where puzzles, credits and game ends are recorded; none by default.
    void SetHistory(history::HistoryStore* store) { history_ = store; }

    bool GameOn = false;
    bool SignedOn = false;
    int SendPause = 10;   // seconds before the next word after a solved one
    int IdleTime = 30;    // seconds a word may stay unsolved
    int ScoreLimit = 15;  // points to win
    int PauseCount = 0;
    int IdleCount = 0;
    bool chkLCase = false;      // "Force words into lower case"
    bool chkNewTopic = false;   // "Change topics every game"
    bool chkTopicVote = false;  // "Make new topics a vote"

    // The answer of the puzzle in play, untrimmed; nullopt when none.
    const std::optional<std::string>& PendingAnswer() const { return pendingAnswer_; }
    void DropPendingAnswer() { pendingAnswer_.reset(); }
    // The last puzzle as the room saw it, without the style prefix.
    const std::string& PuzzleLine() const { return puzzleLine_; }
    // Stops the message-pause and idle timers.
    void StopRoundTimers();
    // Stops auto-send and any open topic choice, keeping the word list and
    // its position, so that play can go on from there later.
    void StopPlay();
    // Freezes the round where it stands while the room is out of reach (no
    // timer runs, so no line is lost), and lets it go on from there once the
    // room is back, unless play was stopped in between.
    void Suspend();
    void Resume();
    bool Suspended() const { return suspended_.has_value(); }

    // --- The round cycle --------------------------------------------------
    void AutoSend(int Index);
    void WordSend(std::string_view StrWord);
    void ResetTimers();
    void NewGame();
    void NewTopic(bool blnCcom);

    void cmdAutoSendOn_Click();
    void cmdAutoSendOff_Click();
    void cmdAnswer_Click();
    void cmdHint_Click();
    void cmdSkip_Click();
    void cmdNewGame_Click() { NewGame(); }
    void cmdNewTopic_Click() { NewTopic(false); }

    void tmrMsgPause_Timer();
    void tmrIdle_Timer();
    void tmrTopics_Timer();

    // --- Chat-line steps --------------------------------------------------
    // The answer check for a line from room `chatIndex`; `text` is decoded,
    // stripped of tags and trimmed. Credits the player when correct.
    void CheckAnswer(int chatIndex, const std::string& sender, const std::string& text);
    // While a topic choice is open: a line naming a loaded topic chooses it
    // (unless choices are votes). True when a topic was chosen.
    bool ChooseTopicFromChat(int chatIndex, const std::string& text);
    bool TopicChoiceOpen() const { return env_.tmrTopics.IsEnabled(); }

    // --- Players and scores ----------------------------------------------
    void AddPlayer(const std::string& strPlayer);
    void UpdateScore(const std::string& strPlayer, std::int32_t Score);
    void ShowTopScores();
    // The winner or tie sentence, consuming the score table.
    std::string Announcement();

    // --- Sending ----------------------------------------------------------
    // Sends the styled line to the first room; nothing without a room.
    void SendToFirstRoom(std::string_view text);
    // Sends the styled line to the room a chat line came from.
    void SendToRoom(int chatIndex, std::string_view text);

  private:
    void Advance();
    std::string EntryAt(int position) const;
    void AnnounceWinnerAndStartNewGame();
    void PutTopicInPlay(const std::string& name);

    GameEnvironment env_;
    WordLists lists_;
    ScoreTable scores_;
    LineStyle style_;
    GameModes modes_;
    std::optional<std::string> pendingAnswer_;
    struct Frozen {
        bool msgPause = false;
        bool idle = false;
        bool topics = false;
    };
    std::optional<Frozen> suspended_;
    history::HistoryStore* history_ = nullptr;
    std::string puzzleLine_;
};

}  // namespace game
