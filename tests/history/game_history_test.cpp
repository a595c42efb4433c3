// The game tells the record of past games what the room saw: each puzzle with
// its word and topic, each credit, and the end of a game with its winner.
#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

#include "game/chat_commands.h"
#include "game/game.h"
#include "history/history.h"
#include "support/fake_chat.h"
#include "support/fake_dialogs.h"
#include "support/fake_timer.h"

namespace {

using namespace testing_support;

class GameHistory : public ::testing::Test {
  protected:
    GameHistory() {
        game.SetHistory(&record);
        commands.SetHistory(&record);
        game::TopicClass topic;
        topic.SetTopicName("Animals");
        for (const char* word : {"giraffe", "zebra, striped", "otter"})
            topic.AddWord(word);
        game.Lists().AddLoadedTopic(std::move(topic));
        game.Lists().AddTopicList("Animals");
        game.SignedOn = true;
        game.ScoreLimit = 2;
    }

    FakeDialogs dialogs;
    FakeChat chat;
    game::RandomSource random{7};
    game::StringList errors;
    FakeTimer tmrMsgPause, tmrIdle, tmrTopics, tmrCcoms, tmrCcom2;
    game::Console console;
    game::Game game{{dialogs, chat, random, errors, tmrMsgPause, tmrIdle, tmrTopics, [] {}}};
    game::ChatCommands commands{game, console, tmrCcoms, tmrCcom2};
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

    const auto& puzzles = record.Puzzles();
    ASSERT_EQ(puzzles.size(), 4u);
    std::vector<std::string> words;
    for (const auto& p : puzzles)
        words.push_back(record.Words()[static_cast<std::size_t>(p.word)]);
    EXPECT_EQ(words, (std::vector<std::string>{"giraffe", "zebra", "otter", "giraffe"}));
    EXPECT_EQ(record.Topics(), std::vector<std::string>{"Animals"});
    EXPECT_EQ(puzzles[0].winner, 0);
    EXPECT_EQ(puzzles[0].answered - puzzles[0].posted, 4000);
    EXPECT_EQ(puzzles[1].winner, -1);
    EXPECT_EQ(puzzles[2].winner, 0);
    EXPECT_EQ(puzzles[3].game, 1);
    ASSERT_EQ(record.Players().size(), 1u);
    EXPECT_EQ(record.Players()[0].name, "Ann Agram");
    ASSERT_EQ(record.Games().size(), 2u);
    EXPECT_EQ(record.Games()[0].winners, std::vector<int>{0});
    EXPECT_EQ(record.Games()[0].scoreLimit, 2);
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

    const std::string style =
        "<html><body bgcolor=\"000000\"><font color=\"00bfff\" face=\"Times New Roman\">";
    struct Step {
        std::string said;
        std::vector<testing_support::SentLine> replies;
        int ticks = 0;  // of the pause, before the line
    } steps[] = {
        {"/top", {{2, style + "<B><U>TOP THIS WEEK</U></B>: Ann Agram [2], Bob [1]"}}},
        {"/stats bob", {}},  // within the pause: nothing
        {"/score", {}},
        {"/stats  ANN agram ",
         {{2, style + "Ann Agram: 2 points, 1 games won, fastest answer 1.2 s, longest streak "
                      "1; this week 2 points."}},
         1},
        {"/stats", {{2, style + "No answers have been credited to that name yet."}}, 1},
    };
    for (const Step& step : steps) {
        tmrCcom2.Tick(step.ticks);
        commands.ChatMessage(2, "Someone", step.said);
        const auto sent = chat.Take();
        ASSERT_EQ(sent.size(), step.replies.size()) << step.said;
        for (std::size_t i = 0; i < sent.size(); ++i) {
            EXPECT_EQ(sent[i].room, step.replies[i].room) << step.said;
            EXPECT_EQ(sent[i].text, step.replies[i].text) << step.said;
        }
    }
}

}  // namespace
