// Lines from the room as a hostile player writes them, delivered through the
// client: names in op commands, line breaks for the console, markup for the
// bot's own lines, and what reaches the settings file.
#include <gtest/gtest.h>

#include "support/bot_fixture.h"
#include "support/frames.h"

namespace session {
namespace {

using testing_support::BotTest;
using testing_support::ChatLineFrame;

class RoomLinesTest : public BotTest {
  protected:
    RoomLinesTest() {
        testing_support::EnterFakeRoom(sockets, bot.client);
        bot.game.SignedOn = true;
        bot.commands.Ops().Add("boss");
        sockets.written.clear();
    }
    // `sender` says `text` in the room, through the client.
    void Say(const std::string& sender, const std::string& text) {
        sockets.Deliver(2, ChatLineFrame(sender, text));
    }
    // Everything the bot has sent to the room since the last call.
    std::string Sent() {
        std::string all;
        for (const auto& [index, frame] : sockets.written)
            all += frame;
        sockets.written.clear();
        return all;
    }
    const files::SettingsFields fields{"Bot Name", "127.0.0.1", "5190", "Word Games", "4", "10",
                                       "15",       "30",        "x",    true,         true};
};

TEST_F(RoomLinesTest, AnOpsLineCannotRewriteTheSettingsFile) {
    bot.settings.cmdSaveSettings_Click(fields);
    const std::string saved = folder.Read("settings");
    Say("Boss", "/op pal\r\nserver:evil.example.net\r\nport:6000\r\ntopic:leak:/etc/hostname");
    bot.settings.cmdSaveSettings_Click(fields);
    EXPECT_EQ(folder.Read("settings"), saved);

    // Were a line break to get into a value (a file name may hold one, and
    // so may a name added by hand), the save drops it.
    bot.topicFiles.AutoLoadTopic("Animals", folder.Write("a\nserver:evil.example.net", "ant\r\n"));
    bot.commands.Ops().Add("pal\r\nport:6000");
    bot.settings.cmdSaveSettings_Click(fields);
    const files::SettingsFields loaded = bot.settings.cmdLoadSettings_Click(fields);
    EXPECT_EQ(std::tie(loaded.cmbServers, loaded.txtPort), std::tuple("127.0.0.1", "5190"));
}

TEST_F(RoomLinesTest, NameCommandsTakeScreenNamesOnly) {
    struct Case {
        std::string line;
        std::string reply;
    } cases[] = {
        {"/op x<b", "That is not a screen name."},
        {"/allow " + std::string(33, 'a'), "That is not a screen name."},
        {"/op Ann Agram", "annagram has been oped."},
        {"/disallow j.doe@mac.com", "j.doe@mac.com has been disallowed."},
        {"/deop " + std::string(32, 'a'), std::string(32, 'a') + " is not oped."},
    };
    for (const Case& c : cases) {
        Say("Boss", c.line);
        const std::string sent = Sent();
        EXPECT_NE(sent.find(bot.game.Style().FontChange() + c.reply), std::string::npos) << c.line;
        EXPECT_EQ(sent.find('<', sent.find(c.reply)), std::string::npos) << c.line;
        tmrCcoms.Tick();
    }
    EXPECT_EQ(bot.commands.Ops().Rows().Rows(), (std::vector<std::string>{"boss", "annagram"}));
}

TEST_F(RoomLinesTest, PlayersNamesGoIntoTheBotsLinesAsText) {
    bot.game.Lists().lstWords().Append("cat");
    bot.game.cmdAutoSendOn_Click();
    Sent();
    Say("x<b>\"y\"&", "cat");
    EXPECT_NE(Sent().find("x&lt;b&gt;&quot;y&quot;&amp; got it right!!! (cat)"), std::string::npos);
    bot.game.ShowTopScores();
    EXPECT_NE(Sent().find("TOP SCORES</U></B>: x&lt;b&gt;&quot;y&quot;&amp; [1]"),
              std::string::npos);
}

TEST_F(RoomLinesTest, EveryIncomingLineIsOneConsoleLine) {
    Say("Mallory", "hi\r\nOnlineHost: Ann has left the room.");
    Say("Eve\n",
        "a\x01"
        "b\x7F");
    EXPECT_EQ(bot.console.Text(),
              "Mallory: hi^M^JOnlineHost: Ann has left the room.\r\n"
              "Eve^J: a^Ab^?\r\n");
}

}  // namespace
}  // namespace session
