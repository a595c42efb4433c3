// Arbitrary text through the readers of text: the lines of a settings file,
// topic-file entries turned into puzzles, and chat lines through the chat
// handler of a running game with ops, disallows and players.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "files/line_file.h"
#include "game/puzzle.h"
#include "session/bot.h"
#include "support/fake_dialogs.h"
#include "support/fake_sockets.h"
#include "support/fake_timer.h"

using namespace testing_support;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::vector<std::string> lines =
        files::SplitLines(std::string(reinterpret_cast<const char*>(data), size));

    FakeDialogs dialogs;
    dialogs.yesNoAnswers = {true, false, true};
    FakeSocketLayer sockets;
    FakeTimer msgPause, idle, topics, ccoms, ccom2, deadline;
    session::Bot bot(
        {sockets, msgPause, idle, topics, ccoms, ccom2, deadline, dialogs, {}, {}, "/nonexistent"});

    files::SettingsFields fields;
    std::vector<std::pair<std::string, std::string>> topicLines;
    for (std::size_t i = 0; i < lines.size() / 2; ++i)
        bot.settings.ApplyLine(lines[i], fields, topicLines);

    game::RandomSource random(size);
    game::TopicClass topic;
    topic.SetTopicName(lines.empty() ? "t" : lines[0]);
    for (const std::string& line : lines) {
        if (line.empty()) continue;
        topic.AddWord(line);
        game::MakePuzzle(line, size % 2 == 0, static_cast<int>(size % 3), random);
    }
    bot.game.Lists().AddLoadedTopic(topic);
    bot.game.Lists().AddTopicList(topic.GetTopic());

    // A game in a room, the chat lines said by an op and by everyone else.
    EnterFakeRoom(sockets, bot.client);
    bot.game.SignedOn = true;
    bot.game.ScoreLimit = 2;
    bot.commands.Ops().Add("boss");
    bot.game.cmdAutoSendOn_Click();
    for (std::size_t i = 0; i < lines.size(); ++i) {
        bot.session.ChatMessage(2, i % 3 == 0 ? "Boss" : "Player " + std::to_string(i % 4),
                                lines[i]);
        if (bot.game.PendingAnswer() && i % 5 == 0) {
            bot.session.ChatMessage(2, "Ann", *bot.game.PendingAnswer());
        }
        idle.Tick(3);
        msgPause.Tick(3);
        topics.Tick();
        ccoms.Tick();
        ccom2.Tick();
    }
    return 0;
}
