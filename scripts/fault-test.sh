#!/usr/bin/env bash
# The fault run: the bot plays the local server while the server cuts it off
# every 20 seconds (connection reset, the server's sign-off frame as it stops,
# a killed server process, in turn) for five minutes, or the time given; it checks that the
# bot comes back to the room each time, that the game goes on, and that the
# room receives every line the bot sent exactly once and in order, and
# reports the time from each outage to the bot's first line back.
#
#   scripts/fault-test.sh [seconds]
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-300}
shift || true
./scripts/build.sh
QT_QPA_PLATFORM=offscreen exec timeout --kill-after=30 $((seconds + 300)) \
    ./build/tests/soak --seconds "$seconds" --every 20 --topics topics "$@"
