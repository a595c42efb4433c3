// The crowded room of occupants_bench.cpp with the main window on top, its
// Console panel in view: the people list's view, the transcript and the
// status labels follow every name, and the event loop runs after each frame
// as it would between two reads. "stall_ms" is the longest frame with the
// events it left behind.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QPushButton>
#include <algorithm>
#include <chrono>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "oscar/encoding.h"
#include "panel/frm_main.h"
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

struct Window {
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
    FrmMain window{bot};
    Window() {
        EnterFakeRoom(sockets, bot.client);
        window.show();
        window.chkTab[9]->click();  // the Console panel
        QApplication::processEvents();
    }

    double Deliver(const std::vector<std::string>& frames) {
        double longest = 0;
        for (const std::string& frame : frames) {
            const auto start = std::chrono::steady_clock::now();
            sockets.Deliver(2, frame);
            QApplication::processEvents();
            const std::chrono::duration<double, std::milli> took =
                std::chrono::steady_clock::now() - start;
            longest = std::max(longest, took.count());
        }
        return longest;
    }
};

void CrowdedRoomInTheWindow(benchmark::State& state) {
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
        auto window = std::make_unique<Window>();
        if (leaving) window->Deliver(arrivals);
        state.ResumeTiming();
        stall = std::max(stall, window->Deliver(leaving ? departures : arrivals));
        state.PauseTiming();
        const std::string expected = leaving ? "0 People Here" : "40000 People Here";
        if (window->bot.session.lblPeopleCount() != expected) {
            state.SkipWithError("the room did not fill or empty");
            break;
        }
        window.reset();
        state.ResumeTiming();
    }
    state.counters["stall_ms"] = stall;
    state.SetLabel(leaving ? "40,000 leave" : "40,000 arrive");
}
BENCHMARK(CrowdedRoomInTheWindow)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->Iterations(2);

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM",
            qgetenv("QT_QPA_PLATFORM").isEmpty() ? "offscreen" : qgetenv("QT_QPA_PLATFORM"));
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
