// The window's session steps: signing on, leaving a room and the status
// lines the client's events set; and the operator's editing of the lists
// and the manual puzzle.
#include <gtest/gtest.h>

#include "session/list_editing.h"
#include "session/session_control.h"

#include "support/bot_fixture.h"

namespace session {
namespace {

using Lines = std::vector<std::string>;
using SessionControlTest = testing_support::BotTest;

TEST_F(SessionControlTest, PortsOutsideSixteenBitsAreRefused) {
    const struct {
        const char* typed;
        const char* connectedTo;  // "": refused, with a note
    } cases[] = {{"65536", ""},
                 {"0", ""},
                 {"abc", ""},
                 {"1", "127.0.0.1:1"},
                 {"65535", "127.0.0.1:65535"},
                 {" 5190x", "127.0.0.1:5190"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.typed);
        dialogs.messages.clear();
        sockets.connectLog.clear();
        bot.session.cmdSignOn_Click({"Bot Name", "secret1", "127.0.0.1", c.typed});
        EXPECT_EQ(sockets.connectLog.empty() ? "" : sockets.connectLog[0].second, c.connectedTo);
        EXPECT_EQ(dialogs.messages.size(), *c.connectedTo ? 0u : 1u);
        bot.session.cmdSignOff_Click();
    }
}

TEST_F(SessionControlTest, LeaveClosesTheNamedRoomOnly) {
    bot.game.SignedOn = true;
    testing_support::EnterFakeRoom(sockets, bot.client, 2);
    testing_support::EnterFakeRoom(sockets, bot.client, 3);
    bot.client.Chat()[0].ChatName = "One";
    bot.client.Chat()[1].ChatName = "Two";
    bot.session.cmdLeave_Click(" t wo");
    EXPECT_EQ(std::tuple(sockets.Exists(3), sockets.IsConnected(2), bot.session.lblChatStatus()),
              std::tuple(false, true, "Left chat."));
}

TEST_F(SessionControlTest, RoomErrorsGoToTheRoomStatusOthersToTheInfoLine) {
    for (int code : {18, 24, 46, 50, 51, 74, 1, 19, 73}) {
        SCOPED_TRACE(code);
        const bool room = code != 1 && code != 19 && code != 73;
        const std::string info = bot.session.lblInfo(), status = bot.session.lblChatStatus();
        bot.session.Error("Failed.", code, 0, "");
        const std::string expected = "Failed. Error code: " + std::to_string(code);
        EXPECT_EQ(bot.session.lblChatStatus(), room ? expected : status);
        EXPECT_EQ(bot.session.lblInfo(), room ? info : expected);
    }
}

class ListEditingTest : public SessionControlTest {
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
    // The mode comes back, and the manual answer is the one in play.
    EXPECT_EQ(std::tuple(bot.game.Modes().GetGameMode(), bot.game.PendingAnswer().value_or("")),
              std::tuple(1, "a"));

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
