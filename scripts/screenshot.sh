#!/usr/bin/env bash
# Takes a screenshot of the real window under a virtual X display (Xvfb):
# docs/window.png. Installs Xvfb, ImageMagick and the X utilities if missing.
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/install-deps.sh
need=()
for p in xvfb imagemagick x11-utils; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || need+=("$p")
done
if ((${#need[@]})); then
    as_root=()
    [ "$(id -u)" -ne 0 ] && as_root=(sudo)
    "${as_root[@]}" apt-get update
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y "${need[@]}"
fi
./scripts/build.sh >/dev/null
out=${1:-docs/window.png}
timeout --kill-after=10 60 xvfb-run -a -s "-screen 0 900x640x24" bash -c '
    ./build/app/vexmor-scrambler & pid=$!
    trap "kill \$pid 2>/dev/null || true" EXIT
    for _ in $(seq 100); do
        xwininfo -name "Vexmor Scrambler 2.0" >/dev/null 2>&1 && break
        sleep 0.1
    done
    sleep 1
    import -window root -crop 780x560+0+0 "'"$out"'"
'
echo "Wrote $out"
