// The record of every game played: games, the puzzles posted in them and the
// answers credited, with the players as they first appeared. Kept in memory
// for the standings and handed, event by event, to a writer that makes it
// last (the SQLite file). Times are milliseconds since 1970, UTC.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "history/history_store.h"

namespace history {

using Millis = std::int64_t;

struct PlayerRecord {
    std::string key;   // the normalized screen name: how players are told apart
    std::string name;  // as the room first spelled it
    Millis firstSeen = 0;
};

struct GameRecord {
    Millis started = 0;
    Millis ended = 0;  // 0 while open, or when the program stopped during it
    std::string topic;
    int scoreLimit = 0;
    std::vector<int> winners;  // player indexes
};

struct PuzzleRecord {
    Millis posted = 0;
    int game = 0;   // game index
    int word = 0;   // index into Words()
    int topic = 0;  // index into Topics()
    int mode = 0;
    int winner = -1;  // player index; -1 when nobody was credited
    Millis answered = 0;
};

// Receives each event as it is recorded, with the indexes the record gave it.
class HistoryWriter {
  public:
    virtual ~HistoryWriter() = default;
    virtual void GameStarted(int game, const GameRecord& record) = 0;
    virtual void PuzzlePosted(int puzzle, const PuzzleRecord& record, const std::string& word,
                              const std::string& topic) = 0;
    // `newPlayer` is set when the player appears for the first time.
    virtual void AnswerCredited(int puzzle, const PuzzleRecord& record,
                                const PlayerRecord* newPlayer) = 0;
    // `newPlayers` are winners who had never been credited (a player the
    // operator entered by hand).
    virtual void GameEnded(int game, const GameRecord& record,
                           const std::vector<int>& newPlayers) = 0;
};

enum class Period { Today, ThisWeek, ThisMonth, AllTime };

// [from, to) in milliseconds.
struct Range {
    Millis from = 0;
    Millis to = 0;
};

// The period around `now` in local time; weeks start on Monday.
Range PeriodRange(Period period, Millis now);

struct Standing {
    int player = -1;
    std::string name;
    std::int64_t points = 0;  // credited answers: one point each
    int gamesWon = 0;
    Millis fastest = -1;    // quickest answer after its puzzle; -1 for none
    int longestStreak = 0;  // most puzzles in a row won
};

struct GameSummary {
    int game = 0;
    GameRecord record;
    int puzzles = 0;
};

class History : public HistoryStore {
  public:
    explicit History(std::function<Millis()> clock);

    void SetWriter(HistoryWriter* writer) { writer_ = writer; }

    // --- Recording (HistoryStore) ---
    void PuzzlePosted(const std::string& word, const std::string& topic, int mode,
                      int scoreLimit) override;
    void AnswerCredited(const std::string& screenName) override;
    void GameEnded(const std::vector<std::string>& winnerKeys) override;

    // --- Restoring what a writer kept, oldest first; nothing is written ---
    int RestorePlayer(PlayerRecord record);
    int RestoreGame(GameRecord record);
    void RestoreWinner(int game, int player);
    int RestorePuzzle(Millis posted, int game, const std::string& word, const std::string& topic,
                      int mode, int winner, Millis answered);

    // --- Reading ---
    const std::vector<PlayerRecord>& Players() const { return players_; }
    const std::vector<GameRecord>& Games() const { return games_; }
    const std::vector<PuzzleRecord>& Puzzles() const { return puzzles_; }
    const std::vector<std::string>& Words() const { return words_; }
    const std::vector<std::string>& Topics() const { return topics_; }
    std::optional<int> FindPlayer(const std::string& screenName) const;
    std::optional<int> FindTopic(const std::string& topic) const;
    // The game recorded by this run that is still going on.
    std::optional<int> OpenGame() const { return openGame_; }

    // Everyone who scored in the range, best first: points, then games won,
    // then the faster fastest answer, then name. `topic` narrows it to one
    // topic's puzzles (games won then count games played on that topic).
    std::vector<Standing> Standings(Range range, std::optional<int> topic = {}) const;
    // One player's record in the range; points 0 when the player has none.
    Standing RecordOf(int player, Range range) const;
    // The last `count` games, newest first.
    std::vector<GameSummary> RecentGames(int count) const;

    Millis Now() const { return clock_(); }

  private:
    int Intern(std::vector<std::string>& table, std::unordered_map<std::string, int>& index,
               const std::string& text);
    int PlayerFor(const std::string& screenName, Millis now, bool& added);

    std::function<Millis()> clock_;
    HistoryWriter* writer_ = nullptr;
    std::vector<PlayerRecord> players_;
    std::unordered_map<std::string, int> playerIndex_;
    std::vector<GameRecord> games_;
    std::vector<PuzzleRecord> puzzles_;
    std::vector<std::string> words_, topics_;
    std::unordered_map<std::string, int> wordIndex_, topicIndex_;
    std::optional<int> openGame_;
};

// The winners' normalized names in a FindWinners result ("name:score", or
// several joined by the tie separator); none for "[Error]".
std::vector<std::string> WinnerKeys(const std::string& findWinnersResult, char tieSeparator);

}  // namespace history
