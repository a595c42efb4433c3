#!/usr/bin/env bash
# The soak run: the bot plays against the local server for a bounded time
# (20 minutes unless a number of seconds is given) with ten chatty players,
# then checks what the room received, memory and answer times.
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/install-deps.sh
./scripts/build.sh >/dev/null
seconds=${1:-1200}
# The soak ends its own server when it ends; the timeout bounds a soak that hangs.
exec timeout --kill-after=30 $((seconds + 300)) ./build/tests/soak --seconds "$seconds" \
    --topics topics "${@:2}"
