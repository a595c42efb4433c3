// The leaderboard's text: chat text made safe for JSON and HTML and turned
// into UTF-8.
#include <gtest/gtest.h>

#include "leaderboard/leaderboard.h"

namespace leaderboard {
namespace {

TEST(LeaderboardText, EscapesChatTextForJsonAndHtmlAsUtf8) {
    struct Case {
        std::string in, json, html;
    } cases[] = {
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

}  // namespace
}  // namespace leaderboard
