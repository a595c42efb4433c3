// The standings of a long history (1,000,000 credited answers from 10,000
// players over the last ninety days) for each period, and what recording an
// answer costs on its way from the player's line to the credit line: the
// in-memory record and the SQLite file's transaction together.
#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QTemporaryDir>
#include <random>

#include "history/history.h"
#include "historydb/sql_history.h"

namespace {

constexpr history::Millis kNow = 1'760'000'000'000;  // a fixed "now"
constexpr history::Millis kDay = 86'400'000;

history::History& LongHistory() {
    static history::Millis now = 0;
    static history::History record{[] { return now; }};
    if (!record.Puzzles().empty()) return record;
    std::mt19937 random(42);
    std::uniform_int_distribution<int> player(0, 9999);
    std::uniform_int_distribution<int> took(800, 20000);
    const int answers = 1'000'000;
    const history::Millis step = 90 * kDay / answers;
    const char* topics[] = {"animals", "colours", "countries", "food"};
    for (int i = 0; i < answers; ++i) {
        now = kNow - 90 * kDay + i * step;
        if (i % 20 == 0) record.GameEnded({});
        record.PuzzlePosted("word" + std::to_string(i % 500), topics[(i / 20) % 4], 0, 15);
        now += took(random);
        record.AnswerCredited("Player " + std::to_string(player(random)));
    }
    return record;
}

void BM_Standings(benchmark::State& state) {
    const history::History& record = LongHistory();
    const auto period = static_cast<history::Period>(state.range(0));
    const history::Range range = history::PeriodRange(period, kNow);
    std::size_t rows = 0;
    for (auto _ : state) {
        auto standings = record.Standings(range);
        rows = standings.size();
        benchmark::DoNotOptimize(standings.data());
    }
    state.counters["players"] = static_cast<double>(rows);
}
BENCHMARK(BM_Standings)
    ->ArgName("period")
    ->DenseRange(0, 3)  // today, this week, this month, all time
    ->Unit(benchmark::kMillisecond);

// Per iteration: one puzzle posted (untimed), then its answer credited and
// committed to a real file.
void BM_RecordAnswer(benchmark::State& state) {
    QTemporaryDir dir;
    history::Millis now = kNow;
    history::History record{[&now] { return now; }};
    QString error;
    auto file = SqlHistory::Open(dir.filePath("bench.sqlite"), record, error);
    if (!file) {
        state.SkipWithError(error.toStdString().c_str());
        return;
    }
    int i = 0;
    for (auto _ : state) {
        state.PauseTiming();
        record.PuzzlePosted("giraffe", "animals", 0, 15);
        now += 1500;
        state.ResumeTiming();
        record.AnswerCredited("Player " + std::to_string(i++ % 100));
    }
}
BENCHMARK(BM_RecordAnswer)->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
