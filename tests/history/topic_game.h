// A signed-on game and its chat commands over fake dialogs, chat and timers,
// with one topic, "Animals", loaded and on the list: what the history tests
// play.
#pragma once

#include <cstdint>
#include <initializer_list>

#include "game/chat_commands.h"
#include "game/game.h"
#include "support/fake_chat.h"
#include "support/fake_dialogs.h"
#include "support/fake_timer.h"

namespace testing_support {

struct TopicGame {
    TopicGame(std::uint64_t seed, std::initializer_list<const char*> words) : random{seed} {
        game::TopicClass topic;
        topic.SetTopicName("Animals");
        for (const char* word : words)
            topic.AddWord(word);
        game.Lists().AddLoadedTopic(std::move(topic));
        game.Lists().AddTopicList("Animals");
        game.SignedOn = true;
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
