// A crowded room for the occupant benchmarks: 40,000 people arrive, then all
// leave in a random order, each report a server frame of up to 3,000 names
// (about what one 64 KB occupants packet holds). The time is that of the
// whole list; "stall_ms" is the longest single frame, the longest the window
// would not answer.
#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <functional>
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

namespace crowd {

constexpr int kPeople = 40'000;
constexpr int kPerFrame = 3'000;

inline std::vector<std::string> OccupantFrames(const std::vector<std::string>& names, bool joined) {
    std::vector<std::string> frames;
    for (std::size_t first = 0; first < names.size(); first += kPerFrame) {
        std::string body =
            oscar::HexToBytes(joined ? "000E0003000000000000" : "000E0004000000000000");
        for (std::size_t i = first; i < std::min(names.size(), first + kPerFrame); ++i)
            body += testing_support::UserRecord(names[i]);
        frames.push_back(testing_support::Frame(2, body));
    }
    return frames;
}

// The bot in a room, on fake sockets and timers.
struct Room {
    testing_support::FakeDialogs dialogs;
    testing_support::FakeSocketLayer sockets;
    testing_support::FakeTimer timers[6];
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
    std::function<void()> afterFrame;  // what runs between two reads

    Room() { testing_support::EnterFakeRoom(sockets, bot.client); }

    // Delivers the frames; gives the longest one's time in milliseconds.
    double Deliver(const std::vector<std::string>& frames) {
        double longest = 0;
        for (const std::string& frame : frames) {
            const auto start = std::chrono::steady_clock::now();
            sockets.Deliver(2, frame);
            if (afterFrame) afterFrame();
            const std::chrono::duration<double, std::milli> took =
                std::chrono::steady_clock::now() - start;
            longest = std::max(longest, took.count());
        }
        return longest;
    }
};

// range(0): 0 for the arrivals, 1 for the departures; a fresh `R` (a Room)
// each iteration.
template <typename R>
void Run(benchmark::State& state) {
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
        auto room = std::make_unique<R>();
        if (leaving) room->Deliver(arrivals);
        state.ResumeTiming();
        stall = std::max(stall, room->Deliver(leaving ? departures : arrivals));
        state.PauseTiming();
        const std::string expected = leaving ? "0 People Here" : "40000 People Here";
        if (room->bot.session.lblPeopleCount() != expected) {
            state.SkipWithError("the room did not fill or empty");
            break;
        }
        room.reset();
        state.ResumeTiming();
    }
    state.counters["stall_ms"] = stall;
    state.SetLabel(leaving ? "40,000 leave" : "40,000 arrive");
}

}  // namespace crowd
