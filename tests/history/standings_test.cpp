// The standings of a scripted history, against results worked out by hand:
// ties, streaks broken by another player or by a skipped puzzle, the week
// boundary, and one player typing a name with different capitals and spaces.
// Then the leaderboard's text: chat text made safe for JSON and HTML and
// turned into UTF-8.
#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

#include "history/history.h"
#include "leaderboard/leaderboard.h"

namespace history {
namespace {

constexpr Millis kSecond = 1000;
// Monday 8 January 2024, 00:00 UTC.
constexpr Millis kMonday = 1704672000LL * kSecond;
constexpr Millis kDay = 86400 * kSecond;

class Standings : public ::testing::Test {
  protected:
    Standings() {
        setenv("TZ", "UTC", 1);
        tzset();
        // Game 1, "animals": the first puzzle on the Sunday before, the second
        // at the first moment of the week.
        Game("animals",
             {{kMonday - 3 * kSecond, "giraffe", 2, "Ann Agram"},
              {kMonday, "zebra", 5, "ann agram"},
              {kMonday + 60 * kSecond, "otter", 3, "ANNAGRAM"},
              {kMonday + 120 * kSecond, "lynx", 1, "Bob"},  // breaks Ann's streak
              {kMonday + 180 * kSecond, "yak", 4, "Ann Agram"},
              {kMonday + 240 * kSecond, "emu", 0, nullptr},  // skipped: nobody scores
              {kMonday + 300 * kSecond, "ibis", 6, "Ann Agram"},
              {kMonday + 360 * kSecond, "newt", 7, "Ann Agram"}},
             kMonday + 400 * kSecond, {"annagram"});
        // Game 2, "colours", on Tuesday: a tie.
        Game("colours",
             {{kMonday + kDay, "red", 2, "Bob"},
              {kMonday + kDay + 60 * kSecond, "blue", 3, "Ann Agram"}},
             kMonday + kDay + 100 * kSecond, {"annagram", "bob"});
    }

    // One game's puzzles: when each is posted, its word, and the seconds until
    // `who` is credited (nobody: skipped); then its end, at `ended`.
    using Row = std::tuple<Millis, const char*, int, const char*>;
    void Game(const char* topic, std::initializer_list<Row> rows, Millis ended,
              const std::vector<std::string>& winners) {
        for (const auto& [posted, word, seconds, who] : rows) {
            now = posted;
            record.PuzzlePosted(word, topic, 0, 15);
            now += seconds * kSecond;
            if (who) record.AnswerCredited(who);
        }
        now = ended;
        record.GameEnded(winners);
    }

    // "name points wins fastest(ms) streak" per row, best first.
    std::vector<std::string> Rows(Period period, Millis at, std::optional<std::string> topic) {
        std::vector<std::string> rows;
        for (const Standing& s : record.Standings(PeriodRange(period, at),
                                                  topic ? record.FindTopic(*topic) : std::nullopt))
            rows.push_back(s.name + " " + std::to_string(s.points) + " " +
                           std::to_string(s.gamesWon) + " " + std::to_string(s.fastest) + " " +
                           std::to_string(s.longestStreak));
        return rows;
    }

    Millis now = 0;
    History record{[this] { return now; }};
};

TEST_F(Standings, EachPeriodAndTopicMatchesTheHandWorkedTable) {
    using Table = std::vector<std::string>;
    const Millis tuesday = kMonday + kDay + 3600 * kSecond;
    const Table tie{"Bob 1 1 2000 1", "Ann Agram 1 1 3000 1"};  // the faster answer first
    // Period, topic (none: all), and the rows expected.
    const std::tuple<Period, std::optional<std::string>, Table> cases[] = {
        // All time: the Sunday puzzle starts Ann's run of three.
        {Period::AllTime, {}, {"Ann Agram 7 2 2000 3", "Bob 2 1 1000 1"}},
        // This week starts at Monday 00:00: the Sunday answer and its streak are out.
        {Period::ThisWeek, {}, {"Ann Agram 6 2 3000 2", "Bob 2 1 1000 1"}},
        // Today (Tuesday): tied on points and wins.
        {Period::Today, {}, tie},
        // One topic: its puzzles and its games only.
        {Period::AllTime, "colours", tie},
    };
    for (const auto& [period, topic, expected] : cases)
        EXPECT_EQ(Rows(period, tuesday, topic), expected)
            << "period " << static_cast<int>(period) << ", topic " << topic.value_or("all");
}

}  // namespace
}  // namespace history

namespace leaderboard {
namespace {

TEST(LeaderboardText, EscapesChatTextForJsonAndHtmlAsUtf8) {
    // Chat text; as a JSON string; as HTML.
    const std::string cases[][3] = {
        {"<script>alert(1)</script>", "\"\\u003cscript\\u003ealert(1)\\u003c/script\\u003e\"",
         "&lt;script&gt;alert(1)&lt;/script&gt;"},
        {"a\"b\\c'd&e", "\"a\\\"b\\\\c'd\\u0026e\"", "a&quot;b\\c&#39;d&amp;e"},
        {"tab\there\n", "\"tab\\u0009here\\u000a\"", "tab\there\n"},
        // Windows-1252: e-acute, the euro sign, and 0x81, which it leaves undefined.
        {"caf\xE9 \x80 \x81", "\"caf\xC3\xA9 \xE2\x82\xAC \xEF\xBF\xBD\"",
         "caf\xC3\xA9 \xE2\x82\xAC \xEF\xBF\xBD"},
    };
    for (const auto& [in, json, html] : cases) {
        EXPECT_EQ(JsonString(in), json) << in;
        EXPECT_EQ(HtmlEscape(in), html) << in;
    }
}

}  // namespace
}  // namespace leaderboard
