// A fast game that writes its history to the SQLite file named on the command
// line, for the kill test: five players answer every puzzle but each seventh,
// which goes unanswered. After each credit returns, it prints "credited N"
// with N the answers the file now holds. It ends by itself after a minute,
// and with its parent.
#include <sys/prctl.h>

#include <QCoreApplication>
#include <QDateTime>
#include <chrono>
#include <csignal>
#include <cstdio>

#include "history/topic_game.h"
#include "historydb/sql_history.h"

int main(int argc, char** argv) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    QCoreApplication app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: history_crash_writer FILE\n");
        return 2;
    }
    testing_support::TopicGame played(
        1, {"giraffe", "zebra", "otter", "lynx", "yak", "emu", "ibis", "newt"});
    game::Game& game = played.game;
    history::History record{[] { return QDateTime::currentMSecsSinceEpoch(); }};
    QString error;
    const auto file = SqlHistory::Open(QString::fromLocal8Bit(argv[1]), record, error);
    if (!file) {
        std::fprintf(stderr, "%s\n", error.toLocal8Bit().constData());
        return 1;
    }
    long credited = 0;
    for (const auto& p : record.Puzzles())
        credited += p.winner >= 0;
    game.SetHistory(&record);

    game.SendPause = 0;
    game.IdleTime = 0;
    game.ScoreLimit = 5;
    game.cmdAutoSendOn_Click();

    const char* players[] = {"Ann Agram", "Bob Scramble", "Cat Nap", "Dee Hinter", "eve"};
    const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    for (long turn = 0; std::chrono::steady_clock::now() < end; ++turn) {
        if (game.PendingAnswer() && turn % 7 != 6) {
            played.commands.ChatMessage(1, players[turn % 5], *game.PendingAnswer());
            std::printf("credited %ld\n", ++credited);
            std::fflush(stdout);
            played.tmrMsgPause.Tick();
        } else {
            played.tmrIdle.Tick();
        }
        played.chat.sent.clear();
    }
    return 0;
}
