#!/usr/bin/env bash
# Builds the Debian package from a clean checkout of the committed tree,
# installs it with apt and runs the installed program (as root on Debian 12;
# the package is removed again afterwards unless --keep is given).
#
#   scripts/package-test.sh [--keep]
set -euo pipefail
cd "$(dirname "$0")/.."
keep=${1:-}

./scripts/install-deps.sh
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# A clean checkout: what is committed, nothing from the working folder.
git archive --format=tar HEAD | tar -x -C "$work"
cmake -S "$work" -B "$work/build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DSCRAMBLER_BENCH=OFF
cmake --build "$work/build" --target vexmor-scrambler
(cd "$work/build" && cpack -G DEB)
deb=$(ls "$work"/build/vexmor-scrambler_*.deb)
echo "=== Contents of $(basename "$deb")"
dpkg-deb --contents "$deb"

as_root=()
[ "$(id -u)" -ne 0 ] && as_root=(sudo)
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y "$deb"
version=$(/usr/bin/vexmor-scrambler --version)
echo "Installed: $version"
test -f /usr/share/applications/vexmor-scrambler.desktop
test -f /usr/share/icons/hicolor/scalable/apps/vexmor-scrambler.svg
test -f /usr/share/vexmor-scrambler/topics/animals.csv
systemd-analyze verify /usr/lib/systemd/system/vexmor-scrambler.service 2>/dev/null ||
    test -f /usr/lib/systemd/system/vexmor-scrambler.service
[ "$version" = "vexmor-scrambler 2.0.0" ]
if [ "$keep" != "--keep" ]; then
    "${as_root[@]}" apt-get remove -y vexmor-scrambler
fi
echo "The package installs and runs."
