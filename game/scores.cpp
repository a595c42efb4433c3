#include "game/scores.h"

#include <algorithm>
#include <limits>

namespace game {

namespace {

std::string Row(const std::string& name, std::int32_t score) {
    return name + " - " + std::to_string(score);
}

std::int32_t AddClamped(std::int32_t a, std::int32_t b) {
    const std::int64_t sum = std::int64_t{a} + b;
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(
        sum, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()));
}

}  // namespace

bool ScoreTable::Has(std::string_view name) const {
    return std::any_of(ranking_.begin(), ranking_.end(),
                       [name](const Entry& e) { return e.name == name; });
}

bool ScoreTable::AddPlayer(const std::string& name) {
    return Insert(name, 1);
}

std::optional<std::int32_t> ScoreTable::UpdateScore(const std::string& name, std::int32_t points) {
    auto it = std::find_if(ranking_.begin(), ranking_.end(),
                           [&name](const Entry& e) { return e.name == name; });
    if (it == ranking_.end()) return std::nullopt;
    const std::int32_t score = AddClamped(it->score, points);
    ranking_.erase(it);
    ranking_.push_back({name, score});

    const std::string prefix = name + " - ";
    for (int row = 0; row < rows_.Count(); ++row) {
        if (rows_.At(row).starts_with(prefix)) {
            rows_.Replace(row, Row(name, score));
            break;
        }
    }
    ArrangeScores();
    return score;
}

void ArrangeScores(std::vector<ScoreEntry>& entries) {
    bool moved = true;
    while (moved) {
        moved = false;
        const std::size_t n = entries.size();
        // The entry that slides into position i is not compared again in
        // this pass.
        for (std::size_t i = 0; i + 1 < n; ++i) {
            if (entries[i].score < entries[i + 1].score) {
                ScoreEntry entry = std::move(entries[i]);
                entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(i));
                entries.push_back(std::move(entry));
                moved = true;
            }
        }
    }
}

std::string ScoreTable::FindWinners() {
    constexpr std::int64_t kNone = -9999;
    std::int64_t max = kNone;
    std::string single;
    std::vector<std::string> ties;
    for (const Entry& e : ranking_) {
        const std::string named = e.name + ":" + std::to_string(e.score);
        if (e.score > max) {
            ties.clear();
            single = named;
            max = e.score;
        } else if (max != kNone && e.score == max) {
            if (!single.empty()) {
                ties.push_back(single);
                ties.push_back(named);
            } else if (!ties.empty()) {
                ties.push_back(named);
            }
            single.clear();
        }
    }
    ranking_.clear();

    if (!single.empty() || ties.size() < 2) {
        return single.empty() || !ties.empty() ? "[Error]" : single;
    }
    std::string joined = ties[0];
    for (std::size_t i = 1; i < ties.size(); ++i) {
        joined += kTieSeparator;
        joined += ties[i];
    }
    return joined;
}

bool ScoreTable::Insert(const std::string& name, std::int32_t score) {
    if (name.empty() || Has(name)) return false;
    ranking_.push_back({name, score});
    rows_.Append(Row(name, score));
    ArrangeScores();
    return true;
}

bool ScoreTable::Remove(const std::string& name) {
    auto it = std::find_if(ranking_.begin(), ranking_.end(),
                           [&name](const Entry& e) { return e.name == name; });
    if (it == ranking_.end()) return false;
    ranking_.erase(it);
    const std::string prefix = name + " - ";
    for (int row = 0; row < rows_.Count(); ++row) {
        if (rows_.At(row).starts_with(prefix)) {
            rows_.RemoveAt(row);
            break;
        }
    }
    return true;
}

std::optional<std::int32_t> ScoreTable::ScoreOf(std::string_view name) const {
    for (const Entry& e : ranking_) {
        if (e.name == name) return e.score;
    }
    return std::nullopt;
}

void ScoreTable::Clear() {
    ranking_.clear();
    rows_.Clear();
}

std::optional<std::string> ScoreTable::TopScoresLine() const {
    if (ranking_.empty()) return std::nullopt;
    std::string line = "<B><U>TOP SCORES</U></B>: " + ranking_[0].name + " [" +
                       std::to_string(ranking_[0].score) + "]";
    for (std::size_t i = 1; i < ranking_.size(); ++i) {
        const std::string score = std::to_string(ranking_[i].score);
        if (line.size() + ranking_[i].name.size() + score.size() > 232) break;
        line += ", " + ranking_[i].name + "[" + score + "]";
    }
    return line;
}

std::string WinnerMessage(std::string_view text) {
    auto nameOf = [](std::string_view entry) { return entry.substr(0, entry.find(':')); };
    if (text.find(kTieSeparator) == std::string_view::npos) {
        if (text == "[Error]") return "ERROR: A winner was not found!";
        const auto colon = text.find(':');
        const std::string_view points =
            colon == std::string_view::npos ? std::string_view() : text.substr(colon + 1);
        return std::string(nameOf(text)) + " is the winner with " + std::string(points) +
               " points!";
    }
    std::string sentence = "TIE GAME!!! Winners: ";
    std::size_t start = 0;
    for (bool first = true;; first = false) {
        const auto end = text.find(kTieSeparator, start);
        if (!first) sentence += ", ";
        sentence += nameOf(text.substr(start, end - start));
        if (end == std::string_view::npos) break;
        start = end + 1;
    }
    return sentence;
}

}  // namespace game
