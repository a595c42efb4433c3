// The game tells the record of past games what the room saw: each puzzle with
// its word and topic, each credit, and the end of a game with its winner; and
// answers /top from that record.
#include <gtest/gtest.h>

#include "history/history.h"
#include "support/game_fixture.h"

namespace {

using namespace testing_support;

// A game of two points with one topic, "Animals", recording into `record`.
class GameHistory : public ::testing::Test, protected GameOnFakes {
  protected:
    GameHistory() : GameOnFakes(7) {
        Load("Animals", {"giraffe", "zebra, striped", "otter"}, true);
        game.SetHistory(&record);
        commands.SetHistory(&record);
        game.ScoreLimit = 2;
    }

    // Tuesday 9 January 2024, noon UTC: the same week in every time zone.
    history::Millis now = 1704801600000;
    history::History record{[this] { return now; }};
};

TEST_F(GameHistory, RecordsPuzzlesCreditsSkipsAndTheWinnerOfEachGame) {
    game.cmdAutoSendOn_Click();  // giraffe
    now += 4000;
    commands.ChatMessage(1, "Ann Agram", "giraffe");
    tmrMsgPause.Tick(11);  // zebra
    tmrIdle.Tick(31);      // nobody: otter
    now += 60000;
    commands.ChatMessage(1, "annagram", "OTTER");  // Ann's second point wins
    tmrMsgPause.Tick(11);                          // a new game: giraffe again

    // Word, winner, game and milliseconds to the answer of each puzzle.
    std::vector<std::string> puzzles;
    for (const auto& p : record.Puzzles())
        puzzles.push_back(record.Words()[static_cast<std::size_t>(p.word)] + " " +
                          std::to_string(p.winner) + " " + std::to_string(p.game) + " " +
                          std::to_string(p.winner < 0 ? 0 : p.answered - p.posted));
    EXPECT_EQ(puzzles, (std::vector<std::string>{"giraffe 0 0 4000", "zebra -1 0 0",
                                                 "otter 0 0 60000", "giraffe -1 1 0"}));
    EXPECT_EQ(
        std::tuple(record.Games().size(), record.Games().at(0).winners, record.Games()[0].ended),
        std::tuple(2u, std::vector<int>{0}, now));

    // "/top" answers in the room from the record.
    chat.Take();
    commands.ChatMessage(1, "Someone", "/top");
    const auto sent = chat.Take();
    EXPECT_TRUE(sent.size() == 1 &&
                sent[0].text.ends_with("<B><U>TOP THIS WEEK</U></B>: Ann Agram [2]"));
}

}  // namespace
