#include "game/chat_commands.h"

#include <string_view>

#include "oscar/text.h"

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
    const std::string sender = oscar::NormalizeName(strScreenname);
    const std::string stripped = oscar::StripTags(line);
    const std::string text = oscar::TrimSpaces(stripped);

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
    }

    if (!ops_.Contains(sender) || tmrCcoms_.IsEnabled()) return;
    if (RunOpCommand(intChatIndex, oscar::NormalizeName(stripped))) tmrCcoms_.Enable();
}

bool ChatCommands::RunOpCommand(int chatIndex, const std::string& cmd) {
    // Matched by prefix in this order, so "/options" is "/op" naming "tions".
    auto matches = [&cmd](std::string_view prefix) { return cmd.starts_with(prefix); };
    auto nameAfter = [&cmd](std::string_view prefix) { return cmd.substr(prefix.size()); };
    auto reply = [this, chatIndex](const std::string& text) { game_.SendToRoom(chatIndex, text); };

    if (matches("/help")) {
        reply(kHelpText);
    } else if (matches("/op")) {
        const std::string name = nameAfter("/op");
        if (ops_.Contains(name)) {
            reply(name + " is already oped.");
        } else {
            ops_.Add(name);
            reply(name + " has been oped.");
        }
    } else if (matches("/deop")) {
        const std::string name = nameAfter("/deop");
        if (ops_.Contains(name)) {
            ops_.Remove(name);
            reply(name + " has been deoped.");
        } else {
            reply(name + " is not oped.");
        }
    } else if (matches("/allow")) {
        const std::string name = nameAfter("/allow");
        if (disallows_.Contains(name)) {
            disallows_.Remove(name);
            reply(name + " has been allowed to participate.");
        } else {
            reply(name + " is not disallowed.");
        }
    } else if (matches("/disallow")) {
        const std::string name = nameAfter("/disallow");
        if (disallows_.Contains(name)) {
            reply(name + " is already disallowed.");
        } else {
            disallows_.Add(name);
            reply(name + " has been disallowed.");
        }
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
