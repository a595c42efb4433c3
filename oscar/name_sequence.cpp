#include "oscar/name_sequence.h"

#include <atomic>

namespace oscar {

namespace {
std::size_t LowBit(std::size_t i) {
    return i & (~i + 1);
}
std::atomic<std::uint64_t> lastSerial{0};
}  // namespace

NameSequence::NameSequence() : serial_(++lastSerial) {}

std::size_t NameSequence::LiveBefore(std::size_t slots) const {
    std::size_t sum = 0;
    for (std::size_t i = slots; i > 0; i -= LowBit(i))
        sum += tree_[i];
    return sum;
}

bool NameSequence::push_back(const std::string& name) {
    const std::size_t slot = slots_.size();
    if (!slotOf_.emplace(name, slot).second) return false;
    slots_.push_back(name);
    live_.push_back(1);
    // The new node covers the slots (i - LowBit(i), i], itself included.
    const std::size_t i = slot + 1;
    tree_.push_back(1 + LiveBefore(i - 1) - LiveBefore(i - LowBit(i)));
    ++count_;
    return true;
}

std::optional<std::size_t> NameSequence::erase(const std::string& name) {
    const auto found = slotOf_.find(name);
    if (found == slotOf_.end()) return std::nullopt;
    const std::size_t slot = found->second;
    slotOf_.erase(found);
    const std::size_t row = LiveBefore(slot);
    live_[slot] = 0;
    std::string().swap(slots_[slot]);
    for (std::size_t i = slot + 1; i < tree_.size(); i += LowBit(i))
        --tree_[i];
    --count_;
    // Dead slots are dropped once they outnumber the live ones, so the
    // work of a compaction is paid for by the departures before it.
    if (slots_.size() >= 64 && count_ * 2 < slots_.size()) Compact();
    return row;
}

const std::string& NameSequence::operator[](std::size_t row) const {
    // The slot holding the (row + 1)-th live name: walk down the tree.
    std::size_t slot = 0, left = row + 1, step = 1;
    while (step * 2 < tree_.size())
        step *= 2;
    for (; step > 0; step /= 2) {
        if (slot + step < tree_.size() && tree_[slot + step] < left) {
            slot += step;
            left -= tree_[slot];
        }
    }
    return slots_[slot];
}

std::optional<std::size_t> NameSequence::RowOf(const std::string& name) const {
    const auto found = slotOf_.find(name);
    if (found == slotOf_.end()) return std::nullopt;
    return LiveBefore(found->second);
}

std::vector<std::string> NameSequence::Names() const {
    std::vector<std::string> names;
    names.reserve(count_);
    for (std::size_t slot = 0; slot < slots_.size(); ++slot) {
        if (live_[slot]) names.push_back(slots_[slot]);
    }
    return names;
}

void NameSequence::clear() {
    *this = NameSequence();
}

void NameSequence::Compact() {
    std::vector<std::string> names;
    names.reserve(count_);
    for (std::size_t slot = 0; slot < slots_.size(); ++slot) {
        if (live_[slot]) names.push_back(std::move(slots_[slot]));
    }
    slots_ = std::move(names);
    live_.assign(slots_.size(), 1);
    tree_.assign(slots_.size() + 1, 0);
    for (std::size_t i = 1; i < tree_.size(); ++i) {
        ++tree_[i];
        if (const std::size_t parent = i + LowBit(i); parent < tree_.size())
            tree_[parent] += tree_[i];
        slotOf_[slots_[i - 1]] = i - 1;
    }
}

}  // namespace oscar
