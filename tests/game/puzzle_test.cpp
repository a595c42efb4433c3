#include "game/puzzle.h"

#include <gtest/gtest.h>

#include <algorithm>
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

TEST(GameModes, OneOptionAtATimeAndScrambleByDefault) {
    GameModes modes;
    EXPECT_EQ(modes.GetGameMode(), 0);
    modes.optMode_Click(2);
    EXPECT_EQ(modes.GetGameMode(), 2);
    modes.optMode_Click(1);
    EXPECT_TRUE(modes.BlankMode);
    EXPECT_FALSE(modes.MixedMode);
    EXPECT_EQ(modes.GetGameMode(), 1);
    modes.optMode_Click(3);
    EXPECT_EQ(modes.GetGameMode(), 1);
    modes.optMode_Click(0);
    EXPECT_EQ(modes.GetGameMode(), 0);
    EXPECT_FALSE(modes.BlankMode);
}

TEST(ScrambleWord, PermutesLettersInsideEachWordOnly) {
    RandomSource random(1);
    for (int i = 0; i < 200; ++i) {
        const std::string s = ScrambleWord("new york", random);
        ASSERT_EQ(s.size(), 8u);
        ASSERT_EQ(s[3], ' ');
        EXPECT_EQ(Sorted(s.substr(0, 3)), Sorted("new"));
        EXPECT_EQ(Sorted(s.substr(4)), Sorted("york"));
    }
    EXPECT_EQ(ScrambleWord("a", random), "a");
    EXPECT_EQ(ScrambleWord("", random), "");
    const std::string spaced = ScrambleWord("ab  c ", random);
    EXPECT_EQ(spaced.substr(2), "  c ") << "empty words keep their spaces";
}

TEST(ScrambleWord, ReachesEveryOrderOfAWord) {
    RandomSource random(2);
    std::set<std::string> seen;
    for (int i = 0; i < 600; ++i)
        seen.insert(ScrambleWord("abc", random));
    EXPECT_EQ(seen, (std::set<std::string>{"abc", "acb", "bac", "bca", "cab", "cba"}));
}

TEST(HiddenCount, IsHalfTheLengthRoundedToEven) {
    const int expected[] = {0, 0, 1, 2, 2, 2, 3, 4, 4, 4, 5};
    for (std::size_t length = 0; length <= 10; ++length) {
        EXPECT_EQ(HiddenCount(length), expected[length]) << length;
    }
}

TEST(BlankWord, BlanksAboutHalfAndSpacesTheResult) {
    RandomSource random(3);
    std::set<std::string> cat;
    for (int i = 0; i < 500; ++i) {
        const std::string b = BlankWord("cat", random);
        cat.insert(b);
        ASSERT_TRUE(Count(b, '_') == 2 || Count(b, '_') == 1) << b;
    }
    EXPECT_TRUE(cat.count(" _ a _ "));
    EXPECT_TRUE(cat.count("c _ t")) << "a single blank when the last draw repeats";
    for (const std::string& b : cat) {
        EXPECT_TRUE(b == " _ a _ " || b == " _  _ t" || b == "c _  _ " || b == " _ at" ||
                    b == "c _ t" || b == "ca _ ")
            << b;
    }

    for (int i = 0; i < 100; ++i) {
        const std::string ab = BlankWord("ab", random);
        EXPECT_TRUE(ab == " _ b" || ab == "a _ ") << ab;
    }
    EXPECT_EQ(BlankWord("x", random), " _ ");
    EXPECT_EQ(BlankWord("", random), " _ ");
}

