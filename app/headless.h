// The bot without a window: the same session::Bot, its dialogs turned into
// log lines on standard error, started from a settings file.
#pragma once

#include "app/command_line.h"

// Runs until SIGTERM or SIGINT (0 after a clean sign-off) or until the server
// refuses the screen name for good (3); 1 when it cannot start.
int RunHeadless(int argc, char** argv, const CommandLine& line);
