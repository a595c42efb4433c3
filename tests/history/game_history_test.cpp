// The game tells the record of past games what the room saw: each puzzle with
// its word and topic, each credit, and the end of a game with its winner.
#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

#include "history/history.h"
#include "history/topic_game.h"

namespace {

using namespace testing_support;

class GameHistory : public ::testing::Test, protected TopicGame {
  protected:
    GameHistory() : TopicGame(7, {"giraffe", "zebra, striped", "otter"}) {
        game.SetHistory(&record);
        commands.SetHistory(&record);
        game.ScoreLimit = 2;
    }

    // Tuesday 9 January 2024, noon UTC.
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
    ASSERT_EQ(record.Games().size(), 2u);
    EXPECT_EQ(record.Games()[0].winners, std::vector<int>{0});
    EXPECT_EQ(record.Games()[0].ended, now);
    EXPECT_EQ(record.Games()[1].ended, 0);
}

TEST_F(GameHistory, TopAndStatsAnswerInTheRoomPacedLikeScore) {
    setenv("TZ", "UTC", 1);
    tzset();
    game.cmdAutoSendOn_Click();
    now += 1240;
    commands.ChatMessage(2, "Ann Agram", "giraffe");
    tmrMsgPause.Tick(11);
    now += 3000;
    commands.ChatMessage(2, "Bob", "zebra");
    tmrMsgPause.Tick(11);
    now += 2000;
    commands.ChatMessage(2, "ann agram", "otter");  // Ann wins 2 to 1
    chat.Take();

    // Each step: what is said, after how many ticks of the pause, and the
    // reply in the room (none while the pause runs).
    const std::string style =
        "<html><body bgcolor=\"000000\"><font color=\"00bfff\" face=\"Times New Roman\">";
    const struct {
        const char* said;
        int ticks;
        std::string reply;
    } steps[] = {
        {"/top", 0, "<B><U>TOP THIS WEEK</U></B>: Ann Agram [2], Bob [1]"},
        {"/stats bob", 0, ""},
        {"/stats  ANN agram ", 1,
         "Ann Agram: 2 points, 1 games won, fastest answer 1.2 s, longest streak 1; this week 2 "
         "points."},
    };
    for (const auto& step : steps) {
        SCOPED_TRACE(step.said);
        tmrCcom2.Tick(step.ticks);
        commands.ChatMessage(2, "Someone", step.said);
        std::vector<std::string> sent;
        for (const auto& line : chat.Take())
            sent.push_back(std::to_string(line.room) + " " + line.text);
        EXPECT_EQ(sent, step.reply.empty() ? std::vector<std::string>{}
                                           : std::vector<std::string>{"2 " + style + step.reply});
    }
}

}  // namespace
