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

TEST_F(SettingsTest, SavesEveryKeyInOrder) {
    // Every value differs from its default, so one saved from the wrong
    // place shows.
    const SettingsFields f{"Bot Name", "oscar.example", "5191", "Word Games", "5", "12", "20", "40",
                           "x",        false,           true,   false};
    bot.game.SendPause = 12;
    bot.game.ScoreLimit = 20;
    bot.game.IdleTime = 40;
    bot.game.chkLCase = true;
    bot.game.chkNewTopic = true;
    bot.commands.chkHint = true;
    bot.session.cmdSetUser_Click("Zed");
    bot.commands.Ops().Add("alice");
    bot.commands.Disallows().Add("troll");
    bot.topicFiles.AutoLoadTopic("Animals", folder.Write("animals.txt", "ant\r\n"));
    bot.topicFiles.AutoLoadTopic("Food", folder.Write("food.txt", "fig\r\n"));
    bot.game.Modes().optMode_Click(1);
    bot.game.Style().fields.chkItalics = true;
    bot.settings.cmdSaveSettings_Click(f);
    EXPECT_EQ(folder.Read("settings"),
              kHeader +
                  "sn:Bot Name\r\nserver:oscar.example\r\nport:5191\r\nchat:Word "
                  "Games\r\nex:5\r\nmsgdelay:12\r\nscore:20\r\nidle:40\r\nlowercase:1\r\n"
                  "user:Zed\r\nbg:000000\r\nfc:00bfff\r\nft:Times New Roman\r\nbold:0\r\n"
                  "italics:1\r\nunderline:0\r\nstrike:0\r\nchangetopic:1\r\nhint:1\r\n"
                  "fullcaps:0\r\nsecure:1\r\nop:alice\r\ndisallow:troll\r\n"
                  "topic:Animals:" +
                  folder.File("animals.txt") + "\r\ntopic:Food:" + folder.File("food.txt") +
                  "\r\nmode:1\r\nreconnect:0\r\n");
}

TEST_F(SettingsTest, ReadingRulesForNumbersFlagsNamesAndTopics) {
    const SettingsFields f = Load(
        "score:abc\r\nidle:12.5\r\nmsgdelay:999\r\nsn:name:rest\r\nsecure:0\r\nmode:3\r\n"
        "Version:2.0.0\r\nno colon here\r\ntopic:Animals:" +
        folder.Write("a:b.txt", "ant\r\n") + "\r\ntopic:Gone:/no/such:file.txt\r\n");
    EXPECT_EQ(std::tie(f.txtScoreLimit, f.txtIdleTime, f.txtSendPause, f.txtSN, f.chkLock),
              std::tuple("15", "12.5", "10", "name", false));
    EXPECT_EQ(bot.game.Modes().GetGameMode(), 0);
    ASSERT_EQ(bot.game.Lists().Topics().size(), 1u);
    EXPECT_EQ(bot.game.Lists().Topics()[0].GetDir(), folder.File("a:b.txt"));
    EXPECT_EQ(bot.errors.Rows(),
              Lines{"Failed to auto load topic 'Gone' from directory '/no/such:file.txt'!"});
}

TEST_F(SettingsTest, AnOldShortFileLoadsOnDefaultsAndStopsAGame) {
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

    const SettingsFields f = Load("fullcaps:0\r\nmode:x\r\n");
    EXPECT_EQ(std::tuple(bot.game.chkLCase, bot.game.Modes().GetGameMode(),
                         bot.game.Style().fields.txtFontColor),
              std::tuple(false, 0, "00bfff"));
    ASSERT_EQ(sockets.written.size(), 1u) << "one line to the room";
    EXPECT_NE(sockets.written[0].second.find("Game disabled due to user loading old settings."),
              std::string::npos);
    // The game stops and its words, scores and disallowed players go.
    EXPECT_EQ(std::tuple(bot.game.GameOn, tmrIdle.IsEnabled(), bot.game.PendingAnswer().has_value(),
                         bot.game.Lists().lstWords().Empty(), bot.game.Scores().Empty(),
                         bot.commands.Disallows().Empty()),
              std::tuple(false, false, false, true, true, true));
    EXPECT_TRUE(bot.game.SignedOn) << "the session is left alone";
}

TEST_F(SettingsTest, FailuresAreReportedAndChangeNothing) {
    bot.commands.Ops().Add("alice");
    bot.settings.cmdLoadSettings_Click({});
    EXPECT_TRUE(bot.commands.Ops().Contains("alice")) << "no reset without a file";

    // An old file survives a save that fails half way: it is only replaced whole.
    folder.Write("settings", "old\r\n");
    std::filesystem::create_directory(folder.File("settings.saving"));
    bot.settings.cmdSaveSettings_Click({});
    EXPECT_EQ(folder.Read("settings"), "old\r\n");
    EXPECT_EQ(bot.errors.Count(), 2) << "both failures are logged";
}

}  // namespace
}  // namespace files
