#include "files/settings_file.h"

#include "files/line_file.h"
#include "game/product.h"
#include "text/text_number.h"

namespace files {

namespace {

const char* Flag(bool on) {
    return on ? "1" : "0";
}

// A number read from the file must lie in 1..998; otherwise the key's
// default text stands in for it.
std::string Bounded(const std::string& value, const char* fallback) {
    const double number = text::LeadingDecimal(value);
    return number <= 0 || number >= 999 ? fallback : value;
}

}  // namespace

SettingsFile::SettingsFile(game::Game& game, game::ChatCommands& commands, TopicFiles& topics,
                           game::OperatorDialogs& dialogs, game::StringList& errors,
                           std::string folder, std::function<void(const std::string&)> setUser,
                           std::function<std::string()> userName)
    : game_(game),
      commands_(commands),
      topics_(topics),
      dialogs_(dialogs),
      errors_(errors),
      folder_(std::move(folder)),
      setUser_(std::move(setUser)),
      userName_(std::move(userName)) {}

std::string SettingsFile::Path() const {
    return JoinPath(folder_, "settings");
}

void SettingsFile::cmdSaveSettings_Click(const SettingsFields& f) {
    const game::FontFields& font = game_.Style().fields;
    std::vector<std::string> lines = {
        "Program:Vexmor Scrambler",
        "Version:2.0.0",
        "Creator:Zelvar",
        "",
        "",
        "||||||||||||||||||||||||",
        "|||||SETTINGS FILE||||||",
        "||||||||||||||||||||||||",
        "",
        "",
        "WARNING: Do not edit this unless you know what you're doing. Editing the Topic file paths "
        "could crash the program.",
        "",
        "",
        "sn:" + f.txtSN,
        "server:" + f.cmbServers,
        "port:" + f.txtPort,
        "chat:" + f.txtChat,
        "ex:" + f.txtEx,
        "msgdelay:" + std::to_string(game_.SendPause),
        "score:" + std::to_string(game_.ScoreLimit),
        "idle:" + std::to_string(game_.IdleTime),
        std::string("lowercase:") + Flag(game_.chkLCase),
        "user:" + userName_(),
        "bg:" + font.txtBGColor,
        "fc:" + font.txtFontColor,
        "ft:" + font.txtFontType,
        std::string("bold:") + Flag(font.chkBold),
        std::string("italics:") + Flag(font.chkItalics),
        std::string("underline:") + Flag(font.chkUnderline),
        std::string("strike:") + Flag(font.chkStrike),
        std::string("changetopic:") + Flag(game_.chkNewTopic),
        std::string("hint:") + Flag(commands_.chkHint),
        std::string("fullcaps:") + Flag(f.chkFullCaps),
        std::string("secure:") + Flag(f.chkLock),
    };
    // One line per member: a name a file listed twice is written once.
    for (const std::string& op : commands_.Ops().Members())
        lines.push_back("op:" + op);
    for (const std::string& name : commands_.Disallows().Members()) {
        lines.push_back("disallow:" + name);
    }
    for (const game::TopicClass& topic : game_.Lists().Topics()) {
        lines.push_back("topic:" + topic.GetTopic() + ":" + topic.GetDir());
    }
    lines.push_back("mode:" + std::to_string(game_.Modes().GetGameMode()));
    // Lines added since the first version of the file come last, so that
    // older programs and older files still read each other.
    lines.push_back(std::string("reconnect:") + Flag(f.chkReconnect));
    // One setting, one line: a line break inside a value (a name or a path
    // from anywhere) would let it write lines of its own, so it goes.
    for (std::string& line : lines) {
        std::erase(line, '\r');
        std::erase(line, '\n');
    }

    // A new file replaces the old one only once it is whole.
    if (!ReplaceLines(Path(), lines)) {
        const std::string text = "Failed to save settings to '" + Path() + "'!";
        dialogs_.ShowMessage(text, "Error", game::MessageKind::Error);
        errors_.Append(text);
        return;
    }
    dialogs_.ShowMessage("Settings saved!", "Settings Saved!", game::MessageKind::Information);
}

SettingsFields SettingsFile::cmdLoadSettings_Click(SettingsFields fields) {
    return LoadFrom(Path(), std::move(fields));
}

SettingsFields SettingsFile::LoadFrom(const std::string& path, SettingsFields fields) {
    const ReadResult file = ReadLines(path);
    if (file.status != ReadStatus::Ok) {
        const std::string text = file.status == ReadStatus::Missing
                                     ? "Failed to load settings! Settings file not found!"
                                     : "Failed to load settings! Settings file could not be read!";
        dialogs_.ShowMessage(text, "Error", game::MessageKind::Error);
        errors_.Append(text);
        return fields;
    }
    ClearSettings(fields);
    std::vector<std::pair<std::string, std::string>> topics;
    for (const std::string& line : file.lines)
        ApplyLine(line, fields, topics);
    for (const auto& [name, path] : topics)
        topics_.AutoLoadTopic(name, path);
    setUser_(fields.txtUser);
    game_.Style().cmdSetFont_Click();
    dialogs_.ShowMessage("Settings loaded!", "Settings Loaded", game::MessageKind::Information);
    return fields;
}

void SettingsFile::ApplyLine(const std::string& line, SettingsFields& f,
                             std::vector<std::pair<std::string, std::string>>& topics) {
    const auto first = line.find(':');
    if (first == std::string::npos) return;
    const std::string key = line.substr(0, first);
    const auto second = line.find(':', first + 1);
    const std::string value = line.substr(
        first + 1, second == std::string::npos ? std::string::npos : second - first - 1);
    const std::string rest = second == std::string::npos ? std::string() : line.substr(second + 1);

    game::FontFields& font = game_.Style().fields;
    auto number = [](const std::string& text) { return static_cast<int>(text::WholeNumber(text)); };
    if (key == "sn")
        f.txtSN = value;
    else if (key == "server")
        f.cmbServers = value;
    else if (key == "port")
        f.txtPort = value;
    else if (key == "chat")
        f.txtChat = value;
    else if (key == "ex")
        f.txtEx = value;
    else if (key == "msgdelay")
        game_.SendPause = number(f.txtSendPause = Bounded(value, "10"));
    else if (key == "score")
        game_.ScoreLimit = number(f.txtScoreLimit = Bounded(value, "15"));
    else if (key == "idle")
        game_.IdleTime = number(f.txtIdleTime = Bounded(value, "30"));
    else if (key == "user")
        f.txtUser = value;
    else if (key == "lowercase" && value == "1")
        game_.chkLCase = true;
    else if (key == "bold" && value == "1")
        font.chkBold = true;
    else if (key == "italics" && value == "1")
        font.chkItalics = true;
    else if (key == "underline" && value == "1")
        font.chkUnderline = true;
    else if (key == "strike" && value == "1")
        font.chkStrike = true;
    else if (key == "changetopic" && value == "1")
        game_.chkNewTopic = true;
    else if (key == "hint" && value == "1")
        commands_.chkHint = true;
    else if (key == "fullcaps" && value == "0")
        f.chkFullCaps = false;
    else if (key == "secure" && value == "0")
        f.chkLock = false;
    else if (key == "reconnect" && value == "0")
        f.chkReconnect = false;
    // Names come in as written; a repeated one is listed again.
    else if (key == "op")
        commands_.Ops().AddShowingDuplicate(value);
    else if (key == "disallow")
        commands_.Disallows().AddShowingDuplicate(value);
    else if (key == "bg")
        font.txtBGColor = value;
    else if (key == "fc")
        font.txtFontColor = value;
    else if (key == "ft")
        font.txtFontType = value;
    else if (key == "topic")
        topics.emplace_back(value, rest);
    else if (key == "mode" && (value == "0" || value == "1" || value == "2")) {
        game_.Modes().optMode_Click(value[0] - '0');
    }
}

void SettingsFile::ClearSettings(SettingsFields& f) {
    if (game_.GameOn) {
        game_.GameOn = false;
        game_.SendToFirstRoom("Game disabled due to user loading old settings.");
    }
    f.cmbServers = std::string(game::kSecondLoginServer);
    f.txtPort = "5190";
    f.txtChat = "Chat Name";
    f.txtEx = "4";
    game_.Lists().cmdClearList_Click();
    f.txtSendPause = "10";
    game_.SendPause = 10;
    game_.IdleTime = 30;
    f.txtIdleTime = "30";
    game_.StopRoundTimers();
    game_.ScoreLimit = 15;
    f.txtScoreLimit = "15";
    game_.Modes().optMode_Click(0);
    f.txtUser = "Unknown";
    setUser_(f.txtUser);
    game_.chkLCase = false;
    game_.DropPendingAnswer();
    f.chkFullCaps = true;
    f.chkLock = true;
    f.chkReconnect = true;
    commands_.Ops().Clear();
    commands_.Disallows().Clear();
    game_.Lists().cmdClearAll_Click();
    game_.Scores().Clear();
    game::FontFields& font = game_.Style().fields;
    font.txtBGColor = "000000";
    font.txtFontColor = "00bfff";
    font.txtFontType = "Times New Roman";
}

}  // namespace files
