#include "history/chat_lines.h"

namespace history {

std::string Seconds(Millis duration) {
    const Millis tenths = (duration + 50) / 100;
    return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10);
}

std::string TopLine(const History& record, Millis now) {
    const std::vector<Standing> rows = record.Standings(PeriodRange(Period::ThisWeek, now));
    if (rows.empty()) return "No answers have been credited this week yet.";
    std::string line = "<B><U>TOP THIS WEEK</U></B>: ";
    for (std::size_t i = 0; i < rows.size() && i < 5; ++i) {
        if (i > 0) line += ", ";
        line += rows[i].name + " [" + std::to_string(rows[i].points) + "]";
    }
    return line;
}

std::string StatsLine(const History& record, const std::string& name, Millis now) {
    const std::optional<int> player = record.FindPlayer(name);
    // The name typed is not echoed: it came from the chat and could carry markup.
    if (!player) return "No answers have been credited to that name yet.";
    const Standing all = record.RecordOf(*player, PeriodRange(Period::AllTime, now));
    const Standing week = record.RecordOf(*player, PeriodRange(Period::ThisWeek, now));
    std::string line = all.name + ": " + std::to_string(all.points) + " points, " +
                       std::to_string(all.gamesWon) + " games won";
    if (all.fastest >= 0) line += ", fastest answer " + Seconds(all.fastest) + " s";
    line += ", longest streak " + std::to_string(all.longestStreak) + "; this week " +
            std::to_string(week.points) + " points.";
    return line;
}

}  // namespace history
