// A game and its chat commands over fake dialogs, chat and timers, signed on,
// with topics loaded as the topic loader would.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "game/chat_commands.h"
#include "game/game.h"
#include "support/fake_chat.h"
#include "support/fake_dialogs.h"
#include "support/fake_timer.h"

namespace testing_support {

struct GameOnFakes {
    explicit GameOnFakes(std::uint64_t seed) : random{seed} { game.SignedOn = true; }

    // Loads topic `name`, and puts it on the list if asked.
    void Load(const std::string& name, std::vector<std::string> words, bool toList = false) {
        game::TopicClass topic;
        topic.SetTopicName(name);
        for (std::string& word : words)
            topic.AddWord(std::move(word));
        game.Lists().AddLoadedTopic(std::move(topic));
        if (toList) game.Lists().AddTopicList(name);
    }

    FakeDialogs dialogs;
    FakeChat chat;
    game::RandomSource random;
    game::StringList errors;
    FakeTimer tmrMsgPause, tmrIdle, tmrTopics, tmrCcoms, tmrCcom2;
    game::Console console;
    game::Game game{{dialogs, chat, random, errors, tmrMsgPause, tmrIdle, tmrTopics, [] {}}};
    game::ChatCommands commands{game, console, tmrCcoms, tmrCcom2};
};

}  // namespace testing_support
