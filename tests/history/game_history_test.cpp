// The game tells the record of past games what the room saw: each puzzle with
// its word and topic, each credit, and the end of a game with its winner.
#include <gtest/gtest.h>

#include "game/chat_commands.h"
#include "game/game.h"
#include "history/history.h"
#include "support/fake_chat.h"
#include "support/fake_dialogs.h"
#include "support/fake_timer.h"

namespace {

using namespace testing_support;

TEST(GameHistory, RecordsPuzzlesCreditsSkipsAndTheWinnerOfEachGame) {
    FakeDialogs dialogs;
    FakeChat chat;
    game::RandomSource random{7};
    game::StringList errors;
    FakeTimer tmrMsgPause, tmrIdle, tmrTopics, tmrCcoms, tmrCcom2;
    game::Console console;
    game::Game game{{dialogs, chat, random, errors, tmrMsgPause, tmrIdle, tmrTopics, [] {}}};
    game::ChatCommands commands{game, console, tmrCcoms, tmrCcom2};
    history::Millis now = 1000;
    history::History record{[&now] { return now; }};
    game.SetHistory(&record);

    game::TopicClass topic;
    topic.SetTopicName("Animals");
    for (const char* word : {"giraffe", "zebra, striped", "otter"})
        topic.AddWord(word);
    game.Lists().AddLoadedTopic(std::move(topic));
    game.Lists().AddTopicList("Animals");
    game.SignedOn = true;
    game.ScoreLimit = 2;

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

}  // namespace
