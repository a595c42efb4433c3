#!/usr/bin/env bash
# Installs what is missing, builds, and starts the local OSCAR server on
# 127.0.0.1 (port 5190, or the one given with --port N).
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/install-deps.sh
./scripts/build.sh
exec ./build/localserver/oscar-test-server "$@"
