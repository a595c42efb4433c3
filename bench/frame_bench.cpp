// Cutting a connection's byte stream into FLAP frames of chat size (about
// 200 bytes) arriving in reads of different sizes, and in single bursts of
// 1 MB and 10 MB: the 10 MB burst must cost about ten times the 1 MB one.
#include <benchmark/benchmark.h>

#include <string>

#include "oscar/encoding.h"
#include "oscar/frame_cutter.h"

namespace {

std::string Stream(std::size_t bytes) {
    const std::string payload(194, 'c');
    const std::string frame = "*" + oscar::MakeByte(2) + oscar::Word(1) +
                              oscar::Word(static_cast<std::uint16_t>(payload.size())) + payload;
    std::string stream;
    stream.reserve(bytes + frame.size());
    while (stream.size() < bytes)
        stream += frame;
    return stream;
}

// Feeds `stream` in reads of `read` bytes, taking every whole frame after
// each read, as the client does.
void CutInReads(benchmark::State& state, std::size_t streamBytes, std::size_t read) {
    const std::string stream = Stream(streamBytes);
    std::int64_t frames = 0;
    for (auto _ : state) {
        oscar::FrameCutter cutter;
        for (std::size_t pos = 0; pos < stream.size(); pos += read) {
            cutter.Append(std::string_view(stream).substr(pos, read));
            while (auto frame = cutter.Next()) {
                benchmark::DoNotOptimize(frame->data());
                ++frames;
            }
        }
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(stream.size()));
    state.SetItemsProcessed(frames);
}

void BM_CutReadsOf1Byte(benchmark::State& state) {
    CutInReads(state, 1 << 20, 1);
}
void BM_CutReadsOf1KB(benchmark::State& state) {
    CutInReads(state, 1 << 20, 1024);
}
void BM_CutReadsOf64KB(benchmark::State& state) {
    CutInReads(state, 1 << 20, 65536);
}
void BM_CutBurst(benchmark::State& state) {
    const auto bytes = static_cast<std::size_t>(state.range(0));
    CutInReads(state, bytes, bytes);
}

BENCHMARK(BM_CutReadsOf1Byte)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CutReadsOf1KB)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CutReadsOf64KB)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CutBurst)->Arg(1 << 20)->Arg(10 << 20)->Unit(benchmark::kMillisecond);

}  // namespace