TEST(BlankWord, WidensSpacesAndNeverPicksSpacesOrUnderscores) {
    RandomSource random(4);
    for (int i = 0; i < 200; ++i) {
        const std::string b = BlankWord("new york", random);  // L 8, B 4
        EXPECT_TRUE(Count(b, '_') == 4 || Count(b, '_') == 3) << b;
        EXPECT_NE(b.find("   "), std::string::npos) << b;
        EXPECT_EQ(b.size(), 8u + 2u + 2u * static_cast<std::size_t>(Count(b, '_'))) << b;

        const std::string u = BlankWord("a_b", random);  // L 3, B 2
        // The answer's own underscore shows as a blank and is never drawn.
        EXPECT_TRUE(Count(u, '_') == 2 || Count(u, '_') == 3) << u;
    }
}

TEST(BlankWord, StopsWhenNothingIsLeftToBlank) {
    RandomSource random(5);
    // 21 blanks wanted, two letters to take them.
    EXPECT_EQ(BlankWord("a                                        b", random).find_first_of("ab"),
              std::string::npos);
    EXPECT_EQ(BlankWord("    ", random), "            ");
    EXPECT_EQ(HintWord("x      y", random), "*      *");
}

TEST(HintWord, MasksAboutHalfAndKeepsTheShape) {
    RandomSource random(6);
    for (int i = 0; i < 200; ++i) {
        const std::string h = HintWord("elephant", random);  // L 8, B 4
        ASSERT_EQ(h.size(), 8u);
        EXPECT_TRUE(Count(h, '*') == 4 || Count(h, '*') == 3) << h;
        for (std::size_t k = 0; k < h.size(); ++k) {
            if (h[k] != '*') {
                EXPECT_EQ(h[k], std::string("elephant")[k]);
            }
        }
        const std::string phrase = HintWord("new york", random);
        EXPECT_EQ(phrase[3], ' ');
    }
    EXPECT_EQ(HintWord("a", random), "*");
    EXPECT_EQ(HintWord("", random), "*");
}

TEST(MakePuzzle, WritesTheLineForEachMode) {
    RandomSource random(7);
    const struct {
        const char* entry;
        int mode;
        const char* line;
    } cases[] = {{"a,first letter", 0, "Unscramble: a (Hint: first letter)"},
                 {"a,first letter", 1, "Fill in the blank:  _  (Hint: first letter)"},
                 {"a", 0, "Unscramble: a"},
                 {"a,", 0, "Unscramble: a (Hint: )"},
                 {",only a hint", 0, "Unscramble:  (Hint: only a hint)"},
                 {",only a hint", 1, "Fill in the blank:  _  (Hint: only a hint)"}};
    for (const auto& c : cases)
        EXPECT_EQ(MakePuzzle(c.entry, false, c.mode, random).line, c.line);
    const Puzzle spaced = MakePuzzle("  z ,hint, more ", false, 0, random);
    EXPECT_EQ(spaced.answer, "  z ") << "the pending answer is kept untrimmed";
    EXPECT_EQ(spaced.line, "Unscramble: z (Hint: hint, more )");
}

TEST(MakePuzzle, LowerCasesTheWholeEntryWhenAsked) {
    RandomSource random(8);
    const Puzzle p = MakePuzzle("Paris,French Capital", true, 0, random);
    EXPECT_EQ(p.answer, "paris");
    EXPECT_EQ(Sorted(p.line.substr(12, 5)), Sorted("paris"));
    EXPECT_EQ(p.line.substr(17), " (Hint: french capital)");
    EXPECT_EQ(MakePuzzle("Paris", false, 0, random).answer, "Paris");
}

TEST(MakePuzzle, MixedModeUsesBothKinds) {
    RandomSource random(9);
    int scrambles = 0, blanks = 0;
    for (int i = 0; i < 200; ++i) {
        const std::string line = MakePuzzle("giraffe", false, 2, random).line;
        if (line.rfind("Unscramble: ", 0) == 0) ++scrambles;
        if (line.rfind("Fill in the blank: ", 0) == 0) ++blanks;
    }
    EXPECT_EQ(scrambles + blanks, 200);
    EXPECT_GT(scrambles, 60);
    EXPECT_GT(blanks, 60);
}

}  // namespace
}  // namespace game
