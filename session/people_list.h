// The "People Here" list the window shows: the people of one room, kept in
// step with the room one arrival or departure at a time (never rebuilt for
// one name), and told to its view the same way.
#pragma once

#include <string>
#include <vector>

#include "game/string_list.h"
#include "oscar/name_sequence.h"

namespace session {

class PeopleList final : public game::ListSource {
  public:
    int Count() const override { return static_cast<int>(names_.size()); }
    const std::string& At(int row) const override { return names_[static_cast<std::size_t>(row)]; }
    int Selected() const override { return selected_; }
    void Select(int row) override;
    void SetObserver(game::ListObserver* observer) override { observer_ = observer; }

    std::vector<std::string> Rows() const { return names_.Names(); }
    // Whether the list shows `names` as it stands: assigned from it, and
    // changed in step with it since.
    bool Shows(const oscar::NameSequence& names) const {
        return names_.Serial() == names.Serial() && names_.size() == names.size();
    }
    // The room's list shown whole, none selected.
    void Assign(const oscar::NameSequence& names);
    // One more name at the end; one held already changes nothing.
    void Add(const std::string& name);
    // Takes a name out; rows after it move up, and so does the selection.
    void Remove(const std::string& name);
    void Clear() { Assign({}); }

  private:
    oscar::NameSequence names_;
    int selected_ = -1;
    game::ListObserver* observer_ = nullptr;
};

}  // namespace session
