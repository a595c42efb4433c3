// The leaderboard's content, for the page the program serves and for other
// programs: JSON documents and the HTML page. Every name, word and topic came
// from the chat, so each is escaped for where it goes, and the program's
// 8-bit text becomes UTF-8 on the way out.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "history/history.h"

namespace leaderboard {

// A JSON string literal; '<', '>' and '&' are written as \u escapes too, so
// the text is inert inside a page.
std::string JsonString(std::string_view cp1252);
// Text for an HTML element or attribute: & < > " ' as entities.
std::string HtmlEscape(std::string_view cp1252);

// "today", "week", "month", "all".
std::optional<history::Period> ParsePeriod(std::string_view name);
const char* PeriodName(history::Period period);

// The game in progress, as the room sees it.
struct LiveGame {
    std::string puzzle;    // empty when no puzzle is in play
    int secondsLeft = -1;  // before the puzzle is replaced; -1 when not counting
    std::string topic;
    std::vector<std::pair<std::string, int>> scores;  // best first
};

std::string StandingsJson(const history::History& record, history::Period period,
                          std::optional<int> topic, history::Millis now);
// One player's record for each period; {"found":false} for an unknown name.
std::string PlayerJson(const history::History& record, const std::string& name,
                       history::Millis now);
std::string GamesJson(const history::History& record, int count);
std::string LiveJson(const LiveGame& live);

// The whole page, with this week's standings already in it.
std::string Page(const history::History& record, history::Millis now);

}  // namespace leaderboard
