#include "game/string_list.h"

#include <gtest/gtest.h>

namespace game {
namespace {

// Records notifications as short strings, so a test reads like the sequence
// a view receives.
class RecordingObserver : public ListObserver {
  public:
    void RowsAboutToBeInserted(int first, int last) override { Log("insert", first, last); }
    void RowsInserted() override { log.push_back("inserted"); }
    void RowsAboutToBeRemoved(int first, int last) override { Log("remove", first, last); }
    void RowsRemoved() override { log.push_back("removed"); }
    void AboutToReset() override { log.push_back("reset"); }
    void WasReset() override { log.push_back("was reset"); }
    void RowChanged(int row) override { Log("changed", row, row); }
    void SelectionChanged(int row) override { Log("selected", row, row); }
    std::vector<std::string> log;

  private:
    void Log(const char* what, int a, int b) {
        log.push_back(std::string(what) + " " + std::to_string(a) + "-" + std::to_string(b));
    }
};

TEST(StringList, TellsItsObserverBeforeAndAfterEachChange) {
    StringList list;
    RecordingObserver observer;
    list.SetObserver(&observer);

    list.Append("a");
    list.AppendAll({"b", "c"});
    list.AppendAll({});
    list.Replace(1, "B");
    list.Replace(9, "nothing");
    list.Select(2);
    list.Select(2);
    list.RemoveAt(0);
    list.Clear();

    const std::vector<std::string> expected = {
        "insert 0-0",   "inserted",   "insert 1-2", "inserted", "changed 1-1",
        "selected 2-2", "remove 0-0", "removed",    "reset",    "was reset"};
    EXPECT_EQ(observer.log, expected);
    EXPECT_TRUE(list.Empty());
    EXPECT_EQ(list.Selected(), -1);
}

TEST(StringList, SelectionFollowsItsRowAndIsLostWithIt) {
    StringList list;
    list.Assign({"a", "b", "c", "d"});
    list.Select(2);
    list.RemoveAt(0);
    EXPECT_EQ(list.Selected(), 1);
    EXPECT_EQ(list.At(list.Selected()), "c");
    list.RemoveAt(2);
    EXPECT_EQ(list.Selected(), 1);
    list.RemoveAt(1);
    EXPECT_EQ(list.Selected(), -1);

    list.Assign({"x", "y", "x", "z"});
    list.Select(3);
    list.RemoveIf([](const std::string& row) { return row == "x"; });
    EXPECT_EQ(list.Rows(), (std::vector<std::string>{"y", "z"}));
    EXPECT_EQ(list.Selected(), 1);

    list.Select(5);
    EXPECT_EQ(list.Selected(), -1);
}

}  // namespace
}  // namespace game
