// Start-up. The main window is not built yet, so for now the program says so
// plainly and shows what the engine can do: puzzles made from a small word
// list, in each of the two puzzle kinds.
#include <iostream>
#include <string>
#include <vector>

#include "game/product.h"
#include "game/puzzle.h"
#include "game/random.h"

int main() {
    std::cout << game::kProductTitle << "\n\n"
              << "Built so far: the word-game engine (topics, puzzles, rounds, scores, chat\n"
              << "commands) and the OSCAR client, both tested against a local OSCAR server.\n"
              << "Not built yet: the main window, so this program does not sign on.\n"
              << "Sample puzzles from the engine:\n\n";

    const std::vector<std::string> entries = {"giraffe", "new york,big apple", "kangaroo,hops"};
    game::RandomSource random;
    for (int mode = 0; mode <= 1; ++mode) {
        for (const std::string& entry : entries) {
            const game::Puzzle puzzle = game::MakePuzzle(entry, false, mode, random);
            std::cout << "  " << puzzle.line << "    (answer: " << puzzle.answer << ")\n";
        }
    }
    return 0;
}
