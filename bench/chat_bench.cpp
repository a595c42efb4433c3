// The cost of one ordinary chat line (not an answer, not a command) through
// the whole chat handler, with 100 ops, 100 disallowed names, 100 players and
// a puzzle pending. It must stay at a few microseconds and must not grow with
// the console's length.
#include <benchmark/benchmark.h>

#include <functional>
#include <string>

#include "game/chat_commands.h"
#include "game/game.h"

namespace {

class NullDialogs : public game::OperatorDialogs {
  public:
    void ShowMessage(const std::string&, const std::string&, game::MessageKind) override {}
    bool AskYesNo(const std::string&, const std::string&) override { return false; }
    std::string Prompt(const std::string&, const std::string&, const std::string&) override {
        return {};
    }
    std::optional<std::string> OpenFile(const game::FileDialogRequest&) override { return {}; }
    std::optional<std::string> SaveFile(const game::FileDialogRequest&) override { return {}; }
};

class NullChat : public game::ChatSender {
  public:
    void SendChat(int, const std::string& message) override { bytes += message.size(); }
    int FirstRoomIndex() const override { return 1; }
    std::size_t bytes = 0;
};

class IdleTimer : public game::Timer {
  public:
    void SetEnabled(bool enabled) override { enabled_ = enabled; }
    bool IsEnabled() const override { return enabled_; }
    void SetTick(std::function<void()>) override {}

  private:
    bool enabled_ = false;
};

void BM_ChatMessage(benchmark::State& state) {
    NullDialogs dialogs;
    NullChat chat;
    game::RandomSource random(1);
    game::StringList errors;
    IdleTimer msgPause, idle, topics, ccoms, ccom2;
    game::Console console;
    game::Game game({dialogs, chat, random, errors, msgPause, idle, topics, {}});
    game::ChatCommands commands(game, console, ccoms, ccom2);

    for (int i = 0; i < 100; ++i) {
        commands.Ops().Add("op" + std::to_string(i));
        commands.Disallows().Add("banned" + std::to_string(i));
        game.Scores().AddPlayer("player" + std::to_string(i));
    }
    game.WordSend("giraffe,tall animal");

    const std::string line =
        "<html><body><font face=\"Arial\" color=\"#000000\">is it &quot;grafie&quot;? no "
        "idea &amp; no clue</font></body></html>";
    for (auto _ : state) {
        commands.ChatMessage(2, "Some Player", line);
        benchmark::DoNotOptimize(console.Text().data());
    }
    state.counters["console_bytes"] = static_cast<double>(console.Text().size());
}
BENCHMARK(BM_ChatMessage);

}  // namespace
