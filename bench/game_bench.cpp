// Shuffle and puzzle costs. The shuffle must grow about tenfold from 100,000
// to 1,000,000 entries (linear), never a hundredfold.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "game/puzzle.h"
#include "game/random.h"
#include "game/word_lists.h"

namespace {

void BM_Shuffle(benchmark::State& state) {
    std::vector<std::string> rows;
    for (long i = 0; i < state.range(0); ++i)
        rows.push_back("entry number " + std::to_string(i));
    game::RandomSource random(1);
    for (auto _ : state) {
        game::ShuffleRows(rows, random);
        benchmark::DoNotOptimize(rows.data());
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_Shuffle)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond)->Complexity();

void BM_ScrambleWord(benchmark::State& state) {
    game::RandomSource random(2);
    for (auto _ : state)
        benchmark::DoNotOptimize(game::ScrambleWord("the quick brown fox", random));
}
BENCHMARK(BM_ScrambleWord);

void BM_BlankWord(benchmark::State& state) {
    game::RandomSource random(3);
    for (auto _ : state)
        benchmark::DoNotOptimize(game::BlankWord("the quick brown fox", random));
}
BENCHMARK(BM_BlankWord);

void BM_HintWord(benchmark::State& state) {
    game::RandomSource random(4);
    for (auto _ : state)
        benchmark::DoNotOptimize(game::HintWord("the quick brown fox", random));
}
BENCHMARK(BM_HintWord);

}  // namespace
