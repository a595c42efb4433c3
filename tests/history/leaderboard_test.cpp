// The leaderboard's text: chat text made safe for JSON and HTML and turned
// into UTF-8, and the JSON documents of a small history.
#include <gtest/gtest.h>

#include "leaderboard/leaderboard.h"

namespace leaderboard {
namespace {

TEST(LeaderboardText, EscapesChatTextForJsonAndHtmlAsUtf8) {
    struct Case {
        std::string in, json, html;
    } cases[] = {
        {"plain", "\"plain\"", "plain"},
        {"<script>alert(1)</script>", "\"\\u003cscript\\u003ealert(1)\\u003c/script\\u003e\"",
         "&lt;script&gt;alert(1)&lt;/script&gt;"},
        {"a\"b\\c'd&e", "\"a\\\"b\\\\c'd\\u0026e\"", "a&quot;b\\c&#39;d&amp;e"},
        {"tab\there\n", "\"tab\\u0009here\\u000a\"", "tab\there\n"},
        // Windows-1252: e-acute, the euro sign, and 0x81, which it leaves undefined.
        {"caf\xE9 \x80 \x81", "\"caf\xC3\xA9 \xE2\x82\xAC \xEF\xBF\xBD\"",
         "caf\xC3\xA9 \xE2\x82\xAC \xEF\xBF\xBD"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(JsonString(c.in), c.json) << c.in;
        EXPECT_EQ(HtmlEscape(c.in), c.html) << c.in;
    }
}

TEST(LeaderboardText, DocumentsOfASmallHistory) {
    history::Millis now = 1704801600000;  // Tuesday 9 January 2024, noon UTC
    history::History record{[&now] { return now; }};
    record.PuzzlePosted("yak", "Ani\"mals", 0, 5);
    now += 1250;
    record.AnswerCredited("<b>Bo</b>");
    record.PuzzlePosted("emu", "Ani\"mals", 0, 5);
    record.GameEnded({"<b>bo</b>"});

    EXPECT_EQ(StandingsJson(record, history::Period::AllTime, {}, now),
              "{\"period\":\"all\",\"topic\":null,\"topics\":[\"Ani\\\"mals\"],\"rows\":["
              "{\"rank\":1,\"name\":\"\\u003cb\\u003eBo\\u003c/b\\u003e\",\"points\":1,"
              "\"gamesWon\":1,\"fastest\":1.3,\"streak\":1}]}");
    EXPECT_EQ(LiveJson({"Unscramble: kay", 12, "Ani\"mals", {{"<b>bo</b>", 1}}}),
              "{\"puzzle\":\"Unscramble: kay\",\"secondsLeft\":12,\"topic\":\"Ani\\\"mals\","
              "\"scores\":[{\"name\":\"\\u003cb\\u003ebo\\u003c/b\\u003e\",\"score\":1}]}");
    EXPECT_EQ(ParsePeriod("year"), std::nullopt);
}

}  // namespace
}  // namespace leaderboard
