// The server's rate classes for one connection and this side's own account
// of them, so that the client sends no SNAC that would bring a class near
// the level where the server starts dropping SNACs.
//
// Each class keeps a moving average of the time between the SNACs it
// governs: on every send, new = ((window - 1) * old + delta) / window, capped
// at the class's maximum. Below the alert level the server warns; below the
// limit level it drops SNACs until the average is back above the clear
// level; below the disconnect level it ends the connection.
#pragma once

#include <cstdint>
#include <map>
#include <string_view>
#include <utility>
#include <vector>

namespace oscar {

struct RateClass {
    std::uint16_t id = 0;
    std::uint32_t window = 0;
    std::uint32_t clear = 0;
    std::uint32_t alert = 0;
    std::uint32_t limit = 0;
    std::uint32_t disconnect = 0;
    std::uint32_t current = 0;
    std::uint32_t max = 0;
};

class RateLimiter {
  public:
    // The data of 0001/0007 (after the SNAC header). Classes of 30 bytes and
    // of 35 bytes (with the last time and state) are both read. False, and
    // the classes kept as they were, when the data does not hold a whole
    // list of classes.
    bool ReadClasses(std::string_view data, std::int64_t now);
    // The data of 0001/000A: a message code (1 changed, 2 warning, 3 limited,
    // 4 clear) and one class. After a warning or a limit the client keeps at
    // least the clear level between SNACs of that class until it clears.
    void ReadChange(std::string_view data, std::int64_t now);
    void Clear();

    // Milliseconds from `now` until a SNAC of (family, subtype) may go; 0 when
    // it may go now. A SNAC no class governs never waits.
    std::int64_t Wait(std::uint16_t family, std::uint16_t subtype, std::int64_t now) const;
    void Sent(std::uint16_t family, std::uint16_t subtype, std::int64_t now);

    // The class governing (family, subtype), or nullptr; `average` is this
    // side's current account of it.
    const RateClass* ClassOf(std::uint16_t family, std::uint16_t subtype,
                             double* average = nullptr) const;

  private:
    struct State {
        RateClass params;
        double average = 0;
        std::int64_t last = 0;  // when the last SNAC of the class went
        bool warned = false;
    };
    const State* Find(std::uint16_t family, std::uint16_t subtype) const;
    State* Find(std::uint16_t family, std::uint16_t subtype) {
        return const_cast<State*>(std::as_const(*this).Find(family, subtype));
    }

    std::vector<State> classes_;
    std::map<std::uint32_t, std::uint16_t> members_;  // family << 16 | subtype -> class id
};

}  // namespace oscar
