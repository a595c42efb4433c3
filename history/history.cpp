#include "history/history.h"

#include <algorithm>
#include <ctime>

#include "text/text.h"

namespace history {

namespace {

// Local midnight of the day `days` after the day of `t`, as epoch seconds.
std::time_t LocalMidnight(std::tm day, int days) {
    day.tm_mday += days;
    day.tm_hour = day.tm_min = day.tm_sec = 0;
    day.tm_isdst = -1;
    return std::mktime(&day);
}

}  // namespace

Range PeriodRange(Period period, Millis now) {
    if (period == Period::AllTime) return {0, INT64_MAX};
    const std::time_t seconds = static_cast<std::time_t>(now / 1000);
    std::tm local{};
    localtime_r(&seconds, &local);
    std::time_t from = 0, to = 0;
    switch (period) {
        case Period::Today:
            from = LocalMidnight(local, 0);
            to = LocalMidnight(local, 1);
            break;
        case Period::ThisWeek: {
            const int sinceMonday = (local.tm_wday + 6) % 7;
            from = LocalMidnight(local, -sinceMonday);
            to = LocalMidnight(local, 7 - sinceMonday);
            break;
        }
        case Period::ThisMonth: {
            std::tm first = local;
            first.tm_mday = 1;
            from = LocalMidnight(first, 0);
            first.tm_mon += 1;
            to = LocalMidnight(first, 0);
            break;
        }
        case Period::AllTime:
            break;
    }
    return {static_cast<Millis>(from) * 1000, static_cast<Millis>(to) * 1000};
}

History::History(std::function<Millis()> clock) : clock_(std::move(clock)) {}

int History::Intern(std::vector<std::string>& table, std::unordered_map<std::string, int>& index,
                    const std::string& text) {
    const auto [it, added] = index.try_emplace(text, static_cast<int>(table.size()));
    if (added) table.push_back(text);
    return it->second;
}

int History::PlayerFor(const std::string& screenName, Millis now, bool& added) {
    const std::string key = text::NormalizeName(screenName);
    const auto [it, inserted] = playerIndex_.try_emplace(key, static_cast<int>(players_.size()));
    added = inserted;
    if (inserted) players_.push_back({key, text::TrimSpaces(screenName), now});
    return it->second;
}

void History::PuzzlePosted(const std::string& word, const std::string& topic, int mode,
                           int scoreLimit) {
    const Millis now = clock_();
    if (!openGame_) {
        openGame_ = static_cast<int>(games_.size());
        games_.push_back({now, 0, topic, scoreLimit, {}});
        if (writer_) writer_->GameStarted(*openGame_, games_.back());
    }
    // Recorded as a restored puzzle is, then handed to the writer.
    const int puzzle = RestorePuzzle(now, *openGame_, word, topic, mode, -1, 0);
    if (writer_) writer_->PuzzlePosted(puzzle, puzzles_.back(), word, topic);
}

void History::AnswerCredited(const std::string& screenName) {
    // Only the puzzle in play can be answered, and only once.
    if (!openGame_ || puzzles_.empty() || puzzles_.back().winner >= 0 ||
        puzzles_.back().game != *openGame_)
        return;
    const Millis now = clock_();
    bool added = false;
    PuzzleRecord& puzzle = puzzles_.back();
    puzzle.winner = PlayerFor(screenName, now, added);
    puzzle.answered = std::max(now, puzzle.posted);
    if (writer_)
        writer_->AnswerCredited(
            static_cast<int>(puzzles_.size()) - 1, puzzle,
            added ? &players_[static_cast<std::size_t>(puzzle.winner)] : nullptr);
}

void History::GameEnded(const std::vector<std::string>& winnerKeys) {
    if (!openGame_) return;
    const Millis now = clock_();
    GameRecord& game = games_[static_cast<std::size_t>(*openGame_)];
    game.ended = now;
    std::vector<int> newPlayers;
    for (const std::string& key : winnerKeys) {
        bool added = false;
        const int player = PlayerFor(key, now, added);
        if (added) newPlayers.push_back(player);
        game.winners.push_back(player);
    }
    if (writer_) writer_->GameEnded(*openGame_, game, newPlayers);
    openGame_.reset();
}

int History::RestorePlayer(PlayerRecord record) {
    bool added = false;
    const int player = PlayerFor(record.key, record.firstSeen, added);
    if (added) players_.back() = std::move(record);
    return player;
}

int History::RestoreGame(GameRecord record) {
    games_.push_back(std::move(record));
    return static_cast<int>(games_.size()) - 1;
}

void History::RestoreWinner(int game, int player) {
    games_.at(static_cast<std::size_t>(game)).winners.push_back(player);
}

int History::RestorePuzzle(Millis posted, int game, const std::string& word,
                           const std::string& topic, int mode, int winner, Millis answered) {
    PuzzleRecord record;
    record.posted = posted;
    record.game = game;
    record.word = Intern(words_, wordIndex_, word);
    record.topic = Intern(topics_, topicIndex_, topic);
    record.mode = mode;
    record.winner = winner;
    record.answered = answered;
    puzzles_.push_back(record);
    return static_cast<int>(puzzles_.size()) - 1;
}

std::optional<int> History::FindPlayer(const std::string& screenName) const {
    const auto it = playerIndex_.find(text::NormalizeName(screenName));
    if (it == playerIndex_.end()) return std::nullopt;
    return it->second;
}

std::optional<int> History::FindTopic(const std::string& topic) const {
    const auto it = topicIndex_.find(topic);
    if (it == topicIndex_.end()) return std::nullopt;
    return it->second;
}

std::vector<Standing> History::Standings(Range range, std::optional<int> topic) const {
    std::vector<Standing> rows(players_.size());
    // Puzzles are recorded in time order, so the range is one slice.
    const auto first =
        std::lower_bound(puzzles_.begin(), puzzles_.end(), range.from,
                         [](const PuzzleRecord& p, Millis t) { return p.posted < t; });
    int streakOwner = -1;
    int streak = 0;
    for (auto it = first; it != puzzles_.end() && it->posted < range.to; ++it) {
        if (topic && it->topic != *topic) continue;
        const int winner = it->winner;
        streak = winner >= 0 && winner == streakOwner ? streak + 1 : 1;
        streakOwner = winner;
        if (winner < 0) continue;
        Standing& row = rows[static_cast<std::size_t>(winner)];
        ++row.points;
        const Millis took = it->answered - it->posted;
        if (row.fastest < 0 || took < row.fastest) row.fastest = took;
        row.longestStreak = std::max(row.longestStreak, streak);
    }
    for (const GameRecord& game : games_) {
        if (game.ended == 0 || game.ended < range.from || game.ended >= range.to) continue;
        if (topic && game.topic != topics_[static_cast<std::size_t>(*topic)]) continue;
        for (int winner : game.winners)
            ++rows[static_cast<std::size_t>(winner)].gamesWon;
    }
    std::vector<Standing> out;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (rows[i].points == 0 && rows[i].gamesWon == 0) continue;
        rows[i].player = static_cast<int>(i);
        rows[i].name = players_[i].name;
        out.push_back(std::move(rows[i]));
    }
    std::sort(out.begin(), out.end(), [this](const Standing& a, const Standing& b) {
        if (a.points != b.points) return a.points > b.points;
        if (a.gamesWon != b.gamesWon) return a.gamesWon > b.gamesWon;
        if (a.fastest != b.fastest) return a.fastest < b.fastest;
        return players_[static_cast<std::size_t>(a.player)].key <
               players_[static_cast<std::size_t>(b.player)].key;
    });
    return out;
}

