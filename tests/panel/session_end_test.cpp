// What the window shows when the server ends the session, a sign-on or join
// cannot go on, or the operator signs off: against the loopback server.
#include <gtest/gtest.h>

#include <QTcpServer>

#include "app/qt_socket_layer.h"
#include "localserver/oscar_test_server.h"
#include "support/qt_wait.h"
#include "support/window_fixture.h"

namespace {

using testing_support::WaitFor;
using testing_support::WindowTest;

class SessionEndTest : public WindowTest {
  protected:
    SessionEndTest() {
        EXPECT_TRUE(server.Start());
        server.AddAccount("Scramble Bot", "secret1");
        server.AddScriptedPlayer("Word Games", "Ann Agram");
    }

    void ClickSignOn(quint16 port) {
        window.connection->txtSN->setText("Scramble Bot");
        window.connection->txtPW->setText("secret1");
        window.connection->cmbServers->setEditText("127.0.0.1");
        window.connection->txtPort->setText(QString::number(port));
        QTest::mouseClick(window.connection->cmdSignOn, Qt::LeftButton);
    }
    bool SignOn() {
        ClickSignOn(server.Port());
        return WaitFor([&] { return Info() == "Online!"; });
    }
    void ClickJoin(const QString& room, const QString& exchange = "4") {
        window.chats->txtChat->setText(room);
        window.chats->txtEx->setText(exchange);
        QTest::mouseClick(window.chats->cmdJoin, Qt::LeftButton);
    }
    bool Join() {
        ClickJoin("Word Games");
        return WaitFor([&] { return RoomStatus() == "Joined 'Word Games'!"; });
    }
    QString Info() const { return window.connection->lblInfo->text(); }
    QString RoomStatus() const { return window.chats->lblChatStatus->text(); }
    int People() const { return window.console->lstPeopleHere->model()->rowCount(); }
    bool Logged(const std::string& line) const {
        const auto& rows = bot.errors.Rows();
        return std::find(rows.begin(), rows.end(), line) != rows.end();
    }

    testserver::OscarTestServer server;
};

TEST_F(SessionEndTest, SignedOnElsewhereEndsTheSessionInEveryPanelAndSaysWhy) {
    ASSERT_TRUE(SignOn());
    ASSERT_TRUE(Join());
    ASSERT_TRUE(WaitFor([&] { return People() == 2; }));
    bot.game.AutoSend(1);

    QtSocketLayer otherSockets;
    oscar::TolSock other(otherSockets);
    other.Login("Scramble Bot", "secret1", server.Port(), false, false, "127.0.0.1");

    ASSERT_TRUE(WaitFor([&] { return Info() == "Offline."; }));
    EXPECT_EQ(RoomStatus(), "Left chat.");
    EXPECT_EQ(People(), 0);
    EXPECT_FALSE(bot.game.GameOn);
    EXPECT_FALSE(bot.game.SignedOn);
    EXPECT_TRUE(
        Logged("Signed off by the server: this screen name signed on elsewhere "
               "(https://127.0.0.1/signed-on-elsewhere)."));
    ASSERT_EQ(MessageTexts(),
              std::vector<std::string>{"Connection to the main BOS server has been lost"});

    // Sign On is not refused as if still signed on, and Join gets in.
    ASSERT_TRUE(SignOn());
    EXPECT_TRUE(Join());
}

TEST_F(SessionEndTest, ASignOnThatCannotGoOnSaysWhichStepAndServerAndMayBeRetried) {
    quint16 closed = 0;
    {
        QTcpServer probe;
        probe.listen(QHostAddress::LocalHost, 0);
        closed = probe.serverPort();
    }
    ClickSignOn(closed);
    const QString refused =
        "Sign-on failed at \"Connecting to Auth server...\": the connection "
        "to the authorization server 127.0.0.1:" +
        QString::number(closed) + " failed (Connection refused).";
    ASSERT_TRUE(WaitFor([&] { return Info() == refused; }));
    EXPECT_TRUE(MessageTexts().empty());

    QTcpServer silent;
    ASSERT_TRUE(silent.listen(QHostAddress::LocalHost, 0));
    ClickSignOn(silent.serverPort());
    ASSERT_TRUE(WaitFor([&] { return silent.hasPendingConnections(); }));
    tmrDeadline.Tick(oscar::TolSock::kStepSeconds);
    EXPECT_EQ(Info(),
              "Sign-on failed at \"Connecting to Auth server...\": no answer from the "
              "authorization server 127.0.0.1:" +
                  QString::number(silent.serverPort()) + " within 15 seconds.");
    EXPECT_TRUE(SignOn());
}

TEST_F(SessionEndTest, TheRoomStatusTellsRefusedJoinsASecondJoinAndSignOff) {
    ASSERT_TRUE(SignOn());
    ClickJoin("Nowhere", "5");
    ASSERT_TRUE(WaitFor([&] { return RoomStatus() != "Joining chat..."; }));
    EXPECT_EQ(RoomStatus(), "Join chat failed, no such room on that exchange. Error code: 20");

    ClickJoin("Word Games");
    ClickJoin("Word Games");
    EXPECT_EQ(MessageTexts(), std::vector<std::string>{"A join is already under way: wait until "
                                                       "it has joined or failed."});
    ASSERT_TRUE(WaitFor([&] { return RoomStatus() == "Joined 'Word Games'!"; }));

    QTest::mouseClick(window.connection->cmdSignOff, Qt::LeftButton);
    EXPECT_EQ(Info(), "Offline.");
    EXPECT_EQ(RoomStatus(), "Left chat.");
    EXPECT_EQ(People(), 0);
}

}  // namespace
