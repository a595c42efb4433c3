// Everything the main window owns for the whole run, in plain C++: the
// client, the game with its chat commands, the console and the error log,
// the session control and the operator's actions, wired together. The window
// binds its controls to these; tests drive them directly.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include "files/settings_file.h"
#include "files/topic_files.h"
#include "game/chat_commands.h"
#include "game/chat_sender.h"
#include "game/console.h"
#include "game/game.h"
#include "game/operator_dialogs.h"
#include "game/random.h"
#include "game/string_list.h"
#include "game/timer.h"
#include "oscar/socket_layer.h"
#include "oscar/tolsock.h"
#include "session/list_editing.h"
#include "session/operator_actions.h"
#include "session/reconnector.h"
#include "session/session_control.h"

namespace session {

// What the program gets from its platform.
struct Platform {
    oscar::SocketLayer& sockets;
    game::Timer& tmrMsgPause;
    game::Timer& tmrIdle;
    game::Timer& tmrTopics;
    game::Timer& tmrCcoms;
    game::Timer& tmrCcom2;
    // Ticks once a second: the client's sign-on and join deadlines.
    game::Timer& tmrDeadline;
    game::OperatorDialogs& dialogs;
    std::function<void(const std::string&)> openUrl;
    std::function<void()> openTopicPicker;
    // Where the settings file lives and the file dialogs open.
    std::string programFolder;
};

// The game's lines go to the client's rooms.
class ClientChatSender : public game::ChatSender {
  public:
    explicit ClientChatSender(oscar::TolSock& client) : client_(client) {}
    void SendChat(int chatIndex, const std::string& message) override {
        client_.SendChat(chatIndex, message);
    }
    int FirstRoomIndex() const override {
        return client_.Chat().empty() ? 0 : client_.Chat().front().ChatIndex;
    }

  private:
    oscar::TolSock& client_;
};

class Bot {
  public:
    explicit Bot(Platform platform)
        : dialogs(platform.dialogs),
          client(platform.sockets),
          chatSender(client),
          game({platform.dialogs, chatSender, random, errors, platform.tmrMsgPause,
                platform.tmrIdle, platform.tmrTopics, platform.openTopicPicker}),
          commands(game, console, platform.tmrCcoms, platform.tmrCcom2),
          session(client, game, commands, console, platform.dialogs, errors),
          actions(game, platform.dialogs, platform.tmrIdle, platform.openUrl),
          editing(game, commands, client, platform.dialogs, errors, platform.tmrMsgPause,
                  platform.tmrIdle),
          topicFiles(game.Lists(), platform.dialogs, errors, platform.programFolder),
          settings(
              game, commands, topicFiles, platform.dialogs, errors, platform.programFolder,
              [this](const std::string& user) { session.cmdSetUser_Click(user); },
              [this] { return session.UserName(); }),
          tmrDeadline_(platform.tmrDeadline) {
        client.SetObserver(&session);
        tmrDeadline_.SetTick([this] { client.TickSecond(); });
        tmrDeadline_.Enable();
    }
    ~Bot() {
        tmrDeadline_.Disable();
        tmrDeadline_.SetTick({});
        client.SetObserver(nullptr);
    }
    Bot(const Bot&) = delete;
    Bot& operator=(const Bot&) = delete;

    // Lets the bot sign on again by itself after a lost session; `everySecond`
    // ticks once a second, `now` gives monotonic seconds.
    void UseReconnector(game::Timer& everySecond, std::function<long long()> now = SteadySeconds) {
        reconnector = std::make_unique<Reconnector>(
            everySecond,
            [this] { return static_cast<double>(random.RandomNumber(999999, 0)) / 1000000.0; },
            std::move(now));
        session.UseReconnector(reconnector.get());
    }
    static long long SteadySeconds() {
        return std::chrono::duration_cast<std::chrono::seconds>(
                   std::chrono::steady_clock::now().time_since_epoch())
            .count();
    }

    game::OperatorDialogs& dialogs;
    oscar::TolSock client;
    ClientChatSender chatSender;
    game::RandomSource random;
    game::StringList errors;  // the error log, oldest first
    game::Console console;
    game::Game game;
    game::ChatCommands commands;
    SessionControl session;
    OperatorActions actions;
    ListEditing editing;
    files::TopicFiles topicFiles;
    files::SettingsFile settings;
    std::unique_ptr<Reconnector> reconnector;  // declared last: it calls into the session

  private:
    game::Timer& tmrDeadline_;
};

}  // namespace session
