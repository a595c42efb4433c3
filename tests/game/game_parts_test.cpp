// The game's parts on their own: the puzzle maker and the random draws it is
// made with, the score table, the row list under every view, the loaded
// topics and the scramble list.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

#include "game/puzzle.h"
#include "game/scores.h"
#include "game/word_lists.h"
#include "support/fake_dialogs.h"

namespace game {
namespace {

using Lines = std::vector<std::string>;

std::string Sorted(std::string s) {
    std::sort(s.begin(), s.end());
    return s;
}

TEST(ScrambleWord, PermutesLettersInsideEachWordOnlyAndReachesEveryOrder) {
    RandomSource random(1);
    std::set<std::string> seen;
    for (int i = 0; i < 600; ++i) {
        const std::string s = ScrambleWord("new york", random);
        ASSERT_EQ(s.size(), 8u);
        ASSERT_EQ(s[3], ' ');
        EXPECT_EQ(Sorted(s.substr(0, 3)), Sorted("new"));
        EXPECT_EQ(Sorted(s.substr(4)), Sorted("york"));
        seen.insert(ScrambleWord("abc", random));
    }
    EXPECT_EQ(seen, (std::set<std::string>{"abc", "acb", "bac", "bca", "cab", "cba"}));
}

TEST(BlankAndHintWord, HideAboutHalfOfTheLettersAndTheMixedModeUsesBothKinds) {
    RandomSource random(3);
    // "cat" hides 2: two draws, a single one hidden when the second repeats
    // the first. Blanks widen spaces to three; an underscore of the answer
    // shows as a blank and is never drawn. The mixed mode (2) makes both
    // kinds of puzzle.
    const struct {
        std::string (*hide)(std::string_view, RandomSource&);
        const char* text;
        std::set<std::string> outcomes;
    } cases[] = {
        {BlankWord, "cat", {" _ a _ ", " _  _ t", "c _  _ ", " _ at", "c _ t", "ca _ "}},
        {BlankWord,
         "ab c",
         {" _  _    c", " _ b    _ ", "a _     _ ", " _ b   c", "a _    c", "ab    _ "}},
        {BlankWord, "a_b", {" _  _  _ ", " _  _ b", "a _  _ "}},
        {HintWord, "cat", {"**t", "*a*", "c**", "*at", "c*t", "ca*"}},
        {[](std::string_view text, RandomSource& r) {
             return MakePuzzle(text, false, 2, r).line.substr(0, 11);
         },
         "giraffe",
         {"Fill in the", "Unscramble:"}},
    };
    for (const auto& c : cases) {
        std::set<std::string> seen;
        for (int i = 0; i < 300; ++i)
            seen.insert(c.hide(c.text, random));
        EXPECT_EQ(seen, c.outcomes) << c.text;
    }
}

TEST(MakePuzzle, WritesTheLineAndKeepsTheAnswerForEachEntry) {
    RandomSource random(7);
    const struct {
        const char* entry;
        bool lowerCase;
        int mode;
        const char* answer;
        const char* line;
    } cases[] = {
        {"a,first letter", false, 0, "a", "Unscramble: a (Hint: first letter)"},
        {"a,first letter", false, 1, "a", "Fill in the blank:  _  (Hint: first letter)"},
        {"  z ,hint, more ", false, 0, "  z ", "Unscramble: z (Hint: hint, more )"},
        {"Q,First Letter", true, 0, "q", "Unscramble: q (Hint: first letter)"},
    };
    for (const auto& c : cases) {
        const Puzzle p = MakePuzzle(c.entry, c.lowerCase, c.mode, random);
        EXPECT_EQ(p.answer, c.answer) << c.entry;
        EXPECT_EQ(p.line, c.line) << c.entry;
    }
}

Lines Names(const ScoreTable& table) {
    Lines names;
    for (const auto& e : table.Ranking())
        names.push_back(e.name + ":" + std::to_string(e.score));
    return names;
}

// Builds a table with the given scores, players added in order.
ScoreTable TableOf(const std::vector<std::pair<std::string, int>>& scores) {
    ScoreTable table;
    for (const auto& [name, score] : scores) {
        table.AddPlayer(name);
        if (score != 1) table.UpdateScore(name, score - 1);
    }
    return table;
}

TEST(ScoreTable, RanksHighestFirstMovingTheScorerToTheEnd) {
    ScoreTable table = TableOf({{"a", 1}, {"b", 1}, {"c", 1}, {"d", 1}});
    EXPECT_EQ(Names(table), (Lines{"a:1", "b:1", "c:1", "d:1"}));
    // b moves to the end (a c d b) and the passes carry it forward, leaving
    // the ones behind it reversed: b d c a.
    table.UpdateScore("b", 1);
    EXPECT_EQ(Names(table), (Lines{"b:2", "d:1", "c:1", "a:1"}));
    table.UpdateScore("a", 1);
    EXPECT_EQ(Names(table), (Lines{"b:2", "a:2", "c:1", "d:1"})) << "a ties b, behind it";
}

TEST(ScoreTable, ChangesOnlyThePlayersOwnRow) {
    ScoreTable table = TableOf({{"bobby", 1}, {"bob", 2}});
    table.UpdateScore("bobby", 4);
    EXPECT_EQ(table.lstPlayers().Rows(), (Lines{"bobby - 5", "bob - 2"}));

    EXPECT_FALSE(table.AddPlayer("bob"));
    EXPECT_EQ(table.lstPlayers().Count(), 2);

    table.UpdateScore("bob", 2147483647);
    EXPECT_EQ(table.Ranking()[0].score, 2147483647) << "scores saturate instead of wrapping";
}

TEST(ScoreTable, FindWinnersNamesTheTiedLeadersOnlyAndEmptiesTheTable) {
    ScoreTable table = TableOf({{"ann", 4}, {"bob", 4}, {"cat", 4}, {"dan", 1}});
    const std::string winners = table.FindWinners();
    EXPECT_EQ(winners, std::string("ann:4\xFF") + "bob:4\xFF" + "cat:4");
    EXPECT_EQ(WinnerMessage(winners), "TIE GAME!!! Winners: ann, bob, cat");
    // Emptied, but the rows are the caller's to clear.
    EXPECT_EQ(std::tuple(table.Empty(), table.lstPlayers().Count()), std::tuple(true, 4));
}

TEST(ScoreTable, TopScoresStopBeforeTheLinePasses232Characters) {
    EXPECT_FALSE(ScoreTable().TopScoresLine());
    EXPECT_EQ(TableOf({{"a", 5}, {"b", 3}, {"c", 2}}).TopScoresLine(),
              "<B><U>TOP SCORES</U></B>: a [5], b[3], c[2]");

    // The header (26) and the first entry (name, " [2]") come first; each
    // further 10-letter name with a 1-digit score adds 15 (", name[1]"). An
    // entry is added while length + name + score stays at or below 232.
    auto line = [](const std::string& leader) {
        ScoreTable table = TableOf({{leader, 2}});
        for (int i = 10; i < 30; ++i)
            table.AddPlayer("player00" + std::to_string(i));
        return *table.TopScoresLine();
    };
    // 26 + 11 + 4 + 12 * 15 = 221, and 221 + 10 + 1 = 232: the 13th is added.
    EXPECT_EQ(line("leader00000").size(), 236u);
    // One character more: 222 + 11 = 233 > 232, so the 13th is left out.
    EXPECT_EQ(line("leader000000").size(), 222u);
}

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
    EXPECT_EQ(std::tuple(list.Rows(), list.Selected()), std::tuple(Lines{"y", "z"}, 1));
}

}  // namespace
}  // namespace game
