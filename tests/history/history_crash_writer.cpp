// A fast writer of history to the SQLite file named on the command line, for
// the kill test: five players answer every puzzle but each seventh, which goes
// unanswered, and a game ends every twenty puzzles. After each credit returns,
// it prints "credited N" with N the answers it has credited so far. It ends by
// itself after a minute, and with its parent.
#include <sys/prctl.h>

#include <QCoreApplication>
#include <QDateTime>
#include <chrono>
#include <csignal>
#include <cstdio>

#include "historydb/sql_history.h"

int main(int argc, char** argv) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    QCoreApplication app(argc, argv);
    history::History record{[] { return QDateTime::currentMSecsSinceEpoch(); }};
    QString error;
    const auto file = SqlHistory::Open(QString::fromLocal8Bit(argv[1]), record, error);
    if (!file) qFatal("%s", qPrintable(error));
    long credited = 0;
    const char* words[] = {"giraffe", "zebra", "otter", "lynx", "yak", "emu", "ibis", "newt"};
    const char* players[] = {"Ann Agram", "Bob Scramble", "Cat Nap", "Dee Hinter", "eve"};
    const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    for (long turn = 0; std::chrono::steady_clock::now() < end; ++turn) {
        record.PuzzlePosted(words[turn % 8], "Animals", 0, 5);
        if (turn % 7 != 6) {
            record.AnswerCredited(players[turn % 5]);
            std::printf("credited %ld\n", ++credited);
            std::fflush(stdout);
        }
        if (turn % 20 == 19) record.GameEnded({"annagram"});
    }
    return 0;
}
