// Lines from the room as a hostile player writes them, delivered through the
// client: names in op commands, line breaks for the console, markup for the
// bot's own lines, and what reaches the settings file; and a crowded room's
// arrivals and departures.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

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
    // Each line an op says, and the bot's reply.
    const std::pair<std::string, std::string> cases[] = {
        {"/op x<b", "That is not a screen name."},
        {"/allow " + std::string(33, 'a'), "That is not a screen name."},
        {"/op Ann Agram", "annagram has been oped."},
        {"/disallow j.doe@mac.com", "j.doe@mac.com has been disallowed."},
        {"/deop " + std::string(32, 'a'), std::string(32, 'a') + " is not oped."},
    };
    for (const auto& [line, reply] : cases) {
        Say("Boss", line);
        const std::string sent = Sent();
        EXPECT_NE(sent.find(bot.game.Style().FontChange() + reply), std::string::npos) << line;
        EXPECT_EQ(sent.find('<', sent.find(reply)), std::string::npos) << line;
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

// What the view is told, one word a change.
class ViewLog : public game::ListObserver {
  public:
    void RowsAboutToBeInserted(int first, int) override { Log("insert ", first); }
    void RowsAboutToBeRemoved(int first, int) override { Log("remove ", first); }
    void AboutToReset() override { log.push_back("reset"); }
    void Log(const char* change, int first) { log.push_back(change + std::to_string(first)); }
    std::vector<std::string> log;
};

// The people of a room as arrivals and departures come in: the list shown
// follows the room name by name, and matches a plain model of the room.
using PeopleHereTest = RoomLinesTest;

TEST_F(PeopleHereTest, TheRoomInViewChangesOneRowAtATime) {
    PeopleList& shown = bot.session.lstPeopleHere();
    ViewLog view;
    shown.SetObserver(&view);
    for (const char* name : {"Ann Agram", "Bob", "Cat Nap", "ANNAGRAM"})
        bot.session.UserJoinedChat(2, name);
    shown.Select(2);
    bot.session.UserLeftChat(2, "B O B");
    bot.session.UserLeftChat(2, "nobody");
    // The room is shown whole once; after that every name is one row.
    EXPECT_EQ(view.log, (std::vector<std::string>{"reset", "insert 1", "insert 2", "remove 1"}));
    EXPECT_EQ(shown.Rows(), (std::vector<std::string>{"annagram", "catnap"}));
    EXPECT_EQ(shown.Selected(), 1) << "the selection moves up with its row";
    shown.SetObserver(nullptr);
}

TEST_F(PeopleHereTest, ManyArrivalsAndDeparturesMatchAPlainList) {
    const PeopleList& shown = bot.session.lstPeopleHere();
    std::mt19937 random(7);
    std::vector<std::string> model;
    for (int step = 0; step < 3000; ++step) {
        const std::string name = "p" + std::to_string(random() % 400);
        // Departures outweigh arrivals in the second half, so the list
        // grows, then empties and packs its left-over slots.
        const bool join = random() % 100 < (step < 1500 ? 70u : 25u);
        const auto at = std::find(model.begin(), model.end(), name);
        if (join) {
            bot.session.UserJoinedChat(2, name);
            if (at == model.end()) model.push_back(name);
        } else {
            bot.session.UserLeftChat(2, name);
            if (at != model.end()) model.erase(at);
        }
        ASSERT_EQ(shown.Count(), static_cast<int>(model.size())) << step;
        if (step % 100 == 0 || model.size() < 3) {
            ASSERT_EQ(shown.Rows(), model) << step;
            ASSERT_EQ(bot.client.Chat()[0].PeopleHere.Names(), model) << step;
            for (std::size_t row = 0; row < model.size(); ++row)
                ASSERT_EQ(shown.At(static_cast<int>(row)), model[row]) << step;
        }
    }
}

}  // namespace
}  // namespace session
