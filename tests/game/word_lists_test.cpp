// The lists of the game: the row list under every view, the loaded topics
// and the scramble list.
#include "game/word_lists.h"

#include <gtest/gtest.h>

#include <map>

#include "support/fake_dialogs.h"

namespace game {
namespace {

using Lines = std::vector<std::string>;

class WordListsTest : public ::testing::Test {
  protected:
    void Load(const std::string& name, Lines words) {
        TopicClass topic;
        topic.SetTopicName(name);
        for (auto& w : words)
            topic.AddWord(std::move(w));
        lists.AddLoadedTopic(std::move(topic));
    }
    testing_support::FakeDialogs dialogs;
    StringList errors;
    int pickerOpened = 0;
    WordLists lists{dialogs, errors, [this] { ++pickerOpened; }};
};

TEST_F(WordListsTest, AddTopicListFindsTheTopicByKeyAndAppends) {
    lists.cmdAddTopic_Click();  // no topic loaded: no picker
    Load("Animals", {"cat"});
    Load(" Star Wars ", {"yoda", "han solo,pilot"});
    lists.cmdAddTopic_Click();
    EXPECT_EQ(std::tuple(pickerOpened, lists.CurrentTopic(), lists.lstData().Rows()),
              std::tuple(1, "[None]", Lines{"Animals", "Star Wars"}));

    lists.AddTopicList("starwars");
    lists.SetPosition(1);
    lists.AddTopicList("STAR WARS");
    EXPECT_EQ(lists.lstWords().Rows(), (Lines{"yoda", "han solo,pilot", "yoda", "han solo,pilot"}));
    EXPECT_EQ(lists.Position(), 1) << "appending keeps the position";

    lists.AddTopicList("not loaded");
    EXPECT_EQ(std::tuple(lists.CurrentTopic(), lists.lstWords().Count()), std::tuple("", 4));
}

TEST_F(WordListsTest, ClearListAndRemovalLeaveTheOtherAlone) {
    Load("Star Wars", {"yoda"});
    Load("starwars", {"leia"});
    Load("Food", {"bread"});
    lists.AddTopicList("food");
    lists.cmdClearList_Click();
    EXPECT_EQ(std::tuple(lists.lstWords().Count(), lists.Position(), lists.lblCurrentTopic(),
                         lists.Topics().size()),
              std::tuple(0, -1, "[None]", 3u));

    // Removal matches every entry with the key.
    lists.AddTopicList("star wars");
    lists.ListRemoveTopic("STARWARS");
    EXPECT_EQ(std::tuple(lists.lstData().Rows(), lists.Topics().size()),
              std::tuple(Lines{"Food"}, 3u));
    lists.RemoveTopic("Star Wars");
    lists.RemoveTopic("unknown");
    ASSERT_EQ(lists.Topics().size(), 1u);
    EXPECT_EQ(lists.Topics()[0].GetTopic(), "Food");
    EXPECT_EQ(lists.lstWords().Rows(), (Lines{"yoda"}))
        << "removing a topic leaves its entries on the scramble list";
}

TEST(Shuffle, EveryOrderOfFourIsAboutEquallyLikely) {
    RandomSource random(12345);
    std::map<Lines, int> orders;
    for (int i = 0; i < 24000; ++i) {
        Lines rows = {"a", "b", "c", "d"};
        ShuffleRows(rows, random);
        ++orders[rows];
    }
    ASSERT_EQ(orders.size(), 24u);
    for (const auto& [order, count] : orders) {
        // 1000 expected for each; a fair shuffle stays well inside these bounds.
        EXPECT_NEAR(count, 1000, 150);
    }
}

TEST(StringList, SelectionFollowsItsRowAndIsLostWithIt) {
    StringList list;
    list.Assign({"a", "b", "c", "d"});
    list.Select(2);
    list.RemoveAt(0);
    EXPECT_EQ(list.Selected(), 1);
    list.RemoveAt(1);
    EXPECT_EQ(list.Selected(), -1);

    list.Assign({"x", "y", "x", "z"});
    list.Select(3);
    list.RemoveIf([](const std::string& row) { return row == "x"; });
    EXPECT_EQ(list.Rows(), (std::vector<std::string>{"y", "z"}));
    EXPECT_EQ(list.Selected(), 1);
}

}  // namespace
}  // namespace game
