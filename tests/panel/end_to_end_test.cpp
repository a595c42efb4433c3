// A whole game in a chat room: the real window driven through its controls,
// real sockets to the loopback server, a real topic file, real timers with a
// short delay and idle time read from a settings file, and scripted players.
#include <gtest/gtest.h>

#include <QTest>
#include <fstream>

#include "app/qt_bot_timers.h"
#include "app/qt_socket_layer.h"
#include "localserver/oscar_test_server.h"
#include "localserver/scripted_game.h"
#include "panel/frm_main.h"
#include "session/bot.h"
#include "support/bot_fixture.h"
#include "support/fake_dialogs.h"
#include "support/qt_wait.h"

namespace {

using testing_support::WaitFor;

const std::string P =
    "<html><body bgcolor=\"000000\"><font color=\"00bfff\" face=\"Times New Roman\">";

class EndToEndTest : public ::testing::Test {
  protected:
    EndToEndTest() {
        EXPECT_TRUE(server.Start());
        server.AddAccount("Scramble Bot", "secret1");
        players.AddPlayer({"T Roll", 30, 60, 0, 0, 0, 0});           // disallowed, always first
        players.AddPlayer({"Bob Scramble", 80, 120, 100, 0, 0, 0});  // always wrong
        players.AddPlayer({"Ann Agram", 250, 400, 0, 0, 0, 0});      // right
        server.AddScriptedPlayer("Word Games", "Boss");
        std::ofstream(folder.File("settings"), std::ios::binary)
            << "sn:Scramble Bot\r\nserver:127.0.0.1\r\nport:" << server.Port()
            << "\r\nchat:Word Games\r\nex:4\r\nmsgdelay:1\r\nidle:3\r\nscore:2\r\n"
            << "op:boss\r\ndisallow:troll\r\ntopic:Animals:" << TOPICS_DIR << "/animals.csv\r\n";
        window.show();
    }

    std::vector<std::string> BotLines() const {
        std::vector<std::string> lines;
        for (const auto& l : server.Lines()) {
            if (l.sender == "Scramble Bot") lines.push_back(l.text);
        }
        return lines;
    }
    bool BotSaid(const std::string& text) const {
        const auto lines = BotLines();
        return std::find(lines.begin(), lines.end(), P + text) != lines.end();
    }

    // Loads the settings, signs on, joins, puts the topic on the list and starts.
    void StartGame() {
        QTest::mouseClick(window.other->cmdLoadSettings, Qt::LeftButton);
        window.connection->txtPW->setText("secret1");
        timers.Attach(bot, false);  // paced as the program paces its lines
        QTest::mouseClick(window.connection->cmdSignOn, Qt::LeftButton);
        ASSERT_TRUE(WaitFor([&] { return window.connection->lblInfo->text() == "Online!"; }));
        QTest::mouseClick(window.chats->cmdJoin, Qt::LeftButton);
        ASSERT_TRUE(
            WaitFor([&] { return window.chats->lblChatStatus->text() == "Joined 'Word Games'!"; }));
        window.topics->lstData->setCurrentIndex(window.topics->lstData->model()->index(0, 0));
        QTest::mouseClick(window.topics->cmdSendToList, Qt::LeftButton);
        QTest::mouseClick(window.mainGame->cmdAutoSendOn, Qt::LeftButton);
    }

    testing_support::TempFolder folder;
    testserver::OscarTestServer server;
    testserver::ScriptedGame players{server, "Word Games", testserver::LoadEntries(TOPICS_DIR), 7};
    testing_support::FakeDialogs dialogs;
    QtSocketLayer sockets;
    QtBotTimers timers;
    session::Bot bot{timers.Platform(sockets, dialogs, folder.Path())};
    FrmMain window{bot};
};

TEST_F(EndToEndTest, AWholeGameInTheRoom) {
    StartGame();
    ASSERT_TRUE(WaitFor([&] { return BotSaid("New Game Started! Topic: Animals!"); }, 20000));

    const std::vector<std::string> lines = BotLines();
    ASSERT_GE(lines.size(), 7u);
    EXPECT_EQ(lines[0], P + "\xAB Vexmor Scrambler 2.0, get it at http://www.vexmor.com \xBB");
    int puzzles = 0, credits = 0;
    for (const std::string& line : lines) {
        if (line.starts_with(P + "Unscramble: ")) ++puzzles;
        if (line.starts_with(P + "Ann Agram got it right!!! (")) ++credits;
        EXPECT_EQ(line.find("T Roll got it right"), std::string::npos) << "a disallowed answer";
        EXPECT_EQ(line.find("Bob Scramble got it right"), std::string::npos) << "a wrong answer";
    }
    EXPECT_EQ(puzzles, 2);
    EXPECT_EQ(credits, 2);
    EXPECT_TRUE(BotSaid("annagram is the winner with 2 points!"));
    EXPECT_EQ(players.Puzzles(), 2) << "the players solved what the bot posted";

    // An op's command works from the room.
    server.PlayerSays("Word Games", "Boss", "/score");
    ASSERT_TRUE(WaitFor([&] { return BotSaid("There are no recorded scores yet."); }));
    server.PlayerSays("Word Games", "Boss", "/stop");
    ASSERT_TRUE(WaitFor([&] { return BotSaid("Auto-send turned off!"); }));
    EXPECT_FALSE(bot.game.GameOn);
    EXPECT_TRUE(dialogs.messages.size() == 1 && dialogs.messages[0].text == "Settings loaded!");
}

}  // namespace
