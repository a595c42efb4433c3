#include "game/name_list.h"

#include <algorithm>

namespace game {

void NameList::Add(const std::string& name) {
    if (!names_.insert(name).second) return;
    members_.push_back(name);
    rows_.Append(name);
}

void NameList::AddShowingDuplicate(const std::string& name) {
    if (names_.insert(name).second) members_.push_back(name);
    rows_.Append(name);
}

void NameList::Forget(const std::string& name) {
    if (names_.erase(name) == 0) return;
    members_.erase(std::find(members_.begin(), members_.end(), name));
}

void NameList::Remove(const std::string& name) {
    Forget(name);
    rows_.RemoveIf([&name](const std::string& row) { return row == name; });
}

void NameList::RemoveRow(int row) {
    if (row < 0 || row >= rows_.Count()) return;
    Forget(rows_.At(row));
    rows_.RemoveAt(row);
}

void NameList::Clear() {
    names_.clear();
    members_.clear();
    rows_.Clear();
}

}  // namespace game
