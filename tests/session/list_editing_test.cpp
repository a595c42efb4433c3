// The operator's editing of the lists and the manual puzzle.
#include "session/list_editing.h"

#include <gtest/gtest.h>

#include "support/bot_fixture.h"

namespace session {
namespace {

using Lines = std::vector<std::string>;

class ListEditingTest : public testing_support::BotTest {
  protected:
    ListEditing& e = bot.editing;
    game::StringList& words = bot.game.Lists().lstWords();
};

TEST_F(ListEditingTest, DirectAddAndTheScrambleMenu) {
    e.AddDirectly("", " a pet ");
    e.AddDirectly(" Cat ", " a pet ");
    EXPECT_EQ(bot.game.Lists().CurrentTopic(), "Unknown");
    dialogs.promptAnswers = {"dog", "barks"};
    e.mnuAddScramble_Click();
    dialogs.promptAnswers = {""};
    e.mnuAddScramble_Click();
    EXPECT_EQ(words.Rows(), (Lines{"Cat,a pet", "dog, barks"}));

    words.Select(1);
    dialogs.promptAnswers = {"dog, barks", "woof"};
    e.mnuEditScramble_Click();
    EXPECT_EQ(dialogs.prompts[3].defaultText, "dog, barks");
    EXPECT_EQ(words.At(1), "dog, barks, woof");
    e.mnuRemoveScramble_Click();
    EXPECT_EQ(words.Rows(), Lines{"Cat,a pet"});
}

TEST_F(ListEditingTest, ManualSendRefusesThenSendsOnePuzzleAndStopsTheRoundTimers) {
    e.ManualSend(" ", "", false);
    e.ManualSend("cat", "", false);
    bot.game.SignedOn = true;
    e.ManualSend("cat", "", false);
    EXPECT_EQ(std::tuple(Messages().size(), sockets.written.size()), std::tuple(3u, 0u));

    testing_support::EnterFakeRoom(sockets, bot.client);
    bot.game.Modes().optMode_Click(1);
    e.ManualSend("a", "first letter", false);
    ASSERT_EQ(sockets.written.size(), 1u);
    EXPECT_NE(sockets.written[0].second.find("Unscramble: a (Hint: first letter)"),
              std::string::npos);
    EXPECT_EQ(bot.game.Modes().GetGameMode(), 1) << "the mode comes back";
    EXPECT_EQ(*bot.game.PendingAnswer(), "a");

    // In the pause after a solved word, a manual puzzle stops the pause.
    words.Append("kiwi");
    bot.game.cmdAutoSendOn_Click();
    bot.game.cmdAnswer_Click();
    tmrMsgPause.Tick(3);
    e.ManualSend("fig", "", false);
    EXPECT_EQ(std::tuple(tmrMsgPause.IsEnabled(), bot.game.PauseCount), std::tuple(false, 0));
}

}  // namespace
}  // namespace session
