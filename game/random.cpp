#include "game/random.h"

#include <chrono>
#include <cmath>

namespace game {

RandomSource::RandomSource()
    : engine_(static_cast<std::uint64_t>(
          std::chrono::high_resolution_clock::now().time_since_epoch().count())) {}

RandomSource::RandomSource(std::uint64_t seed) : engine_(seed) {}

long long RandomSource::RandomNumber(long long upper, long long lower) {
    // 53 random bits give every double in [0, 1) on a 2^-53 grid.
    const double r = static_cast<double>(engine_() >> 11) * 0x1.0p-53;
    const auto drawn = static_cast<long long>(
        std::floor(static_cast<double>(upper - lower + 1) * r + static_cast<double>(lower)));
    // Rounding of a product just below 1 must not step past the upper bound.
    return upper >= lower && drawn > upper ? upper : drawn;
}

}  // namespace game
