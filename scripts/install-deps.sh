#!/usr/bin/env bash
# Installs everything the program needs to build, run and test, from Debian's
# packages only. Safe to run again: packages already present are left alone,
# and when nothing is missing apt is not touched at all.
set -euo pipefail

packages=(
    cmake ninja-build g++ pkg-config dpkg-dev
    qt6-base-dev qt6-base-private-dev libgl-dev libqt6sql6-sqlite
    libgtest-dev libgmock-dev libbenchmark-dev
    clang libclang-rt-14-dev
    chromium
)

missing=()
for p in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$p")
    fi
done

if ((${#missing[@]} == 0)); then
    echo "All build dependencies are installed."
    exit 0
fi

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    as_root=(sudo)
fi
echo "Installing: ${missing[*]}"
"${as_root[@]}" apt-get update
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y "${missing[@]}"
