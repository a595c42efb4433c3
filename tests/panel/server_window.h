// The window against the loopback OSCAR server: an account for the bot, a
// room with one player in it, and the steps the operator takes to get there.
#pragma once

#include <QTest>
#include <algorithm>

#include "localserver/oscar_test_server.h"
#include "support/qt_wait.h"
#include "support/window_fixture.h"

namespace testing_support {

class ServerWindow : public WindowTest {
  protected:
    ServerWindow() {
        EXPECT_TRUE(server.Start());
        server.AddAccount("Scramble Bot", "secret1");
        server.AddScriptedPlayer("Word Games", "Ann Agram");
    }

    void ClickSignOn(quint16 port) {
        window.connection->txtSN->setText("Scramble Bot");
        window.connection->txtPW->setText("secret1");
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
        return WaitForRoomStatus("Joined 'Word Games'!");
    }
    bool WaitForInfo(const QString& part) {
        return WaitFor([&] { return Info().contains(part); });
    }
    bool WaitForRoomStatus(const QString& text) {
        return WaitFor([&] { return RoomStatus() == text; });
    }

    QString Info() const { return window.connection->lblInfo->text(); }
    QString RoomStatus() const { return window.chats->lblChatStatus->text(); }
    QString Console() const { return window.console->txtMsg->toPlainText(); }
    int People() const { return window.console->lstPeopleHere->model()->rowCount(); }
    int BotLines() const {
        return static_cast<int>(std::ranges::count(server.Lines(), std::string("Scramble Bot"),
                                                   &testserver::RelayedLine::sender));
    }

    testserver::OscarTestServer server;
};

}  // namespace testing_support
