// The settings file on real files in a temporary folder.
#include "files/settings_file.h"

#include <gtest/gtest.h>

#include "support/bot_fixture.h"

namespace files {
namespace {

using Lines = std::vector<std::string>;

using testing_support::BotTest;

const std::string kHeader =
    "Program:Vexmor Scrambler\r\nVersion:2.0.0\r\nCreator:Zelvar\r\n\r\n\r\n"
    "||||||||||||||||||||||||\r\n|||||SETTINGS FILE||||||\r\n||||||||||||||||||||||||\r\n\r\n\r\n"
    "WARNING: Do not edit this unless you know what you're doing. Editing the Topic file paths "
    "could crash the program.\r\n\r\n\r\n";

class SettingsTest : public BotTest {
  protected:
    SettingsFields Load(const std::string& body, SettingsFields fields = {}) {
        folder.Write("settings", kHeader + body);
        return bot.settings.cmdLoadSettings_Click(fields);
    }
};

TEST_F(SettingsTest, SavesTheHeaderAndEveryKeyInOrder) {
    SettingsFields f{"Bot Name", "127.0.0.1", "5190", "Word Games", "4",  "10",
                     "15",       "30",        "x",    true,         false};
    bot.commands.Ops().Add("alice");
    bot.commands.Disallows().Add("troll");
    bot.topicFiles.AutoLoadTopic("Animals", folder.Write("animals.txt", "ant\r\n"));
    bot.game.Modes().optMode_Click(2);
    bot.game.Style().fields.chkItalics = true;
    bot.settings.cmdSaveSettings_Click(f);
    EXPECT_EQ(folder.Read("settings"),
              kHeader +
                  "sn:Bot Name\r\nserver:127.0.0.1\r\nport:5190\r\nchat:Word Games\r\nex:4\r\n"
                  "msgdelay:10\r\nscore:15\r\nidle:30\r\nlowercase:0\r\nuser:Unknown\r\n"
                  "bg:000000\r\nfc:00bfff\r\nft:Times New Roman\r\nbold:0\r\nitalics:1\r\n"
                  "underline:0\r\nstrike:0\r\nchangetopic:0\r\nhint:0\r\nfullcaps:1\r\nsecure:0\r\n"
                  "op:alice\r\ndisallow:troll\r\ntopic:Animals:" +
                  folder.File("animals.txt") + "\r\nmode:2\r\nreconnect:1\r\n");
    EXPECT_EQ(Messages(), Lines{"Settings Saved!: Settings saved!"});
}

TEST_F(SettingsTest, SaveThenLoadGivesEverythingBack) {
    SettingsFields f{"Bot Name", "oscar.example.net", "5191", "Word Games", "5", "12", "20",
                     "40",       "ignored",           false,  true};
    bot.game.SendPause = 12;
    bot.game.ScoreLimit = 20;
    bot.game.IdleTime = 40;
    bot.game.chkLCase = true;
    bot.commands.chkHint = true;
    bot.session.cmdSetUser_Click("Zed");
    bot.commands.Ops().Add("alice");
    bot.commands.Ops().Add("bob");
    bot.topicFiles.AutoLoadTopic("Animals", folder.Write("animals.txt", "ant\r\n"));
    bot.topicFiles.AutoLoadTopic("Food", folder.Write("food.txt", "fig\r\n"));
    bot.game.Modes().optMode_Click(1);
    bot.settings.cmdSaveSettings_Click(f);
    const std::string saved = folder.Read("settings");

    const SettingsFields loaded = bot.settings.cmdLoadSettings_Click(SettingsFields{});
    // Every value above differs from its default, so a value the load missed
    // would be saved back as its default.
    EXPECT_EQ(bot.game.Lists().Topics().size(), 2u);
    bot.settings.cmdSaveSettings_Click(loaded);
    EXPECT_EQ(folder.Read("settings"), saved) << "saving again writes the same file";
    EXPECT_EQ(Messages().back(), "Settings Saved!: Settings saved!");
    EXPECT_EQ(Messages()[1], "Settings Loaded: Settings loaded!");
}

TEST_F(SettingsTest, ReadingRulesForNumbersFlagsNamesAndTopics) {
    bot.game.Style().fields.chkBold = true;
    const SettingsFields f = Load(
        "score:abc\r\nidle:12.5\r\nmsgdelay:999\r\nsn:name:rest\r\nbold:0\r\nitalics:yes\r\n"
        "underline:1\r\nsecure:0\r\nop:alice\r\nop:alice\r\nop:Alice Smith\r\nmode:3\r\n"
        "Version:2.0.0\r\nno colon here\r\ntopic:Animals:" +
        folder.Write("a:b.txt", "ant\r\n") + "\r\ntopic:Gone:/no/such:file.txt\r\n");
    EXPECT_EQ(bot.game.ScoreLimit, 15);
    EXPECT_EQ(f.txtScoreLimit, "15");
    EXPECT_EQ(f.txtIdleTime, "12.5");
    EXPECT_EQ(bot.game.IdleTime, 12);
    EXPECT_EQ(f.txtSendPause, "10");
    EXPECT_EQ(f.txtSN, "name");
    EXPECT_TRUE(bot.game.Style().fields.chkBold) << "a load only ever checks a style box";
    EXPECT_FALSE(bot.game.Style().fields.chkItalics);
    EXPECT_TRUE(bot.game.Style().fields.chkUnderline);
    EXPECT_TRUE(f.chkFullCaps);
    EXPECT_FALSE(f.chkLock);
    EXPECT_EQ(bot.commands.Ops().Count(), 2u);
    EXPECT_EQ(bot.commands.Ops().Rows().Rows(), (Lines{"alice", "alice", "Alice Smith"}));
    EXPECT_FALSE(bot.commands.Ops().Contains("alicesmith"));
    EXPECT_EQ(bot.game.Modes().GetGameMode(), 0);
    ASSERT_EQ(bot.game.Lists().Topics().size(), 1u);
    EXPECT_EQ(bot.game.Lists().Topics()[0].GetDir(), folder.File("a:b.txt"));
    EXPECT_EQ(bot.errors.Rows(),
              Lines{"Failed to auto load topic 'Gone' from directory '/no/such:file.txt'!"});
    EXPECT_EQ(Messages().back(), "Settings Loaded: Settings loaded!");

    for (const char* score : {"score:0", "score:999", "score:-3"}) {
        Load(std::string(score) + "\r\n");
        EXPECT_EQ(bot.game.ScoreLimit, 15) << score;
    }
    Load("score:998\r\nmode:2\r\n");
    EXPECT_EQ(bot.game.ScoreLimit, 998);
    EXPECT_EQ(bot.game.Modes().GetGameMode(), 2);
}

TEST_F(SettingsTest, LoadingResetsFirstAndStopsAGame) {
    testing_support::EnterFakeRoom(sockets, bot.client);
    bot.game.SignedOn = true;
    bot.game.Lists().lstWords().Append("kiwi");
    bot.game.cmdAutoSendOn_Click();
    bot.game.Scores().AddPlayer("ann");
    bot.commands.Disallows().Add("troll");
    bot.game.chkLCase = true;
    bot.game.Modes().optMode_Click(2);
    bot.game.Style().fields.txtFontColor = "ff0000";
    sockets.written.clear();

    const SettingsFields f = Load("fullcaps:0\r\n");
    EXPECT_FALSE(bot.game.chkLCase);
    EXPECT_EQ(bot.game.Modes().GetGameMode(), 0);
    EXPECT_EQ(bot.game.Style().fields.txtFontColor, "00bfff");
    ASSERT_EQ(sockets.written.size(), 1u) << "one line to the room";
    EXPECT_NE(sockets.written[0].second.find("Game disabled due to user loading old settings."),
              std::string::npos);
    EXPECT_FALSE(bot.game.GameOn);
    EXPECT_FALSE(tmrIdle.IsEnabled());
    EXPECT_TRUE(bot.game.Lists().lstWords().Empty());
    EXPECT_EQ(bot.game.Lists().CurrentTopic(), "[None]");
    EXPECT_FALSE(bot.game.PendingAnswer());
    EXPECT_TRUE(bot.game.Scores().Empty());
    EXPECT_TRUE(bot.commands.Disallows().Empty());
    EXPECT_EQ(f.cmbServers, "localhost");
    EXPECT_EQ(f.txtChat, "Chat Name");
    EXPECT_FALSE(f.chkFullCaps);
    EXPECT_TRUE(f.chkLock);
    EXPECT_TRUE(bot.game.SignedOn) << "the session is left alone";
}

TEST_F(SettingsTest, FailuresAreReportedAndChangeNothing) {
    bot.commands.Ops().Add("alice");
    bot.settings.cmdLoadSettings_Click({});
    EXPECT_EQ(Messages(), Lines{"Error: Failed to load settings! Settings file not found!"});
    EXPECT_EQ(bot.errors.Rows(), Lines{"Failed to load settings! Settings file not found!"});
    EXPECT_TRUE(bot.commands.Ops().Contains("alice")) << "no reset without a file";

    // A save into a folder that cannot take files leaves no settings behind.
    testing_support::FakeDialogs otherDialogs;
    files::SettingsFile blocked(
        bot.game, bot.commands, bot.topicFiles, otherDialogs, bot.errors,
        folder.File("no/such/folder"), [](const std::string&) {}, [] { return std::string("x"); });
    blocked.cmdSaveSettings_Click({});
    ASSERT_EQ(otherDialogs.messages.size(), 1u);
    EXPECT_EQ(otherDialogs.messages[0].title, "Error");
    EXPECT_EQ(bot.errors.Count(), 2);

    // An old file survives a save that fails half way: it is only replaced whole.
    folder.Write("settings", "old\r\n");
    std::filesystem::create_directory(folder.File("settings.saving"));
    bot.settings.cmdSaveSettings_Click({});
    EXPECT_EQ(folder.Read("settings"), "old\r\n");
}

}  // namespace
}  // namespace files
