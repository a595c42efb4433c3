#!/usr/bin/env bash
# Measures the time from starting the program to its window being on screen,
# under a virtual X display, over a few runs. Needs what screenshot.sh
# installs; run that once first.
set -euo pipefail
cd "$(dirname "$0")/.."
runs=${1:-5}
xvfb-run -a -s "-screen 0 900x640x24" bash -c '
    for run in $(seq '"$runs"'); do
        start=$(date +%s%N)
        ./build/app/vexmor-scrambler & pid=$!
        until xwininfo -name "Vexmor Scrambler 2.0" 2>/dev/null | grep -q "Map State: IsViewable"; do
            sleep 0.005
        done
        end=$(date +%s%N)
        echo "run $run: $(( (end - start) / 1000000 )) ms to a shown window"
        kill "$pid"; wait "$pid" 2>/dev/null || true
    done
'
