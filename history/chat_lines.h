// The room's answers to "/top" and "/stats NAME", one line each.
#pragma once

#include <string>

#include "history/history.h"

namespace history {

// This week's best five, "<B><U>TOP THIS WEEK</U></B>: Ann [12], Bob [7]".
std::string TopLine(const History& record, Millis now);

// One player's record: all time, and this week's points. `name` is compared
// as the game compares screen names.
std::string StatsLine(const History& record, const std::string& name, Millis now);

// Tenths of a second, "1.4".
std::string Seconds(Millis duration);

}  // namespace history
