#include "session/people_list.h"

namespace session {

void PeopleList::Select(int row) {
    const int selected = row >= 0 && row < Count() ? row : -1;
    if (selected == selected_) return;
    selected_ = selected;
    if (observer_) observer_->SelectionChanged(selected_);
}

void PeopleList::Assign(const oscar::NameSequence& names) {
    if (observer_) observer_->AboutToReset();
    names_ = names;
    selected_ = -1;
    if (observer_) observer_->WasReset();
}

void PeopleList::Add(const std::string& name) {
    if (names_.contains(name)) return;
    const int at = Count();
    if (observer_) observer_->RowsAboutToBeInserted(at, at);
    names_.push_back(name);
    if (observer_) observer_->RowsInserted();
}

void PeopleList::Remove(const std::string& name) {
    const auto row = names_.RowOf(name);
    if (!row) return;
    const int at = static_cast<int>(*row);
    if (observer_) observer_->RowsAboutToBeRemoved(at, at);
    names_.erase(name);
    if (selected_ == at) {
        selected_ = -1;
    } else if (selected_ > at) {
        --selected_;
    }
    if (observer_) observer_->RowsRemoved();
}

}  // namespace session
