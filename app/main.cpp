// Start-up. The main window is not built yet, so for now the program says so
// plainly and shows what the engine that is built can do: puzzles made from a
// small word list, in each of the two puzzle kinds.
#include <iostream>
#include <string>
#include <vector>

#include "game/product.h"
#include "game/puzzle.h"
#include "game/random.h"

int main() {
    std::cout << game::kProductTitle << "\n\n"
              << "Built so far: the word-game engine (topics, scramble list, puzzles, line style)\n"
              << "and the OSCAR encoding toolbox with the MD5 sign-on digest.\n"
              << "Not built yet: the main window, signing on and the chat room, so this build\n"
              << "cannot connect to anything. Sample puzzles from the engine:\n\n";

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
