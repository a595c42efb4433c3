// A set of normalized screen names shown as a list: the ops and the
// disallowed participants.
#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "game/string_list.h"

namespace game {

class NameList {
  public:
    bool Contains(const std::string& name) const { return names_.count(name) > 0; }
    bool Empty() const { return names_.empty(); }
    std::size_t Count() const { return names_.size(); }

    // Adds `name` and its row; a name already held adds nothing.
    void Add(const std::string& name);
    // Adds a row for `name` even when it is held already (a list read back
    // from a file shows its duplicates as they stand).
    void AddShowingDuplicate(const std::string& name);
    // Removes `name` and every row equal to it.
    void Remove(const std::string& name);
    // Removes the name that `row` shows and that one row: a duplicate row read
    // from a file stays, as a row without a member behind it.
    void RemoveRow(int row);
    void Clear();

    StringList& Rows() { return rows_; }
    const StringList& Rows() const { return rows_; }
    // The names held, in the order they were added (each once, whatever the
    // rows show).
    const std::vector<std::string>& Members() const { return members_; }

  private:
    void Forget(const std::string& name);

    std::unordered_set<std::string> names_;
    std::vector<std::string> members_;
    StringList rows_;
};

}  // namespace game
