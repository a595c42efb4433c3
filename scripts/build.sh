#!/usr/bin/env bash
# Configures and builds into build/ (or the folder given as BUILD_DIR), with
# warnings as errors.
set -euo pipefail
cd "$(dirname "$0")/.."
build_dir=${BUILD_DIR:-build}
cmake -S . -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DSCRAMBLER_WERROR=ON "$@"
cmake --build "$build_dir"
