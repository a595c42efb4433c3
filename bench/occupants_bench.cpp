// A crowded room through the client and the window's logic: 40,000 people
// arrive, then all leave in a random order, each report a server frame of
// up to 3,000 names (about what one 64 KB occupants packet holds). The time
// is that of the whole list; "stall_ms" is the longest single frame, the
// longest the window would not answer.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "oscar/encoding.h"
#include "session/bot.h"
#include "support/fake_dialogs.h"
#include "support/fake_sockets.h"
#include "support/fake_timer.h"
#include "support/frames.h"

namespace {

using namespace testing_support;

constexpr int kPeople = 40'000;
constexpr int kPerFrame = 3'000;

std::vector<std::string> OccupantFrames(const std::vector<std::string>& names, bool joined) {
    std::vector<std::string> frames;
    for (std::size_t first = 0; first < names.size(); first += kPerFrame) {
        std::string body =
            oscar::HexToBytes(joined ? "000E0003000000000000" : "000E0004000000000000");
        for (std::size_t i = first; i < std::min(names.size(), first + kPerFrame); ++i)
            body += UserRecord(names[i]);
        frames.push_back(Frame(2, body));
    }
    return frames;
}

struct Room {
    FakeDialogs dialogs;
    FakeSocketLayer sockets;
    FakeTimer timers[6];
    session::Bot bot{{sockets,
                      timers[0],
                      timers[1],
                      timers[2],
                      timers[3],
                      timers[4],
                      timers[5],
                      dialogs,
                      {},
                      {},
                      "/nonexistent"}};
    Room() { EnterFakeRoom(sockets, bot.client); }

    // Delivers the frames; gives the longest one's time in milliseconds.
    double Deliver(const std::vector<std::string>& frames) {
        double longest = 0;
        for (const std::string& frame : frames) {
            const auto start = std::chrono::steady_clock::now();
            sockets.Deliver(2, frame);
            const std::chrono::duration<double, std::milli> took =
                std::chrono::steady_clock::now() - start;
            longest = std::max(longest, took.count());
        }
        return longest;
    }
};

void CrowdedRoom(benchmark::State& state) {
    const bool leaving = state.range(0) == 1;
    std::vector<std::string> names;
    for (int i = 0; i < kPeople; ++i)
        names.push_back("Player " + std::to_string(i));
    const auto arrivals = OccupantFrames(names, true);
    std::shuffle(names.begin(), names.end(), std::mt19937(1));
    const auto departures = OccupantFrames(names, false);

    double stall = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto room = std::make_unique<Room>();
        if (leaving) room->Deliver(arrivals);
        state.ResumeTiming();
        stall = std::max(stall, room->Deliver(leaving ? departures : arrivals));
        const std::string expected = leaving ? "0 People Here" : "40000 People Here";
        if (room->bot.session.lblPeopleCount() != expected) {
            state.SkipWithError("the room did not fill or empty");
            break;
        }
        state.PauseTiming();
        room.reset();
        state.ResumeTiming();
    }
    state.counters["stall_ms"] = stall;
    state.SetLabel(leaving ? "40,000 leave" : "40,000 arrive");
}
BENCHMARK(CrowdedRoom)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace
