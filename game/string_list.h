// A list of text rows with an optional selected row: the model behind every
// list of the window (loaded topics, scramble list, players, ops, disallows,
// errors). The window shows it through a view; the game changes it only here,
// so a list and what it shows never drift apart.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace game {

// Told about every change, before and after, the way a view needs it.
class ListObserver {
  public:
    virtual ~ListObserver() = default;
    virtual void RowsAboutToBeInserted(int /*first*/, int /*last*/) {}
    virtual void RowsInserted() {}
    virtual void RowsAboutToBeRemoved(int /*first*/, int /*last*/) {}
    virtual void RowsRemoved() {}
    virtual void AboutToReset() {}
    virtual void WasReset() {}
    virtual void RowChanged(int /*row*/) {}
    virtual void SelectionChanged(int /*row*/) {}
};

// What a view needs of a list: its rows, the selected row, and news of
// every change.
class ListSource {
  public:
    virtual ~ListSource() = default;
    virtual int Count() const = 0;
    virtual const std::string& At(int row) const = 0;
    // The selected row, or -1 when none is.
    virtual int Selected() const = 0;
    // Selects `row`; anything outside the rows selects none.
    virtual void Select(int row) = 0;
    // At most one observer, usually the window's list model.
    virtual void SetObserver(ListObserver* observer) = 0;
};

class StringList final : public ListSource {
  public:
    int Count() const override { return static_cast<int>(rows_.size()); }
    bool Empty() const { return rows_.empty(); }
    const std::string& At(int row) const override { return rows_[static_cast<std::size_t>(row)]; }
    const std::vector<std::string>& Rows() const { return rows_; }

    int Selected() const override { return selected_; }
    void Select(int row) override;

    void Append(std::string row);
    void AppendAll(const std::vector<std::string>& rows);
    // Replaces the text of `row`; does nothing outside the rows.
    void Replace(int row, std::string text);
    // Removes `row`; does nothing outside the rows. Rows after it move up,
    // and so does the selection; removing the selected row selects none.
    void RemoveAt(int row);
    // Removes every row for which `match` is true, in one pass.
    void RemoveIf(const std::function<bool(const std::string&)>& match);
    // Replaces every row and selects none.
    void Assign(std::vector<std::string> rows);
    // Takes every row out, leaving the list empty with none selected.
    std::vector<std::string> TakeAll();
    void Clear();

    void SetObserver(ListObserver* observer) override { observer_ = observer; }

  private:
    std::vector<std::string> rows_;
    int selected_ = -1;
    ListObserver* observer_ = nullptr;
};

}  // namespace game
