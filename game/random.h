// The one source of randomness of the game: shuffles, scrambles, blanks,
// hints, mixed-mode picks and random topics all draw from it.
#pragma once

#include <cstdint>
#include <random>

namespace game {

class RandomSource {
  public:
    // Seeded from the clock, for real play.
    RandomSource();
    // Seeded with a fixed value, so that a test sees the same draws each run.
    explicit RandomSource(std::uint64_t seed);

    // A uniform whole number from `lower` to `upper` inclusive, computed as
    // Int((upper - lower + 1) * r + lower) with r uniform in [0, 1).
    // Callers pass (count, 1) for a 1-based position.
    long long RandomNumber(long long upper, long long lower);

  private:
    std::mt19937_64 engine_;
};

}  // namespace game
