#include "leaderboard/leaderboard.h"

#include "history/chat_lines.h"
#include "text/cp1252.h"
#include "text/text.h"

namespace leaderboard {

namespace {

std::string Number(history::Millis ms) {
    return ms < 0 ? "null" : history::Seconds(ms);
}

std::string StandingRows(const std::vector<history::Standing>& rows, std::size_t limit) {
    std::string json = "[";
    for (std::size_t i = 0; i < rows.size() && i < limit; ++i) {
        const history::Standing& s = rows[i];
        if (i) json += ',';
        json += "{\"rank\":" + std::to_string(i + 1) + ",\"name\":" + JsonString(s.name) +
                ",\"points\":" + std::to_string(s.points) +
                ",\"gamesWon\":" + std::to_string(s.gamesWon) +
                ",\"fastest\":" + Number(s.fastest) +
                ",\"streak\":" + std::to_string(s.longestStreak) + "}";
    }
    return json + "]";
}

constexpr history::Period kPeriods[] = {history::Period::Today, history::Period::ThisWeek,
                                        history::Period::ThisMonth, history::Period::AllTime};

}  // namespace

std::string JsonString(std::string_view cp1252) {
    std::string out = "\"";
    for (char ch : text::Utf8FromCp1252(cp1252)) {
        const auto byte = static_cast<unsigned char>(ch);
        if (ch == '"' || ch == '\\') {
            out += '\\';
            out += ch;
        } else if (byte < 0x20 || ch == '<' || ch == '>' || ch == '&') {
            static const char* hex = "0123456789abcdef";
            out += "\\u00";
            out += hex[byte >> 4];
            out += hex[byte & 15];
        } else {
            out += ch;
        }
    }
    return out + "\"";
}

std::string HtmlEscape(std::string_view cp1252) {
    // As the bot escapes its own lines, and the apostrophe too, so that a
    // name is safe inside an attribute quoted either way.
    std::string out;
    for (const char ch : text::EscapeMarkup(text::Utf8FromCp1252(cp1252))) {
        if (ch == '\'') {
            out += "&#39;";
        } else {
            out += ch;
        }
    }
    return out;
}

std::optional<history::Period> ParsePeriod(std::string_view name) {
    for (history::Period p : kPeriods)
        if (name == PeriodName(p)) return p;
    return std::nullopt;
}

const char* PeriodName(history::Period period) {
    switch (period) {
        case history::Period::Today:
            return "today";
        case history::Period::ThisWeek:
            return "week";
        case history::Period::ThisMonth:
            return "month";
        case history::Period::AllTime:
            return "all";
    }
    return "all";
}

std::string StandingsJson(const history::History& record, history::Period period,
                          std::optional<int> topic, history::Millis now) {
    const auto rows = record.Standings(history::PeriodRange(period, now), topic);
    std::string json = "{\"period\":\"" + std::string(PeriodName(period)) + "\",\"topic\":";
    json += topic ? JsonString(record.Topics()[static_cast<std::size_t>(*topic)]) : "null";
    json += ",\"topics\":[";
    for (std::size_t i = 0; i < record.Topics().size(); ++i)
        json += (i ? "," : "") + JsonString(record.Topics()[i]);
    return json + "],\"rows\":" + StandingRows(rows, 500) + "}";
}

std::string PlayerJson(const history::History& record, const std::string& name,
                       history::Millis now) {
    const auto player = record.FindPlayer(name);
    if (!player) return "{\"found\":false}";
    std::string json = "{\"found\":true,\"name\":" +
                       JsonString(record.Players()[static_cast<std::size_t>(*player)].name) +
                       ",\"periods\":{";
    bool first = true;
    for (history::Period p : kPeriods) {
        const auto s = record.RecordOf(*player, history::PeriodRange(p, now));
        json += std::string(first ? "" : ",") + "\"" + PeriodName(p) +
                "\":{\"points\":" + std::to_string(s.points) +
                ",\"gamesWon\":" + std::to_string(s.gamesWon) +
                ",\"fastest\":" + Number(s.fastest) +
                ",\"streak\":" + std::to_string(s.longestStreak) + "}";
        first = false;
    }
    return json + "}}";
}

std::string GamesJson(const history::History& record, int count) {
    std::string json = "[";
    bool first = true;
    for (const history::GameSummary& g : record.RecentGames(count)) {
        json += std::string(first ? "" : ",") + "{\"game\":" + std::to_string(g.game + 1) +
                ",\"started\":" + std::to_string(g.record.started) + ",\"ended\":" +
                (g.record.ended ? std::to_string(g.record.ended) : std::string("null")) +
                ",\"topic\":" + JsonString(g.record.topic) +
                ",\"scoreLimit\":" + std::to_string(g.record.scoreLimit) +
                ",\"puzzles\":" + std::to_string(g.puzzles) + ",\"winners\":[";
        for (std::size_t i = 0; i < g.record.winners.size(); ++i)
            json +=
                (i ? "," : "") +
                JsonString(record.Players()[static_cast<std::size_t>(g.record.winners[i])].name);
        json += "]}";
        first = false;
    }
    return json + "]";
}

std::string LiveJson(const LiveGame& live) {
    std::string json =
        "{\"puzzle\":" + (live.puzzle.empty() ? "null" : JsonString(live.puzzle)) +
        ",\"secondsLeft\":" + (live.secondsLeft < 0 ? "null" : std::to_string(live.secondsLeft)) +
        ",\"topic\":" + JsonString(live.topic) + ",\"scores\":[";
    for (std::size_t i = 0; i < live.scores.size(); ++i)
        json += (i ? "," : "") + std::string("{\"name\":") + JsonString(live.scores[i].first) +
                ",\"score\":" + std::to_string(live.scores[i].second) + "}";
    return json + "]}";
}

namespace {

constexpr const char* kPageHead = R"(<!DOCTYPE html>
<html lang="en"><head><meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>Leaderboard</title>
<style>
body{font-family:sans-serif;margin:0 auto;max-width:46em;padding:.5em;line-height:1.4}
table{border-collapse:collapse;width:100%}th,td{padding:.3em;border-bottom:1px solid #ccc;text-align:left}
td.n,th.n{text-align:right}nav button{margin:.1em;padding:.4em .8em}nav button[aria-pressed=true]{font-weight:bold}
section{margin-bottom:1.2em}#puzzle{font-size:1.3em;font-family:monospace}a{cursor:pointer;color:#05c}
</style></head><body>
<h1>Leaderboard</h1>
<section id="live" aria-live="polite"><h2>Game in progress</h2>
<p id="puzzle">No puzzle in play.</p><p id="timeleft"></p><ol id="scores"></ol></section>
<section><h2>Standings</h2>
<nav id="periods"><button data-p="today">Today</button><button data-p="week" aria-pressed="true">This week</button><button data-p="month">This month</button><button data-p="all">All time</button>
<label>Topic <select id="topic"><option value="">All topics</option></select></label></nav>
<table><thead><tr><th class="n">#</th><th>Player</th><th class="n">Points</th><th class="n">Games won</th><th class="n">Fastest (s)</th><th class="n">Longest streak</th></tr></thead>
<tbody id="standings">)";

constexpr const char* kPageTail = R"(</tbody></table></section>
<section id="player"><h2>Player</h2><p id="playerinfo">Choose a name in the standings.</p></section>
<section><h2>Recent games</h2><ol id="games"></ol></section>
<script>
"use strict";
let period = "week", left = null, leftAt = 0;
const $ = (id) => document.getElementById(id);
function cell(row, text, numeric) { const td = row.insertCell(); td.textContent = text; if (numeric) td.className = "n"; return td; }
function showStandings(data) {
  const body = $("standings"); body.replaceChildren();
  for (const r of data.rows) {
    const row = body.insertRow(); cell(row, r.rank, true);
    const a = document.createElement("a"); a.textContent = r.name; a.onclick = () => showPlayer(r.name);
    row.insertCell().appendChild(a);
    cell(row, r.points, true); cell(row, r.gamesWon, true);
    cell(row, r.fastest === null ? "" : r.fastest, true); cell(row, r.streak, true);
  }
}
async function loadStandings() {
  const topic = $("topic").value;
  const res = await fetch("/api/standings?period=" + period + (topic ? "&topic=" + encodeURIComponent(topic) : ""));
  if (!res.ok) { $("topic").value = ""; return; }
  const data = await res.json(); showStandings(data);
  const select = $("topic");
  for (const t of data.topics.slice(select.options.length - 1)) select.add(new Option(t, t));
}
async function showPlayer(name) {
  const p = await (await fetch("/api/player?name=" + encodeURIComponent(name))).json();
  const info = $("playerinfo");
  if (!p.found) { info.textContent = "No record."; return; }
  const w = p.periods.week, a = p.periods.all;
  info.textContent = p.name + ": all time " + a.points + " points, " + a.gamesWon + " games won, fastest " +
    (a.fastest === null ? "-" : a.fastest + " s") + ", longest streak " + a.streak + "; this week " + w.points + " points.";
}
async function loadGames() {
  const games = await (await fetch("/api/games")).json(); const list = $("games"); list.replaceChildren();
  for (const g of games) {
    const li = document.createElement("li");
    li.textContent = g.topic + " (" + new Date(g.started).toLocaleString() + "), " + g.puzzles + " puzzles" +
      (g.winners.length ? ", won by " + g.winners.join(", ") : g.ended ? "" : ", in progress");
    list.appendChild(li);
  }
}
function showLive(live) {
  $("puzzle").textContent = live.puzzle === null ? "No puzzle in play." : live.puzzle;
  left = live.secondsLeft; leftAt = Date.now(); tick();
  const list = $("scores"); list.replaceChildren();
  for (const s of live.scores) { const li = document.createElement("li"); li.textContent = s.name + ": " + s.score; list.appendChild(li); }
}
function tick() {
  const t = $("timeleft");
  if (left === null) { t.textContent = ""; return; }
  t.textContent = Math.max(0, left - Math.floor((Date.now() - leftAt) / 1000)) + " s left";
}
for (const b of document.querySelectorAll("#periods button")) b.onclick = () => {
  period = b.dataset.p;
  for (const o of document.querySelectorAll("#periods button")) o.setAttribute("aria-pressed", o === b);
  loadStandings();
};
$("topic").onchange = loadStandings;
setInterval(tick, 1000);
const events = new EventSource("/events");
events.onmessage = (e) => { showLive(JSON.parse(e.data)); loadStandings(); loadGames(); };
loadGames();
</script></body></html>
)";

}  // namespace

std::string Page(const history::History& record, history::Millis now) {
    std::string page = kPageHead;
    const auto rows = record.Standings(history::PeriodRange(history::Period::ThisWeek, now));
    for (std::size_t i = 0; i < rows.size() && i < 500; ++i) {
        const history::Standing& s = rows[i];
        page += "<tr><td class=\"n\">" + std::to_string(i + 1) + "</td><td>" + HtmlEscape(s.name) +
                "</td><td class=\"n\">" + std::to_string(s.points) + "</td><td class=\"n\">" +
                std::to_string(s.gamesWon) + "</td><td class=\"n\">" +
                (s.fastest < 0 ? "" : history::Seconds(s.fastest)) + "</td><td class=\"n\">" +
                std::to_string(s.longestStreak) + "</td></tr>\n";
    }
    return page + kPageTail;
}

}  // namespace leaderboard
