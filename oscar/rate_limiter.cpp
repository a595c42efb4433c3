#include "oscar/rate_limiter.h"

#include <algorithm>
#include <cmath>

#include "oscar/encoding.h"

namespace oscar {

namespace {

constexpr std::size_t kShortClass = 30;  // id, window and six levels
constexpr std::size_t kLongClass = 35;   // also the last time and the state

RateClass ReadClass(std::string_view bytes) {
    const auto dword = [&](std::size_t at) { return ReadDWord(bytes.substr(at)).value_or(0); };
    return {ReadWord(bytes).value_or(0),
            dword(2),
            dword(6),
            dword(10),
            dword(14),
            dword(18),
            dword(22),
            dword(26)};
}

// The level the client keeps its average above: halfway from the alert
// level to the clear level, so that the server, which times the SNACs as
// they arrive rather than as they left, still never sees the alert level.
double Floor(const RateClass& c) {
    const double floor = c.clear > c.alert ? c.alert + (c.clear - c.alert) / 2.0 : c.alert;
    return std::min<double>(floor, c.max);
}

bool Governs(const RateClass& c) {
    return c.window > 0 && c.max > 0;
}

}  // namespace

bool RateLimiter::ReadClasses(std::string_view data, std::int64_t now) {
    const auto count = ReadWord(data);
    if (!count) return false;
    for (const std::size_t size : {kLongClass, kShortClass}) {
        std::size_t pos = 2 + *count * size;
        if (pos > data.size()) continue;
        // The members: per class its id, a count and that many
        // (family, subtype) pairs; the size that reads them to the very end
        // of the data is the one the server used.
        std::map<std::uint32_t, std::uint16_t> members;
        bool whole = true;
        for (int group = 0; group < *count && pos < data.size() && whole; ++group) {
            const auto id = ReadWord(data.substr(pos));
            const auto pairs = ReadWord(data.substr(std::min(pos + 2, data.size())));
            whole = id && pairs && pos + 4 + *pairs * 4u <= data.size();
            if (!whole) break;
            for (std::size_t i = 0; i < *pairs; ++i) {
                members[*ReadDWord(data.substr(pos + 4 + i * 4))] = *id;
            }
            pos += 4 + *pairs * 4u;
        }
        if (!whole || pos != data.size()) continue;
        classes_.clear();
        for (std::size_t i = 0; i < *count; ++i) {
            State state;
            state.params = ReadClass(data.substr(2 + i * size, size));
            state.average = std::min(state.params.current, state.params.max);
            state.last = now;
            classes_.push_back(state);
        }
        members_ = std::move(members);
        return true;
    }
    return false;
}

void RateLimiter::ReadChange(std::string_view data, std::int64_t now) {
    const auto code = ReadWord(data);
    if (!code || data.size() < 2 + kShortClass) return;
    const RateClass changed = ReadClass(data.substr(2));
    for (State& state : classes_) {
        if (state.params.id != changed.id) continue;
        state.params = changed;
        state.average = std::min(changed.current, changed.max);
        state.last = now;
        if (*code == 2 || *code == 3) state.warned = true;
        if (*code == 4) state.warned = false;
    }
}

void RateLimiter::Clear() {
    classes_.clear();
    members_.clear();
}

const RateLimiter::State* RateLimiter::Find(std::uint16_t family, std::uint16_t subtype) const {
    const auto member = members_.find(static_cast<std::uint32_t>(family) << 16 | subtype);
    if (member == members_.end()) return nullptr;
    for (const State& state : classes_) {
        if (state.params.id == member->second && Governs(state.params)) return &state;
    }
    return nullptr;
}

const RateClass* RateLimiter::ClassOf(std::uint16_t family, std::uint16_t subtype,
                                      double* average) const {
    const State* state = Find(family, subtype);
    if (state && average) *average = state->average;
    return state ? &state->params : nullptr;
}

std::int64_t RateLimiter::Wait(std::uint16_t family, std::uint16_t subtype,
                               std::int64_t now) const {
    const State* state = Find(family, subtype);
    if (!state) return 0;
    const RateClass& c = state->params;
    const double window = c.window;
    const double floor = Floor(c);
    // The gap after which the new average is still at the floor.
    double gap = window * floor - (window - 1) * state->average;
    // Already below it (the server said so): gaps of the clear level raise
    // the average with every SNAC instead of one very long pause.
    gap = std::min(gap, std::max<double>(c.clear, floor));
    if (state->warned) gap = std::max<double>(gap, c.clear);
    const double wait = std::ceil(gap) - static_cast<double>(now - state->last);
    return wait > 0 ? static_cast<std::int64_t>(wait) : 0;
}

void RateLimiter::Sent(std::uint16_t family, std::uint16_t subtype, std::int64_t now) {
    State* state = Find(family, subtype);
    if (!state) return;
    const RateClass& c = state->params;
    const double delta = static_cast<double>(std::max<std::int64_t>(0, now - state->last));
    state->average = std::min<double>(
        c.max, ((c.window - 1) * state->average + delta) / static_cast<double>(c.window));
    state->last = now;
    if (state->warned && state->average >= c.clear) state->warned = false;
}

}  // namespace oscar
