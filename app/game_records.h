// Every game remembered and shown: the history file beside the settings file,
// the game and the chat commands writing to it, and the leaderboard page
// served from it. What goes wrong here goes to the error log; play goes on.
#pragma once

#include <QString>
#include <string>

#include "app/leaderboard_server.h"
#include "historydb/history_service.h"
#include "session/bot.h"

class GameRecords {
  public:
    // The page listens on `address`:`port` (LeaderboardServer's defaults
    // unless the operator named others).
    GameRecords(session::Bot& bot, const std::string& folder, const QString& address, quint16 port);
    ~GameRecords();
    GameRecords(const GameRecords&) = delete;
    GameRecords& operator=(const GameRecords&) = delete;

    HistoryService& History() { return history_; }

  private:
    session::Bot& bot_;
    HistoryService history_;
    LeaderboardServer server_;
};
