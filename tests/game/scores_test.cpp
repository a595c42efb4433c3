#include "game/scores.h"

#include <gtest/gtest.h>

namespace game {
namespace {

using Lines = std::vector<std::string>;

Lines Names(const ScoreTable& table) {
    Lines names;
    for (const auto& e : table.Ranking())
        names.push_back(e.name + ":" + std::to_string(e.score));
    return names;
}

// Builds a table with the given scores, players added in order.
ScoreTable TableOf(const std::vector<std::pair<std::string, int>>& scores) {
    ScoreTable table;
    for (const auto& [name, score] : scores) {
        table.AddPlayer(name);
        if (score != 1) table.UpdateScore(name, score - 1);
    }
    return table;
}

TEST(ScoreTable, RanksHighestFirstMovingTheScorerToTheEnd) {
    ScoreTable table = TableOf({{"a", 1}, {"b", 1}, {"c", 1}, {"d", 1}});
    EXPECT_EQ(Names(table), (Lines{"a:1", "b:1", "c:1", "d:1"}));
    // b moves to the end (a c d b) and the passes carry it forward, leaving
    // the ones behind it reversed: b d c a.
    table.UpdateScore("b", 1);
    EXPECT_EQ(Names(table), (Lines{"b:2", "d:1", "c:1", "a:1"}));
    table.UpdateScore("a", 1);
    EXPECT_EQ(Names(table), (Lines{"b:2", "a:2", "c:1", "d:1"})) << "a ties b, behind it";
}

TEST(ScoreTable, ChangesOnlyThePlayersOwnRow) {
    ScoreTable table = TableOf({{"bobby", 1}, {"bob", 2}});
    table.UpdateScore("bobby", 4);
    EXPECT_EQ(table.lstPlayers().Rows(), (Lines{"bobby - 5", "bob - 2"}));

    EXPECT_FALSE(table.AddPlayer("bob"));
    EXPECT_EQ(table.lstPlayers().Count(), 2);

    table.UpdateScore("bob", 2147483647);
    EXPECT_EQ(table.Ranking()[0].score, 2147483647) << "scores saturate instead of wrapping";
}

TEST(ScoreTable, FindWinnersNamesTheTiedLeadersOnlyAndEmptiesTheTable) {
    ScoreTable table = TableOf({{"ann", 4}, {"bob", 4}, {"cat", 4}, {"dan", 1}});
    const std::string winners = table.FindWinners();
    EXPECT_EQ(winners, std::string("ann:4\xFF") + "bob:4\xFF" + "cat:4");
    EXPECT_EQ(WinnerMessage(winners), "TIE GAME!!! Winners: ann, bob, cat");
    EXPECT_TRUE(table.Empty());
    EXPECT_EQ(table.lstPlayers().Count(), 4) << "the rows are the caller's to clear";
}

TEST(ScoreTable, TopScoresStopBeforeTheLinePasses232Characters) {
    EXPECT_FALSE(ScoreTable().TopScoresLine());
    EXPECT_EQ(TableOf({{"a", 5}, {"b", 3}, {"c", 2}}).TopScoresLine(),
              "<B><U>TOP SCORES</U></B>: a [5], b[3], c[2]");

    // The header (26) and the first entry (name, " [2]") come first; each
    // further 10-letter name with a 1-digit score adds 15 (", name[1]"). An
    // entry is added while length + name + score stays at or below 232.
    auto line = [](const std::string& leader) {
        ScoreTable table = TableOf({{leader, 2}});
        for (int i = 10; i < 30; ++i)
            table.AddPlayer("player00" + std::to_string(i));
        return *table.TopScoresLine();
    };
    // 26 + 11 + 4 + 12 * 15 = 221, and 221 + 10 + 1 = 232: the 13th is added.
    EXPECT_EQ(line("leader00000").size(), 236u);
    // One character more: 222 + 11 = 233 > 232, so the 13th is left out.
    EXPECT_EQ(line("leader000000").size(), 222u);
}

}  // namespace
}  // namespace game
