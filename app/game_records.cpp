#include "app/game_records.h"

#include <QDir>
#include <algorithm>

#include "panel/cp1252.h"

namespace {

// The game in progress, as the page shows it.
leaderboard::LiveGame LiveGame(game::Game& g) {
    leaderboard::LiveGame live;
    if (g.PendingAnswer()) {
        live.puzzle = g.PuzzleLine();
        if (g.GameOn) live.secondsLeft = std::max(0, g.IdleTime - g.IdleCount);
    }
    live.topic = g.Lists().CurrentTopic();
    for (const auto& entry : g.Scores().Ranking())
        live.scores.emplace_back(entry.name, entry.score);
    return live;
}

}  // namespace

GameRecords::GameRecords(session::Bot& bot, const std::string& folder, const QString& address,
                         quint16 port)
    : bot_(bot), server_(history_, [&bot] { return LiveGame(bot.game); }) {
    const QString path =
        QDir(QString::fromLocal8Bit(folder.c_str())).filePath(HistoryService::kFileName);
    if (!history_.Open(path)) bot.errors.Append(ToCp1252(history_.Error()));
    bot.game.SetHistory(&history_);
    bot.commands.SetHistory(&history_.Record());

    QString error;
    if (!server_.Listen(QHostAddress(address), port, error)) bot.errors.Append(ToCp1252(error));
}

GameRecords::~GameRecords() {
    bot_.game.SetHistory(nullptr);
    bot_.commands.SetHistory(nullptr);
}
