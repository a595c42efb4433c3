#!/usr/bin/env bash
# Measures the time from starting the program to its window being on screen,
# under a virtual X display, over a few runs. Needs what screenshot.sh
# installs; run that once first. Every wait is bounded: a run whose window is
# not seen within 20 seconds is reported and ended, and the whole measurement
# ends after two minutes whatever happens.
set -euo pipefail
cd "$(dirname "$0")/.."
runs=${1:-5}
timeout --kill-after=10 120 xvfb-run -a -s "-screen 0 900x640x24" bash -c '
    trap "kill \$pid 2>/dev/null || true" EXIT
    for run in $(seq '"$runs"'); do
        start=$(date +%s%N)
        ./build/app/vexmor-scrambler & pid=$!
        shown=no
        deadline=$(( start + 20000000000 ))
        while [ "$(date +%s%N)" -lt "$deadline" ]; do
            if xwininfo -name "Vexmor Scrambler 2.0" 2>/dev/null | grep -q "Map State: IsViewable"; then
                shown=yes
                break
            fi
            kill -0 "$pid" 2>/dev/null || break
            sleep 0.005
        done
        end=$(date +%s%N)
        if [ "$shown" = yes ]; then
            echo "run $run: $(( (end - start) / 1000000 )) ms to a shown window"
        else
            echo "run $run: no window seen after $(( (end - start) / 1000000 )) ms"
        fi
        kill "$pid" 2>/dev/null || true
        wait "$pid" 2>/dev/null || true
    done
'
