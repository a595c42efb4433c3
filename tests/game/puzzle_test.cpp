// The puzzle maker and the random draws it is made with.
#include "game/puzzle.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

namespace game {
namespace {

std::string Sorted(std::string s) {
    std::sort(s.begin(), s.end());
    return s;
}

long Count(const std::string& s, char c) {
    return std::count(s.begin(), s.end(), c);
}

TEST(RandomNumber, StaysWithinItsBoundsReachesEachValueAndFollowsTheSeed) {
    RandomSource random(7), same(42), again(42), other(43);
    std::map<long long, int> seen;
    for (int i = 0; i < 6000; ++i)
        ++seen[random.RandomNumber(6, 1)];
    ASSERT_EQ(seen.size(), 6u);
    EXPECT_EQ(seen.begin()->first, 1);
    for (const auto& [value, count] : seen) {
        EXPECT_GT(count, 800) << value;
        EXPECT_LT(count, 1200) << value;
    }
    for (int i = 0; i < 100; ++i) {
        const long long n = random.RandomNumber(-3, -5);
        EXPECT_TRUE(n >= -5 && n <= -3) << n;
    }
    bool differs = false;
    for (int i = 0; i < 50; ++i) {
        const long long x = same.RandomNumber(1000000, 1);
        EXPECT_EQ(x, again.RandomNumber(1000000, 1));
        differs = differs || x != other.RandomNumber(1000000, 1);
    }
    EXPECT_TRUE(differs);
}

TEST(GameModes, OneOptionAtATimeAndScrambleByDefault) {
    GameModes modes;
    EXPECT_EQ(modes.GetGameMode(), 0);
    for (const auto& [click, mode] : {std::pair{2, 2}, {1, 1}, {3, 1}, {-1, 1}, {0, 0}}) {
        modes.optMode_Click(click);
        EXPECT_EQ(modes.GetGameMode(), mode) << click;
    }
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
    EXPECT_EQ(ScrambleWord("", random), "");
    EXPECT_EQ(ScrambleWord("ab  c ", random).substr(2), "  c ") << "empty words keep their spaces";
}

TEST(HiddenCount, IsHalfTheLengthRoundedToEven) {
    const int expected[] = {0, 0, 1, 2, 2, 2, 3, 4, 4, 4, 5};
    for (std::size_t length = 0; length <= 10; ++length)
        EXPECT_EQ(HiddenCount(length), expected[length]) << length;
}

TEST(BlankWord, EveryOutcomeOfShortTextsAndNothingElse) {
    RandomSource random(3);
    // "cat" hides 2: two draws, a single blank when the second repeats the first.
    const struct {
        const char* text;
        std::set<std::string> outcomes;
    } cases[] = {
        {"cat", {" _ a _ ", " _  _ t", "c _  _ ", " _ at", "c _ t", "ca _ "}},
        {"ab", {" _ b", "a _ "}},
        {"x", {" _ "}},
        {"", {" _ "}},
        {"    ", {"            "}},
        {"x      y", {" _                    _ "}},
    };
    for (const auto& c : cases) {
        std::set<std::string> seen;
        for (int i = 0; i < 300; ++i)
            seen.insert(BlankWord(c.text, random));
        EXPECT_EQ(seen, c.outcomes) << c.text;
    }
}

TEST(BlankWord, WidensSpacesAndNeverPicksSpacesOrUnderscores) {
    RandomSource random(4);
    for (int i = 0; i < 200; ++i) {
        const std::string b = BlankWord("new york", random);  // L 8, B 4
        EXPECT_TRUE(Count(b, '_') == 4 || Count(b, '_') == 3) << b;
        EXPECT_NE(b.find("   "), std::string::npos) << b;
        EXPECT_EQ(b.size(), 8u + 2u + 2u * static_cast<std::size_t>(Count(b, '_'))) << b;
        // The answer's own underscore shows as a blank and is never drawn.
        const std::string u = BlankWord("a_b", random);  // L 3, B 2
        EXPECT_TRUE(Count(u, '_') == 2 || Count(u, '_') == 3) << u;
    }
}

TEST(HintWord, MasksAboutHalfAndKeepsTheShape) {
    RandomSource random(6);
    for (int i = 0; i < 200; ++i) {
        const std::string h = HintWord("elephant", random);  // L 8, B 4
        ASSERT_EQ(h.size(), 8u);
        EXPECT_TRUE(Count(h, '*') == 4 || Count(h, '*') == 3) << h;
        for (std::size_t k = 0; k < h.size(); ++k)
            EXPECT_TRUE(h[k] == '*' || h[k] == std::string("elephant")[k]) << h;
        EXPECT_EQ(HintWord("new york", random)[3], ' ');
    }
    EXPECT_EQ(HintWord("x      y", random), "*      *") << "nothing else is left to mask";
    EXPECT_EQ(HintWord("a", random), "*");
    EXPECT_EQ(HintWord("", random), "*");
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
        {"a", false, 0, "a", "Unscramble: a"},
        {"a,", false, 0, "a", "Unscramble: a (Hint: )"},
        {",only a hint", false, 0, "", "Unscramble:  (Hint: only a hint)"},
        {",only a hint", true, 1, "", "Fill in the blank:  _  (Hint: only a hint)"},
        {"  z ,hint, more ", false, 0, "  z ", "Unscramble: z (Hint: hint, more )"},
        {"Q,First Letter", true, 0, "q", "Unscramble: q (Hint: first letter)"},
        {"Q,First Letter", false, 0, "Q", "Unscramble: Q (Hint: First Letter)"},
    };
    for (const auto& c : cases) {
        const Puzzle p = MakePuzzle(c.entry, c.lowerCase, c.mode, random);
        EXPECT_EQ(p.answer, c.answer) << c.entry;
        EXPECT_EQ(p.line, c.line) << c.entry;
    }
}

TEST(MakePuzzle, MixedModeUsesBothKinds) {
    RandomSource random(9);
    int scrambles = 0, blanks = 0;
    for (int i = 0; i < 200; ++i) {
        const std::string line = MakePuzzle("giraffe", false, 2, random).line;
        scrambles += line.rfind("Unscramble: ", 0) == 0;
        blanks += line.rfind("Fill in the blank: ", 0) == 0;
    }
    EXPECT_EQ(scrambles + blanks, 200);
    EXPECT_GT(scrambles, 60);
    EXPECT_GT(blanks, 60);
}

}  // namespace
}  // namespace game
