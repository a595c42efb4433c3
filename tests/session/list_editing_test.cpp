// The operator's editing of the lists and the manual puzzle.
#include "session/list_editing.h"

#include <gtest/gtest.h>

#include "support/bot_fixture.h"

namespace session {
namespace {

using Lines = std::vector<std::string>;

using testing_support::BotTest;

class ListEditingTest : public BotTest {
  protected:
    ListEditing& e = bot.editing;
    game::StringList& words = bot.game.Lists().lstWords();
};

TEST_F(ListEditingTest, DirectAddAndTheMenuItems) {
    e.AddDirectly("", " a pet ");
    EXPECT_TRUE(words.Empty());
    e.AddDirectly(" Cat ", " a pet ");
    EXPECT_EQ(words.Rows(), Lines{"Cat,a pet"});
    EXPECT_EQ(bot.game.Lists().CurrentTopic(), "Unknown");

    dialogs.promptAnswers = {"dog", "barks"};
    e.mnuAddScramble_Click();
    dialogs.promptAnswers = {""};
    e.mnuAddScramble_Click();
    EXPECT_EQ(words.Rows(), (Lines{"Cat,a pet", "dog, barks"}));

    e.mnuEditScramble_Click();
    EXPECT_EQ(dialogs.prompts.size(), 3u) << "nothing selected: nothing asked";
    words.Select(1);
    dialogs.promptAnswers = {"dog, barks", "woof"};
    e.mnuEditScramble_Click();
    EXPECT_EQ(dialogs.prompts[3].defaultText, "dog, barks");
    EXPECT_EQ(words.At(1), "dog, barks, woof");
    e.mnuRemoveScramble_Click();
    EXPECT_EQ(words.Rows(), Lines{"Cat,a pet"});
}

TEST_F(ListEditingTest, OpsDisallowsAndPlayers) {
    e.AddOp(" Alice Smith ");
    e.AddOp("alicesmith");
    e.AddDisallow(" ");
    EXPECT_EQ(bot.commands.Ops().Rows().Rows(), Lines{"alicesmith"});
    EXPECT_TRUE(bot.commands.Disallows().Empty());
    bot.commands.Ops().Rows().Select(0);
    e.mnuRemoveOp_Click();
    EXPECT_TRUE(bot.commands.Ops().Empty());

    dialogs.promptAnswers = {"Bob"};
    e.mnuAddPlayer_Click();
    EXPECT_EQ(bot.game.Scores().lstPlayers().Rows(), Lines{"bob - 0"});
    bot.game.Scores().UpdateScore("bob", 3);
    bot.game.Scores().lstPlayers().Select(0);
    dialogs.promptAnswers = {"10"};
    e.mnuEditScore_Click();
    EXPECT_EQ(dialogs.prompts.back().title, "Edit Score for bob");
    EXPECT_EQ(bot.game.Scores().lstPlayers().Rows(), Lines{"bob - 10"});
    dialogs.promptAnswers = {"lots"};
    e.mnuEditScore_Click();
    dialogs.promptAnswers = {""};
    e.mnuEditScore_Click();
    EXPECT_EQ(bot.game.Scores().ScoreOf("bob"), 10) << "no number, no change";

    e.mnuRemovePlayer_Click();
    EXPECT_TRUE(bot.game.Scores().Empty());
    EXPECT_TRUE(bot.game.Scores().lstPlayers().Empty());
}

TEST_F(ListEditingTest, ManualSendRefusesThenSendsOnePuzzle) {
    e.ManualSend(" ", "", false);
    e.ManualSend("cat", "", false);
    bot.game.SignedOn = true;
    e.ManualSend("cat", "", false);
    EXPECT_EQ(Messages(), (Lines{"Error: You cannot send a blank message to the chat!",
                                 "Note: Please sign on first and enter a chat!",
                                 "Note: Please join a chat first!"}));
    EXPECT_EQ(bot.errors.Rows(), Lines{"You cannot send a blank message to the chat!"});

    testing_support::EnterFakeRoom(sockets, bot.client);
    bot.game.Modes().optMode_Click(1);
    e.ManualSend("a", "first letter", false);
    ASSERT_EQ(sockets.written.size(), 1u);
    EXPECT_NE(sockets.written[0].second.find("Unscramble: a (Hint: first letter)"),
              std::string::npos);
    EXPECT_EQ(bot.game.Modes().GetGameMode(), 1) << "the mode comes back";
    EXPECT_EQ(*bot.game.PendingAnswer(), "a");

    // In the pause after a solved word, a manual puzzle stops the pause.
    bot.game.Lists().lstWords().Append("kiwi");
    bot.game.cmdAutoSendOn_Click();
    bot.game.cmdAnswer_Click();
    tmrMsgPause.Tick(3);
    e.ManualSend("fig", "", false);
    EXPECT_FALSE(tmrMsgPause.IsEnabled());
    EXPECT_EQ(bot.game.PauseCount, 0);
}

}  // namespace
}  // namespace session
