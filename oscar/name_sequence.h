// The people in a chat room: names in the order they came, each at most
// once. Rooms hold tens of thousands of people, and every arrival and
// departure looks a name up, takes it out in the middle, or asks for its
// row, so each of these costs O(log n) instead of a walk over the list.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace oscar {

class NameSequence {
  public:
    NameSequence();

    // Every new sequence gets a serial of its own; a copy shares it, and so
    // does the copy after the same changes. So a copy can tell whether it
    // still follows this sequence or one that merely sits in its place.
    std::uint64_t Serial() const { return serial_; }

    std::size_t size() const { return count_; }
    bool empty() const { return count_ == 0; }
    bool contains(const std::string& name) const { return slotOf_.count(name) > 0; }

    // Appends `name` unless it is held already; true when appended.
    bool push_back(const std::string& name);
    // Takes `name` out; gives the row it had, nullopt when it was not held.
    std::optional<std::size_t> erase(const std::string& name);
    // The name at `row` (0-based, below size()).
    const std::string& operator[](std::size_t row) const;
    std::optional<std::size_t> RowOf(const std::string& name) const;
    // Every name, in order.
    std::vector<std::string> Names() const;
    void clear();

  private:
    // Live names among the first `slots` slots.
    std::size_t LiveBefore(std::size_t slots) const;
    void Compact();

    // Names stay in their slot until the next compaction; a departed one
    // leaves a dead slot. tree_ is a Fenwick tree over the live flags
    // (1-based, tree_[0] unused), which turns rows into slots and back.
    std::vector<std::string> slots_;
    std::vector<std::uint8_t> live_;
    std::vector<std::size_t> tree_ = {0};
    std::unordered_map<std::string, std::size_t> slotOf_;
    std::size_t count_ = 0;
    std::uint64_t serial_;
};

}  // namespace oscar
