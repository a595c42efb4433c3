// The puzzle maker and the random draws it is made with.
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

}  // namespace
}  // namespace game