Standing History::RecordOf(int player, Range range) const {
    for (Standing& row : Standings(range))
        if (row.player == player) return std::move(row);
    Standing none;
    none.player = player;
    none.name = players_[static_cast<std::size_t>(player)].name;
    return none;
}

std::vector<GameSummary> History::RecentGames(int count) const {
    std::vector<GameSummary> out;
    for (int g = static_cast<int>(games_.size()) - 1;
         g >= 0 && static_cast<int>(out.size()) < count; --g)
        out.push_back({g, games_[static_cast<std::size_t>(g)], 0});
    // Puzzle counts of those games, from the newest puzzles back.
    for (auto it = puzzles_.rbegin(); it != puzzles_.rend(); ++it) {
        if (out.empty() || it->game < out.back().game) break;
        for (GameSummary& summary : out)
            if (summary.game == it->game) ++summary.puzzles;
    }
    return out;
}

std::vector<std::string> WinnerKeys(const std::string& result, char tieSeparator) {
    std::vector<std::string> keys;
    if (result == "[Error]") return keys;
    std::size_t start = 0;
    while (start <= result.size()) {
        const std::size_t end = std::min(result.find(tieSeparator, start), result.size());
        const std::string entry = result.substr(start, end - start);
        const std::size_t colon = entry.rfind(':');
        if (colon != std::string::npos && colon > 0) keys.push_back(entry.substr(0, colon));
        start = end + 1;
    }
    return keys;
}

}  // namespace history
