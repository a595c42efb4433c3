// The score table of the game in progress: players ranked highest first, the
// winner or tie announcement, and the TOP SCORES line.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "game/string_list.h"

namespace game {

// Joins the tied leaders in FindWinners' result.
inline constexpr char kTieSeparator = '\xFF';

struct ScoreEntry {
    std::string name;  // normalized screen name
    std::int32_t score;
};

// Ranks highest first by moving the lower of each out-of-order pair to the
// end, pass after pass until a pass moves nothing. This fixes the order of
// equal scores: 1, 2, 1, 3 for a, b, c, d ends as d, b, c, a.
void ArrangeScores(std::vector<ScoreEntry>& entries);

class ScoreTable {
  public:
    using Entry = ScoreEntry;

    bool Empty() const { return ranking_.empty(); }
    bool Has(std::string_view name) const;
    const std::vector<Entry>& Ranking() const { return ranking_; }

    // One row per player, "name - score", in the order players were added.
    StringList& lstPlayers() { return rows_; }
    const StringList& lstPlayers() const { return rows_; }

    // Enters a new player with 1 point and ranks the table. An empty or
    // known name changes nothing and gives false.
    bool AddPlayer(const std::string& name);

    // Adds `points` to a player, moves the player to the end, updates the
    // row and ranks the table. Gives the new score; nullopt for an unknown
    // name. Scores stay within 32 bits.
    std::optional<std::int32_t> UpdateScore(const std::string& name, std::int32_t points);

    void ArrangeScores() { game::ArrangeScores(ranking_); }

    // Takes the table apart: "name:score" for one leader, the leaders joined
    // by kTieSeparator for a tie, "[Error]" for an empty table. Leaves the
    // table empty (the rows stay).
    std::string FindWinners();

    // Records a player with `score` points and a row, as the operator adds
    // one by hand; an empty or known name changes nothing and gives false.
    bool Insert(const std::string& name, std::int32_t score);
    // Takes a player and the player's first row out; false for an unknown name.
    bool Remove(const std::string& name);
    std::optional<std::int32_t> ScoreOf(std::string_view name) const;

    // Empties the table and the rows.
    void Clear();

    // "<B><U>TOP SCORES</U></B>: a [5], b[3], ..." cut before it passes 232
    // characters; nullopt for an empty table.
    std::optional<std::string> TopScoresLine() const;

  private:
    std::vector<Entry> ranking_;
    StringList rows_;
};

// The sentence announcing FindWinners' result.
std::string WinnerMessage(std::string_view text);

}  // namespace game
