#include "game/puzzle.h"

#include <vector>

#include "game/topic.h"
#include "text/text.h"

namespace game {

namespace {

// Replaces about half of the characters of `text` by `mask`. All draws but
// the last are repeated until they land on a character that is neither a
// space nor `mask`; the last draw gets one try. When nothing hideable is left
// the drawing stops, so a text of mostly spaces cannot loop forever.
std::string MaskCharacters(std::string_view text, char mask, RandomSource& random) {
    std::string masked(text);
    const int count = HiddenCount(masked.size());
    const auto length = static_cast<long long>(masked.size());
    auto hideable = [mask](char c) { return c != ' ' && c != mask; };
    std::size_t left = 0;
    for (char c : masked)
        left += hideable(c) ? 1 : 0;

    for (int i = 1; i <= count && left > 0; ++i) {
        const bool lastDraw = i == count;
        for (;;) {
            const auto p = static_cast<std::size_t>(random.RandomNumber(length, 1) - 1);
            if (hideable(masked[p])) {
                masked[p] = mask;
                --left;
                break;
            }
            if (lastDraw) break;
        }
    }
    return masked;
}

}  // namespace

void GameModes::optMode_Click(int Index) {
    if (Index < 0 || Index > 2) return;
    ScrambleMode = Index == 0;
    BlankMode = Index == 1;
    MixedMode = Index == 2;
}

int GameModes::GetGameMode() const {
    if (ScrambleMode) return 0;
    if (BlankMode) return 1;
    if (MixedMode) return 2;
    return 0;
}

int HiddenCount(std::size_t length) {
    const auto half = static_cast<int>(length / 2);
    if (length % 2 == 0) return half;
    return half % 2 == 0 ? half : half + 1;
}

std::string ScrambleWord(std::string_view text, RandomSource& random) {
    std::string result;
    result.reserve(text.size());
    std::string letters;
    std::size_t start = 0;
    for (;;) {
        const auto space = text.find(' ', start);
        letters.assign(text.substr(start, space == std::string_view::npos ? space : space - start));
        // Take the k-th remaining letter each time; the last letter moves into
        // its place so that a long word costs linear time.
        while (!letters.empty()) {
            const auto k = static_cast<std::size_t>(
                random.RandomNumber(static_cast<long long>(letters.size()), 1) - 1);
            result.push_back(letters[k]);
            letters[k] = letters.back();
            letters.pop_back();
        }
        if (space == std::string_view::npos) break;
        result.push_back(' ');
        start = space + 1;
    }
    return result;
}

std::string BlankWord(std::string_view text, RandomSource& random) {
    if (HiddenCount(text.size()) == 0) return " _ ";
    const std::string blanked = MaskCharacters(text, '_', random);
    std::string shown;
    shown.reserve(blanked.size() * 3);
    for (char c : blanked) {
        if (c == ' ') {
            shown += "   ";
        } else if (c == '_') {
            shown += " _ ";
        } else {
            shown.push_back(c);
        }
    }
    return shown;
}

std::string HintWord(std::string_view text, RandomSource& random) {
    if (HiddenCount(text.size()) == 0) return "*";
    return MaskCharacters(text, '*', random);
}

Puzzle MakePuzzle(std::string_view entry, bool lowerCase, int gameMode, RandomSource& random) {
    const std::string text = lowerCase ? text::LowerCase(entry) : std::string(entry);
    int mode = gameMode;
    if (mode == 2) mode = static_cast<int>(random.RandomNumber(2, 1) - 1);
    EntryParts parts = SplitEntry(text);

    const std::string trimmed = text::TrimSpaces(parts.answer);
    std::string line = mode == 0 ? "Unscramble: " + ScrambleWord(trimmed, random)
                                 : "Fill in the blank: " + BlankWord(trimmed, random);
    if (parts.hint) line += " (Hint: " + *parts.hint + ")";
    return {std::move(parts.answer), std::move(line)};
}

}  // namespace game
