#include "app/command_line.h"

#include <cctype>

namespace {

// 1-65535, or 0 for anything else.
int PortNumber(const std::string& text) {
    if (text.empty() || text.size() > 5) return 0;
    int port = 0;
    for (const char c : text) {
        if (!std::isdigit(static_cast<unsigned char>(c))) return 0;
        port = port * 10 + (c - '0');
    }
    return port <= 65535 ? port : 0;
}

}  // namespace

CommandLine ParseCommandLine(const std::vector<std::string>& args) {
    CommandLine line;
    std::vector<std::string> unknown;
    for (std::size_t i = 1; i < args.size(); ++i) {
        const std::string& arg = args[i];
        auto value = [&](std::string& into) {
            if (i + 1 >= args.size()) {
                line.error = arg + " needs a value";
                return;
            }
            into = args[++i];
        };
        if (arg == "--help" || arg == "-h") {
            line.help = true;
        } else if (arg == "--version" || arg == "-V") {
            line.version = true;
        } else if (arg == "--headless") {
            line.headless = true;
        } else if (arg == "--settings") {
            value(line.settingsFile);
        } else if (arg == "--password-file") {
            value(line.passwordFile);
        } else if (arg == "--leaderboard-address") {
            value(line.leaderboardAddress);
        } else if (arg == "--leaderboard-port") {
            std::string port;
            value(port);
            line.leaderboardPort = PortNumber(port);
            if (line.leaderboardPort == 0 && line.error.empty()) {
                line.error = "--leaderboard-port needs a number from 1 to 65535";
            }
        } else {
            unknown.push_back(arg);
        }
    }
    if (!line.error.empty() || line.help || line.version) return line;
    if (line.headless) {
        if (!unknown.empty()) {
            line.error = "unknown option " + unknown.front();
        } else if (line.settingsFile.empty()) {
            line.error = "--headless needs --settings FILE";
        }
    } else if (!line.settingsFile.empty() || !line.passwordFile.empty()) {
        line.error = "--settings and --password-file go with --headless";
    }
    return line;
}

std::string UsageText(const std::string& program) {
    return "Usage: " + program +
           " [--headless --settings FILE [--password-file FILE]]\n"
           "       [--leaderboard-address ADDRESS] [--leaderboard-port PORT]\n"
           "A word game bot for AIM chat rooms.\n"
           "\n"
           "Without options it opens its window. With --headless it runs without any\n"
           "display: it signs on with the screen name, server and port of the settings\n"
           "FILE, joins its room, loads its topics and plays, signing on again by itself\n"
           "when the connection is lost. The log goes to standard error.\n"
           "\n"
           "  --headless            run without a window\n"
           "  --settings FILE       the settings file to play by (with --headless)\n"
           "  --password-file FILE  read the password from the first line of FILE;\n"
           "                        otherwise it comes from the environment variable " +
           std::string(kPasswordVariable) +
           "\n"
           "  --leaderboard-address ADDRESS\n"
           "                        serve the leaderboard page on ADDRESS (127.0.0.1)\n"
           "  --leaderboard-port PORT\n"
           "                        serve the leaderboard page on PORT (8190)\n"
           "  -h, --help            show this text and exit\n"
           "  -V, --version         show the version and exit\n"
           "\n"
           "Without a window, SIGTERM or SIGINT signs off and exits; SIGHUP reloads the\n"
           "topic files. Exit status: 0 after a sign-off, 1 when it cannot start, 2 for a\n"
           "wrong command line, 3 when the server refuses the screen name for good.\n";
}
