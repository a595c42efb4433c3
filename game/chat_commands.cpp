#include "game/chat_commands.h"

#include <string_view>

#include "history/chat_lines.h"
#include "text/text.h"

namespace game {

namespace {

std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to) {
    std::string out;
    out.reserve(text.size());
    std::size_t pos = 0;
    for (auto found = text.find(from); found != std::string_view::npos;
         found = text.find(from, pos)) {
        out.append(text.substr(pos, found - pos));
        out.append(to);
        pos = found + from.size();
    }
    out.append(text.substr(pos));
    return out;
}

// Adds `name` to `list`; the reply says which way it went.
std::string AddName(NameList& list, const std::string& name, std::string_view added,
                    std::string_view present) {
    if (list.Contains(name)) return name + std::string(present);
    list.Add(name);
    return name + std::string(added);
}

std::string RemoveName(NameList& list, const std::string& name, std::string_view removed,
                       std::string_view absent) {
    if (!list.Contains(name)) return name + std::string(absent);
    list.Remove(name);
    return name + std::string(removed);
}

}  // namespace

std::string DecodeEntities(std::string_view line) {
    std::string text = ReplaceAll(line, "&gt;", ">");
    text = ReplaceAll(text, "&lt;", "<");
    text = ReplaceAll(text, "&amp;", "&");
    return ReplaceAll(text, "&quot;", "\"");
}

ChatCommands::ChatCommands(Game& game, Console& console, Timer& tmrCcoms, Timer& tmrCcom2)
    : game_(game), console_(console), tmrCcoms_(tmrCcoms), tmrCcom2_(tmrCcom2) {
    tmrCcoms_.SetTick([this] { tmrCcoms_.Disable(); });
    tmrCcom2_.SetTick([this] { tmrCcom2_.Disable(); });
}

void ChatCommands::ChatMessage(int intChatIndex, const std::string& strScreenname,
                               const std::string& strMessage) {
    const std::string line = DecodeEntities(strMessage);
    const std::string sender = text::NormalizeName(strScreenname);
    const std::string stripped = text::StripTags(line);
    const std::string text = text::TrimSpaces(stripped);

    console_.AppendLine(strScreenname + ": " + stripped);
    if (disallows_.Contains(sender)) return;

    game_.CheckAnswer(intChatIndex, strScreenname, text);
    if (game_.TopicChoiceOpen() && game_.ChooseTopicFromChat(intChatIndex, text)) return;

    if (text.starts_with("/hint")) {
        if (game_.PendingAnswer() && !chkHint) {
            if (!tmrCcom2_.IsEnabled()) {
                game_.cmdHint_Click();
                tmrCcom2_.Enable();
            }
            return;
        }
    } else if (text.starts_with("/score")) {
        if (tmrCcom2_.IsEnabled()) return;
        game_.ShowTopScores();
        tmrCcom2_.Enable();
    } else if (history_ && (text == "/top" || text.starts_with("/top ") || text == "/stats" ||
                            text.starts_with("/stats "))) {
        // Paced with "/score": one reply per pause, whoever asks.
        if (tmrCcom2_.IsEnabled()) return;
        const history::Millis now = history_->Now();
        if (text.starts_with("/top")) {
            game_.SendToRoom(intChatIndex, history::TopLine(*history_, now));
        } else {
            const std::string name = text::TrimSpaces(text.substr(6));
            game_.SendToRoom(intChatIndex,
                             history::StatsLine(*history_, name.empty() ? sender : name, now));
        }
        tmrCcom2_.Enable();
    }

    if (!ops_.Contains(sender) || tmrCcoms_.IsEnabled()) return;
    if (RunOpCommand(intChatIndex, text::NormalizeName(stripped))) tmrCcoms_.Enable();
}

bool ChatCommands::RunOpCommand(int chatIndex, const std::string& cmd) {
    // Matched by prefix in this order, so "/options" is "/op" naming "tions".
    auto matches = [&cmd](std::string_view prefix) { return cmd.starts_with(prefix); };
    auto nameAfter = [&cmd](std::string_view prefix) { return cmd.substr(prefix.size()); };
    auto reply = [this, chatIndex](const std::string& text) { game_.SendToRoom(chatIndex, text); };
    // The four name commands take screen names only: a name is echoed in the
    // reply and kept one per line in the settings file, so markup or a line
    // break in it would reach both.
    auto badName = [&](std::string_view prefix) {
        if (!matches(prefix) || text::IsScreenName(nameAfter(prefix))) return false;
        reply(kNotAScreenName);
        return true;
    };

    if (matches("/help")) {
        reply(kHelpText);
    } else if (badName("/op") || badName("/deop") || badName("/allow") || badName("/disallow")) {
        // refused, with the pause like any other reply
    } else if (matches("/op")) {
        reply(AddName(ops_, nameAfter("/op"), " has been oped.", " is already oped."));
    } else if (matches("/deop")) {
        reply(RemoveName(ops_, nameAfter("/deop"), " has been deoped.", " is not oped."));
    } else if (matches("/allow")) {
        reply(RemoveName(disallows_, nameAfter("/allow"), " has been allowed to participate.",
                         " is not disallowed."));
    } else if (matches("/disallow")) {
        reply(AddName(disallows_, nameAfter("/disallow"), " has been disallowed.",
                      " is already disallowed."));
    } else if (matches("/start")) {
        if (game_.Lists().lstWords().Empty()) {
            reply("There are no topics loaded! Please load a topic.");
        } else {
            game_.cmdAutoSendOn_Click();
        }
    } else if (matches("/stop")) {
        reply("Auto-send turned off!");
        game_.cmdAutoSendOff_Click();
    } else if (matches("/newtopic")) {
        game_.NewTopic(true);
    } else if (matches("/newgame")) {
        game_.NewGame();
    } else if (matches("/answer")) {
        if (!game_.PendingAnswer()) return false;
        game_.cmdAnswer_Click();
    } else if (matches("/skip")) {
        if (!game_.PendingAnswer()) return false;
        game_.cmdSkip_Click();
    } else if (matches("/endgame")) {
        game_.cmdAutoSendOff_Click();
        if (!game_.Scores().Empty()) reply(game_.Announcement());
        game_.Scores().Clear();
        return false;
    } else {
        return false;
    }
    return true;
}

}  // namespace game
