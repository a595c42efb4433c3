#include "localserver/scripted_game.h"

#include <QDir>
#include <QFile>
#include <QTimer>
#include <algorithm>

#include "game/topic.h"
#include "text/text.h"

namespace testserver {

namespace {

// The letters of each word sorted: what a scramble keeps.
std::string Signature(const std::string& text) {
    std::string signature;
    std::size_t start = 0;
    for (;;) {
        const auto space = text.find(' ', start);
        std::string word = text.substr(start, space == std::string::npos ? space : space - start);
        std::sort(word.begin(), word.end());
        signature += word;
        if (space == std::string::npos) break;
        signature += ' ';
        start = space + 1;
    }
    return signature;
}

// Whether `shown` is `answer` with some letters blanked: each blank shows as
// " _ " and each space as three spaces.
bool FitsBlanks(const std::string& answer, const std::string& shown) {
    std::size_t pos = 0;
    for (char c : answer) {
        if (c != ' ' && shown.compare(pos, 3, " _ ") == 0) {
            pos += 3;
        } else if (c == ' ' && shown.compare(pos, 3, "   ") == 0) {
            pos += 3;
        } else if (pos < shown.size() && shown[pos] == c) {
            ++pos;
        } else {
            return false;
        }
    }
    return pos == shown.size();
}

// The puzzle after `prefix` (lower case text), without its hint.
std::optional<std::string> PuzzleAfter(const std::string& text, const std::string& prefix) {
    const auto at = text.find(prefix);
    if (at == std::string::npos) return std::nullopt;
    std::string puzzle = text.substr(at + prefix.size());
    const auto hint = puzzle.find(" (hint: ");
    if (hint != std::string::npos) puzzle.erase(hint);
    return puzzle;
}

const char* kSmallTalk[] = {"lol",
                            "hi all",
                            "nice one",
                            "brb",
                            "hmm...",
                            "this one is hard",
                            "<b>go go go</b>",
                            "fish &amp; chips",
                            "which topic is this?",
                            "gg"};

}  // namespace

std::vector<std::string> LoadEntries(const std::string& folder) {
    std::vector<std::string> entries;
    const QDir dir(QString::fromStdString(folder));
    for (const QString& name : dir.entryList({"*.txt", "*.csv"}, QDir::Files, QDir::Name)) {
        QFile file(dir.filePath(name));
        if (!file.open(QIODevice::ReadOnly)) continue;
        for (const QByteArray& line : file.readAll().split('\n')) {
            const std::string entry = line.trimmed().toStdString();
            if (!entry.empty()) entries.push_back(entry);
        }
    }
    return entries;
}

ScriptedGame::ScriptedGame(OscarTestServer& server, std::string room,
                           const std::vector<std::string>& entries, quint64 seed)
    : server_(server), room_(std::move(room)), random_(static_cast<quint32>(seed)) {
    for (const std::string& entry : entries) {
        const std::string answer = text::TrimSpaces(game::SplitEntry(entry).answer);
        if (!answer.empty()) answers_.push_back({answer, text::LowerCase(answer)});
    }
    clock_.start();
    server_.AddLineListener([this](const RelayedLine& line) { OnLine(line); });
}

void ScriptedGame::AddPlayer(const PlayerStyle& style) {
    players_.push_back(style);
    server_.AddScriptedPlayer(room_, style.name);
}

void ScriptedGame::AddChatter(const std::string& name, int meanIntervalMs) {
    chatters_.push_back(name);
    server_.AddScriptedPlayer(room_, name);
    Chatter(name, meanIntervalMs);
}

void ScriptedGame::Chatter(const std::string& name, int meanIntervalMs) {
    const int wait = static_cast<int>(random_.bounded(2 * meanIntervalMs + 1));
    QTimer::singleShot(wait, this, [this, name, meanIntervalMs] {
        server_.PlayerSays(room_, name, kSmallTalk[random_.bounded(10)]);
        Chatter(name, meanIntervalMs);
    });
}

bool ScriptedGame::IsScripted(const std::string& name) const {
    return std::any_of(players_.begin(), players_.end(),
                       [&](const PlayerStyle& p) { return p.name == name; }) ||
           std::find(chatters_.begin(), chatters_.end(), name) != chatters_.end();
}

std::string ScriptedGame::Solve(const std::string& line) const {
    const std::string text = text::LowerCase(text::StripTags(line));
    if (const auto puzzle = PuzzleAfter(text, "unscramble: ")) {
        const std::string signature = Signature(*puzzle);
        for (const Answer& a : answers_) {
            if (Signature(a.key) == signature) return a.text;
        }
    } else if (const auto shown = PuzzleAfter(text, "fill in the blank: ")) {
        for (const Answer& a : answers_) {
            if (FitsBlanks(a.key, *shown)) return a.text;
        }
    }
    return {};
}

void ScriptedGame::OnLine(const RelayedLine& line) {
    if (line.room != room_) return;
    if (IsScripted(line.sender)) {
        // A correct answer on its way to the bot starts the clock.
        if (!current_.empty() && !answeredAt_ && text::LowerCase(line.text) == current_) {
            answeredAt_ = clock_.nsecsElapsed() / 1000;
        }
        return;
    }
    if (line.sender == "OnlineHost") return;
    if (line.text.find(" got it right!!! (") != std::string::npos) {
        if (answeredAt_) latencies_.push_back(clock_.nsecsElapsed() / 1000 - *answeredAt_);
        answeredAt_.reset();
        current_.clear();
        for (const PlayerStyle& p : players_) {
            if (static_cast<int>(random_.bounded(100)) < p.scorePercent) {
                QTimer::singleShot(300, this, [this, name = p.name] {
                    server_.PlayerSays(room_, name, "/score");
                });
            }
        }
        return;
    }
    const std::string answer = Solve(line.text);
    if (answer.empty()) return;
    ++puzzles_;
    current_ = text::LowerCase(answer);
    answeredAt_.reset();
    // Those who waited too long answer the puzzle before this one now.
    for (const auto& [name, old] : late_) {
        QTimer::singleShot(
            200, this, [this, name = name, old = old] { server_.PlayerSays(room_, name, old); });
    }
    late_.clear();
    for (const PlayerStyle& p : players_)
        Play(p, answer);
}

void ScriptedGame::Play(const PlayerStyle& style, const std::string& answer) {
    if (static_cast<int>(random_.bounded(100)) < style.latePercent) {
        late_.emplace_back(style.name, answer);
        return;
    }
    if (static_cast<int>(random_.bounded(100)) < style.hintPercent) {
        QTimer::singleShot(style.minDelayMs / 2, this,
                           [this, name = style.name] { server_.PlayerSays(room_, name, "/hint"); });
    }
    std::string said = answer;
    if (static_cast<int>(random_.bounded(100)) < style.wrongPercent && !answers_.empty()) {
        said = answers_[random_.bounded(static_cast<quint32>(answers_.size()))].text + "s";
    }
    const int delay =
        style.minDelayMs +
        static_cast<int>(random_.bounded(std::max(1, style.maxDelayMs - style.minDelayMs)));
    QTimer::singleShot(delay, this,
                       [this, name = style.name, said] { server_.PlayerSays(room_, name, said); });
}

}  // namespace testserver
