// A fast game that writes its history to the SQLite file named on the command
// line, for the kill test: five players answer every puzzle but each seventh,
// which goes unanswered. After each credit returns, it prints "credited N"
// with N the answers the file now holds. It ends by itself after a minute,
// and with its parent.
#include <sys/prctl.h>

#include <QCoreApplication>
#include <chrono>
#include <csignal>
#include <cstdio>

#include "game/chat_commands.h"
#include "game/game.h"
#include "historydb/sql_history.h"
#include "support/fake_chat.h"
#include "support/fake_dialogs.h"
#include "support/fake_timer.h"

int main(int argc, char** argv) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    QCoreApplication app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: history_crash_writer FILE\n");
        return 2;
    }
    using namespace testing_support;
    FakeDialogs dialogs;
    FakeChat chat;
    game::RandomSource random{1};
    game::StringList errors;
    FakeTimer tmrMsgPause, tmrIdle, tmrTopics, tmrCcoms, tmrCcom2;
    game::Console console;
    game::Game game{{dialogs, chat, random, errors, tmrMsgPause, tmrIdle, tmrTopics, [] {}}};
    game::ChatCommands commands{game, console, tmrCcoms, tmrCcom2};

    history::History record{[] {
        return std::chrono::duration_cast<std::chrono::milliseconds>(
                   std::chrono::system_clock::now().time_since_epoch())
            .count();
    }};
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

    game::TopicClass topic;
    topic.SetTopicName("Animals");
    for (const char* word : {"giraffe", "zebra", "otter", "lynx", "yak", "emu", "ibis", "newt"})
        topic.AddWord(word);
    game.Lists().AddLoadedTopic(std::move(topic));
    game.Lists().AddTopicList("Animals");
    game.SignedOn = true;
    game.SendPause = 0;
    game.IdleTime = 0;
    game.ScoreLimit = 5;
    game.cmdAutoSendOn_Click();

    const char* players[] = {"Ann Agram", "Bob Scramble", "Cat Nap", "Dee Hinter", "eve"};
    const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    for (long turn = 0; std::chrono::steady_clock::now() < end; ++turn) {
        if (game.PendingAnswer() && turn % 7 != 6) {
            commands.ChatMessage(1, players[turn % 5], *game.PendingAnswer());
            std::printf("credited %ld\n", ++credited);
            std::fflush(stdout);
            tmrMsgPause.Tick();
        } else {
            tmrIdle.Tick();
        }
        chat.sent.clear();
    }
    return 0;
}
