// The settings file "settings" in the program's folder: saved and loaded on
// the operator's request only.
#pragma once

#include <functional>
#include <string>

#include "files/topic_files.h"
#include "game/chat_commands.h"
#include "game/game.h"
#include "game/operator_dialogs.h"
#include "game/string_list.h"

namespace files {

// The window's fields that the settings cover, as the window shows them.
struct SettingsFields {
    std::string txtSN;
    std::string cmbServers;
    std::string txtPort;
    std::string txtChat;
    std::string txtEx;
    std::string txtSendPause;
    std::string txtScoreLimit;
    std::string txtIdleTime;
    std::string txtUser;
    bool chkFullCaps = true;
    bool chkLock = true;
    bool chkReconnect = true;  // "Reconnect automatically"
};

class SettingsFile {
  public:
    // `setUser` runs the Set User action with a text; `userName` gives the
    // name it applied last.
    SettingsFile(game::Game& game, game::ChatCommands& commands, TopicFiles& topics,
                 game::OperatorDialogs& dialogs, game::StringList& errors, std::string folder,
                 std::function<void(const std::string&)> setUser,
                 std::function<std::string()> userName);

    std::string Path() const;

    void cmdSaveSettings_Click(const SettingsFields& fields);
    // Resets, applies the file and loads its topics; gives the fields as the
    // window should now show them (unchanged when nothing was loaded).
    SettingsFields cmdLoadSettings_Click(SettingsFields fields);
    // The same from a settings file elsewhere (a start without a window).
    SettingsFields LoadFrom(const std::string& path, SettingsFields fields);
    void ClearSettings(SettingsFields& fields);

    // Applies one line of a settings file; a topic line is remembered in
    // `topics` (name, path) for loading after the file is read.
    void ApplyLine(const std::string& line, SettingsFields& fields,
                   std::vector<std::pair<std::string, std::string>>& topics);

  private:
    game::Game& game_;
    game::ChatCommands& commands_;
    TopicFiles& topics_;
    game::OperatorDialogs& dialogs_;
    game::StringList& errors_;
    std::string folder_;
    std::function<void(const std::string&)> setUser_;
    std::function<std::string()> userName_;
};

}  // namespace files
