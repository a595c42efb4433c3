#!/usr/bin/env bash
# The soak run: the bot plays against the local server for a bounded time
# (20 minutes unless a number of seconds is given) with ten chatty players,
# then checks what the room received, memory and answer times.
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/install-deps.sh
./scripts/build.sh >/dev/null
exec ./build/tests/soak --seconds "${1:-1200}" --topics topics "${@:2}"
