// Scripted players for the loopback server: they sit in a room, solve the
// bot's puzzles from the word lists they were given (quickly or slowly,
// rightly or wrongly, sometimes too late), ask for hints and scores, and make
// small talk. They also time the bot: from a correct answer going out to the
// bot to the bot's "got it right!!!" coming back.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QRandomGenerator>
#include <optional>
#include <string>
#include <vector>

#include "localserver/oscar_test_server.h"

namespace testserver {

struct PlayerStyle {
    std::string name;
    int minDelayMs = 500;  // time to type an answer
    int maxDelayMs = 2000;
    int wrongPercent = 0;  // answers with another word instead
    int latePercent = 0;   // waits for the next puzzle, then answers the old one
    int hintPercent = 0;   // asks "/hint" first
    int scorePercent = 0;  // asks "/score" after someone got it right
};

class ScriptedGame : public QObject {
  public:
    // `entries` are word-list lines ("answer" or "answer,hint").
    ScriptedGame(OscarTestServer& server, std::string room, const std::vector<std::string>& entries,
                 quint64 seed);

    void AddPlayer(const PlayerStyle& style);
    // A player who says a small-talk line every `meanIntervalMs` on average.
    void AddChatter(const std::string& name, int meanIntervalMs);

    // Whether `name` is one of the scripted players.
    bool IsScripted(const std::string& name) const;

    // The answer of a puzzle line, when the lists know it; "" otherwise.
    std::string Solve(const std::string& line) const;

    // Microseconds from each correct answer to the bot's credit line.
    const std::vector<qint64>& Latencies() const { return latencies_; }
    int Puzzles() const { return puzzles_; }

  private:
    struct Answer {
        std::string text;  // as in the list
        std::string key;   // lower case
    };

    void OnLine(const RelayedLine& line);
    void Play(const PlayerStyle& style, const std::string& answer);
    void Chatter(const std::string& name, int meanIntervalMs);

    OscarTestServer& server_;
    std::string room_;
    std::vector<Answer> answers_;
    std::vector<PlayerStyle> players_;
    std::vector<std::string> chatters_;
    QRandomGenerator random_;
    QElapsedTimer clock_;
    std::string current_;               // answer of the puzzle in play, lower case
    std::optional<qint64> answeredAt_;  // when a correct answer went out
    std::vector<std::pair<std::string, std::string>> late_;  // player, old answer
    std::vector<qint64> latencies_;
    int puzzles_ = 0;
};

// The entries of every topic file in `folder` (*.txt and *.csv).
std::vector<std::string> LoadEntries(const std::string& folder);

}  // namespace testserver
