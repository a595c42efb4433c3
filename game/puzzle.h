// The puzzle maker: scrambled words, blanked words, hints, and the puzzle
// line for one scramble-list entry.
#pragma once

#include <string>
#include <string_view>

#include "game/random.h"

namespace game {

// The three option buttons "Scramble Mode", "Word Blank Mode", "Mixed Mode".
class GameModes {
  public:
    // 0, 1 or 2 sets that mode alone; any other index changes nothing.
    void optMode_Click(int Index);
    // 0 scramble, 1 word blank, 2 mixed; scramble while no option is chosen.
    int GetGameMode() const;

    bool ScrambleMode = false;
    bool BlankMode = false;
    bool MixedMode = false;
};

// The letters of each space-separated word shuffled uniformly; words keep
// their order and length.
std::string ScrambleWord(std::string_view text, RandomSource& random);

// About half of the characters blanked with "_", each blank shown as " _ "
// and each space widened to three; " _ " for texts of 0 or 1 character.
std::string BlankWord(std::string_view text, RandomSource& random);

// About half of the characters masked with "*"; "*" for texts of 0 or 1
// character.
std::string HintWord(std::string_view text, RandomSource& random);

// How many characters BlankWord and HintWord aim to hide in a text of
// `length` characters: half of it, halves rounded to the even number.
int HiddenCount(std::size_t length);

struct Puzzle {
    std::string answer;  // the pending answer, untrimmed
    std::string line;    // the chat line, without the style prefix
};

// The puzzle for one entry: lower-cased when `lowerCase`, split at its first
// comma into answer and hint, made with `gameMode` (2 picks 0 or 1 at random).
Puzzle MakePuzzle(std::string_view entry, bool lowerCase, int gameMode, RandomSource& random);

}  // namespace game
