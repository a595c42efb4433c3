#include "game/name_list.h"

namespace game {

void NameList::Add(const std::string& name) {
    if (!names_.insert(name).second) return;
    rows_.Append(name);
}

void NameList::AddShowingDuplicate(const std::string& name) {
    names_.insert(name);
    rows_.Append(name);
}

void NameList::Remove(const std::string& name) {
    names_.erase(name);
    rows_.RemoveIf([&name](const std::string& row) { return row == name; });
}

void NameList::Clear() {
    names_.clear();
    rows_.Clear();
}

}  // namespace game
