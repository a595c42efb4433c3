// A crowded room through the client and the window's logic.
#include "crowded_room.h"

namespace {

void CrowdedRoom(benchmark::State& state) {
    crowd::Run<crowd::Room>(state);
}
BENCHMARK(CrowdedRoom)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace
