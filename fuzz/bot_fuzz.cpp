// Network bytes to the whole bot: the client, the window's logic and the
// game, as the program wires them, with timers that the input advances. The
// bot signs on, joins a room for real, loads a topic and plays; the input is
// a list of records, each [kind][length: 2 bytes][bytes]:
//   0x00-0x3F  the bytes arrive on connection kind % 6
//   0x40-0x5F  a chat line in the room: sender up to the first zero byte,
//              then the text
//   0x60-0x6F  people arrive in the room, 0x70-0x7F leave it: names split
//              at zero bytes
//   0x80-0xBF  timer (kind & 7) % 5 ticks ((kind >> 3) & 7) + 1 times:
//              message pause, idle, topic choice, the two command pauses
//   0xC0-0xFF  an operator action, kind % 16 (the bytes are its text)
// so what the window and the game do with hostile events is fuzzed too.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "oscar/encoding.h"
#include "session/bot.h"
#include "support/fake_dialogs.h"
#include "support/fake_sockets.h"
#include "support/fake_timer.h"
#include "support/frames.h"
#include "support/join_room.h"

namespace {

using namespace testing_support;

// The occupants of 000E/0003 (joined) or 000E/0004 (left).
std::string OccupantsFrame(std::string_view names, bool joined) {
    std::string body = oscar::HexToBytes(joined ? "000E0003000000000000" : "000E0004000000000000");
    std::size_t start = 0;
    while (start <= names.size()) {
        const auto end = std::min(names.find('\0', start), names.size());
        std::string name(names.substr(start, std::min<std::size_t>(end - start, 255)));
        // Every third name carries a TLV, as servers send user classes.
        const std::string tlvs =
            name.size() % 3 == 0
                ? oscar::HexToBytes("0001") + oscar::MakeTLV("0001", 2, std::string("\x00\x10", 2))
                : oscar::HexToBytes("0000");
        body += oscar::MakeTLV("", 1, name) + oscar::HexToBytes("0000") + tlvs;
        start = end + 1;
    }
    return Frame(2, body.substr(0, 0xFFFF));
}

void OperatorAction(session::Bot& bot, int action, const std::string& text, FakeDialogs& dialogs) {
    dialogs.yesNoAnswers = {!text.empty(), text.size() % 2 == 0};
    dialogs.promptAnswers = {text, text};
    switch (action) {
        case 0:
            bot.game.cmdAutoSendOn_Click();
            break;
        case 1:
            bot.game.cmdAutoSendOff_Click();
            break;
        case 2:
            bot.game.cmdAnswer_Click();
            break;
        case 3:
            bot.game.cmdHint_Click();
            break;
        case 4:
            bot.game.cmdSkip_Click();
            break;
        case 5:
            bot.game.cmdNewGame_Click();
            break;
        case 6:
            bot.game.cmdNewTopic_Click();
            break;
        case 7:
            bot.game.Lists().cmdRandomize_Click(bot.random);
            break;
        case 8:
            bot.session.cmdSendChat_Click(text);
            break;
        case 9:
            bot.session.cmdLeave_Click(text);
            break;
        case 10:
            bot.session.cmdJoin_Click(text, "4");
            break;
        case 11:
            bot.session.cmdSignOff_Click();
            break;
        case 12:
            bot.editing.AddDirectly(text, text);
            break;
        case 13:
            bot.editing.AddOp(text);
            break;
        case 14:
            bot.game.Modes().optMode_Click(static_cast<int>(text.size() % 3));
            break;
        default:
            bot.game.ShowTopScores();
            break;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FakeDialogs dialogs;
    FakeSocketLayer sockets;
    FakeTimer msgPause, idle, topics, ccoms, ccom2, deadline;
    FakeTimer* timers[] = {&msgPause, &idle, &topics, &ccoms, &ccom2, &deadline};
    session::Bot bot(
        {sockets, msgPause, idle, topics, ccoms, ccom2, deadline, dialogs, {}, {}, "/nonexistent"});

    // Signed on and in a room, as the servers' frames leave it.
    bot.session.cmdSignOn_Click({"Bot Name", "secret1", "127.0.0.1", "5190"});
    for (const std::string& frame : SignOnFrames())
        sockets.Deliver(0, frame);
    bot.session.cmdJoin_Click("Word Games", "4");
    const int room = testing_support::JoinRoom(sockets, bot.client, "Word Games");
    if (room == 0) std::abort();

    // A game under way: a topic on the list, an op, short timings.
    game::TopicClass topic;
    topic.SetTopicName("Animals");
    for (const char* word : {"cat,a pet", "giraffe", "new york,big apple, usa", "dog"})
        topic.AddWord(word);
    bot.game.Lists().AddLoadedTopic(topic);
    bot.game.Lists().AddTopicList("animals");
    bot.commands.Ops().Add("boss");
    bot.game.SendPause = 2;
    bot.game.IdleTime = 3;
    bot.game.ScoreLimit = 3;
    bot.game.cmdAutoSendOn_Click();

    std::size_t pos = 0;
    while (pos + 3 <= size) {
        const std::uint8_t kind = data[pos];
        const std::size_t length = std::size_t{data[pos + 1]} << 8 | data[pos + 2];
        pos += 3;
        const std::size_t take = length < size - pos ? length : size - pos;
        const std::string bytes(reinterpret_cast<const char*>(data + pos), take);
        pos += take;
        if (kind < 0x40) {
            sockets.Deliver(kind % 6, bytes);
        } else if (kind < 0x60) {
            const auto zero = bytes.find('\0');
            const std::string sender = zero == std::string::npos ? "Player" : bytes.substr(0, zero);
            const std::string text = zero == std::string::npos ? bytes : bytes.substr(zero + 1);
            sockets.Deliver(room, ChatLineFrame(sender, text));
        } else if (kind < 0x80) {
            sockets.Deliver(room, OccupantsFrame(bytes, kind < 0x70));
        } else if (kind < 0xC0) {
            timers[(kind & 7) % 6]->Tick(((kind >> 3) & 7) + 1);
        } else {
            OperatorAction(bot, kind % 16, bytes, dialogs);
        }
    }
    return 0;
}
