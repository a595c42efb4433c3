#include "session/operator_actions.h"

#include <algorithm>
#include <vector>

#include "game/product.h"
#include "text/text_number.h"

namespace session {

namespace {

const std::vector<std::vector<std::string>> kHelp = {
    {"This is the Scramble List section. Here is where the scrambler will act on its own, "
     "depending on what you set up.",
     "You start by adding a topic to the list that you already loaded from file in the Topics "
     "Section. You cannot have Auto-send on without a Topic loaded.",
     "Click Randomize after loading a Topic to raise difficulty. If you add a bunch of topics that "
     "you believe would make a good mass scramble list, you can save it to file."},
    {"This is where you control the way the program is used. After you have loaded a Topic and "
     "added it to the Scramble List section, you may click on Auto Send On to start the "
     "scrambling fun.",
     "If you want to have fun and do it by yourself, you can use the Manual Send at the top.",
     "The three textboxes at the bottom are important for the program to run without problems. "
     "The first is the message delay for the next scramble word to show after one is answered. "
     "Setting this too low will result in the bot rating easy.",
     "The second textbox is the score limit. It is the score a single player has to reach to win "
     "the game. Set this to a realistic goal if you change it.",
     "The third textbox is for idle time, meaning how long the program will wait for a scramble "
     "word to be answered before moving on to the next one. DO NOT set this lower than the delay "
     "textbox time."},
    {"This is where you load topics from a file on your computer into the program to be used for "
     "the Scramble List section.",
     "You can name a topic to anything you want. You can also remove or merge two topics into one "
     "(a great feature to lengthen difficulty)."},
};

// The numbers the game keeps are 16-bit.
int Clamp16(long long value) {
    return static_cast<int>(std::clamp(value, -32768LL, 32767LL));
}

}  // namespace

OperatorActions::OperatorActions(game::Game& game, game::OperatorDialogs& dialogs,
                                 game::Timer& tmrIdle,
                                 std::function<void(const std::string&)> openUrl)
    : game_(game), dialogs_(dialogs), tmrIdle_(tmrIdle), openUrl_(std::move(openUrl)) {}

std::string OperatorActions::txtSendPause_LostFocus(const std::string& text) {
    const long long number = text::WholeNumber(text);
    if (number <= 0) {
        dialogs_.ShowMessage("You cannot have a message delay of 0 or less seconds.", "Note",
                             game::MessageKind::Warning);
        return "10";
    }
    if (number <= 9 &&
        !dialogs_.AskYesNo("It is not recommended that you use a timer lower than 10 seconds. The "
                           "bot may rate if you do. Do you still wish to use this time?",
                           "Warning!")) {
        return "10";
    }
    game_.SendPause = Clamp16(number);
    return text;
}

std::string OperatorActions::txtScoreLimit_LostFocus(const std::string& text) {
    const long long number = text::WholeNumber(text);
    if (number <= 0) {
        dialogs_.ShowMessage("You cannot have score limit of 0 or less.", "Note",
                             game::MessageKind::Warning);
        game_.ScoreLimit = 15;
        return "15";
    }
    game_.ScoreLimit = Clamp16(number);
    return text;
}

std::string OperatorActions::txtIdleTime_LostFocus(const std::string& text) {
    const long long number = text::WholeNumber(text);
    if (number <= 0) {
        dialogs_.ShowMessage("You cannot have an idle timer of 0 or less.", "Note",
                             game::MessageKind::Warning);
        return "10";
    }
    game_.IdleTime = Clamp16(number);
    if (tmrIdle_.IsEnabled()) {
        // Its next tick comes a full interval from now.
        tmrIdle_.Disable();
        tmrIdle_.Enable();
    }
    return text;
}

void OperatorActions::cmdHelp_Click(int Index) {
    if (Index < 0 || Index >= static_cast<int>(kHelp.size())) return;
    for (const std::string& box : kHelp[static_cast<std::size_t>(Index)]) {
        dialogs_.ShowMessage(box, "Help", game::MessageKind::Plain);
    }
}

void OperatorActions::cmdCredits_Click() {
    dialogs_.ShowMessage(
        "Zelvar - Creating the program\r"
        "Vexmor - Animal scramble lists\r"
        "Kestrel - Country and capital scramble lists\r"
        "Mira - Food scramble lists\r"
        "Tobin - Movie scramble lists\r"
        "Quill - Music scramble lists\r"
        "Juniper - Beta testing\r"
        "Rook - Beta testing",
        std::string(game::kProductTitle) + " Credits", game::MessageKind::Plain);
}

void OperatorActions::lblHexList_Click() {
    if (openUrl_) openUrl_(std::string(game::kHexColorList));
}

void OperatorActions::lblSite_Click() {
    if (openUrl_) openUrl_(std::string(game::kProductSite));
}

}  // namespace session
