// The bot's timers and clock on Qt's event loop, in one place, so that the
// window, the run without a window and the test programs start the bot alike.
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "app/qt_clock.h"
#include "app/qt_timer.h"
#include "session/bot.h"

struct QtBotTimers {
    QtTimer tmrMsgPause{1000}, tmrIdle{1000}, tmrTopics{25000}, tmrCcoms{10000}, tmrCcom2{10000};
    QtTimer tmrDeadline{1000};   // sign-on and join deadlines
    QtTimer tmrReconnect{1000};  // the next try after a lost session
    QtClock clock;               // rate limits and keep-alives

    // Declared before the bot, these outlive it.
    session::Platform Platform(oscar::SocketLayer& sockets, game::OperatorDialogs& dialogs,
                               std::string programFolder,
                               std::function<void(const std::string&)> openUrl = {},
                               std::function<void()> openTopicPicker = {}) {
        return {sockets,
                tmrMsgPause,
                tmrIdle,
                tmrTopics,
                tmrCcoms,
                tmrCcom2,
                tmrDeadline,
                dialogs,
                std::move(openUrl),
                std::move(openTopicPicker),
                std::move(programFolder)};
    }

    // Lines then wait for the server's rate limits and idle connections get
    // keep-alives; with `reconnect`, a lost session is signed on again.
    void Attach(session::Bot& bot, bool reconnect) {
        bot.client.SetClock(&clock);
        if (reconnect) bot.UseReconnector(tmrReconnect);
    }
};
