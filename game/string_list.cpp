#include "game/string_list.h"

#include <algorithm>

namespace game {

void StringList::Select(int row) {
    const int selected = row >= 0 && row < Count() ? row : -1;
    if (selected == selected_) return;
    selected_ = selected;
    if (observer_) observer_->SelectionChanged(selected_);
}

void StringList::Append(std::string row) {
    const int at = Count();
    if (observer_) observer_->RowsAboutToBeInserted(at, at);
    rows_.push_back(std::move(row));
    if (observer_) observer_->RowsInserted();
}

void StringList::AppendAll(const std::vector<std::string>& rows) {
    if (rows.empty()) return;
    const int at = Count();
    if (observer_) observer_->RowsAboutToBeInserted(at, at + static_cast<int>(rows.size()) - 1);
    rows_.insert(rows_.end(), rows.begin(), rows.end());
    if (observer_) observer_->RowsInserted();
}

void StringList::Replace(int row, std::string text) {
    if (row < 0 || row >= Count()) return;
    rows_[static_cast<std::size_t>(row)] = std::move(text);
    if (observer_) observer_->RowChanged(row);
}

void StringList::RemoveAt(int row) {
    if (row < 0 || row >= Count()) return;
    if (observer_) observer_->RowsAboutToBeRemoved(row, row);
    rows_.erase(rows_.begin() + row);
    if (selected_ == row) {
        selected_ = -1;
    } else if (selected_ > row) {
        --selected_;
    }
    if (observer_) observer_->RowsRemoved();
}

void StringList::RemoveIf(const std::function<bool(const std::string&)>& match) {
    std::vector<std::string> kept;
    kept.reserve(rows_.size());
    int selected = -1;
    for (int row = 0; row < Count(); ++row) {
        std::string& text = rows_[static_cast<std::size_t>(row)];
        if (match(text)) continue;
        if (row == selected_) selected = static_cast<int>(kept.size());
        kept.push_back(std::move(text));
    }
    if (kept.size() == rows_.size()) {
        rows_ = std::move(kept);
        return;
    }
    if (observer_) observer_->AboutToReset();
    rows_ = std::move(kept);
    selected_ = selected;
    if (observer_) observer_->WasReset();
}

void StringList::Assign(std::vector<std::string> rows) {
    if (observer_) observer_->AboutToReset();
    rows_ = std::move(rows);
    selected_ = -1;
    if (observer_) observer_->WasReset();
}

std::vector<std::string> StringList::TakeAll() {
    std::vector<std::string> rows;
    if (observer_) observer_->AboutToReset();
    rows.swap(rows_);
    selected_ = -1;
    if (observer_) observer_->WasReset();
    return rows;
}

void StringList::Clear() {
    TakeAll();
}

}  // namespace game
