// The program's command line: the window by default, or the bot without any
// display (--headless), driven by a settings file.
#pragma once

#include <string>
#include <vector>

struct CommandLine {
    bool help = false;
    bool version = false;
    bool headless = false;
    std::string settingsFile;
    std::string passwordFile;
    // Where the leaderboard page listens.
    std::string leaderboardAddress = "127.0.0.1";
    int leaderboardPort = 8190;
    std::string error;  // set when the line cannot be followed
};

// Reads the options the program knows; anything else is left to Qt (in the
// window) or refused (without one).
CommandLine ParseCommandLine(const std::vector<std::string>& args);

std::string UsageText(const std::string& program);

// The environment variable that may hold the password.
inline constexpr const char* kPasswordVariable = "VEXMOR_PASSWORD";
