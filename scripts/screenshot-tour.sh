#!/bin/sh
# Starts the release build on a virtual display with a scripted pmset beside it, walks through the
# tabs by their labels over the accessibility bus, as a person with a screen reader would, and
# saves a screenshot of the window on each. Usage: sh scripts/screenshot-tour.sh [OUT_DIR]
set -eu
top=$(cd "$(dirname "$0")/.." && pwd)
bin=$top/build/release/bin
out=$(mkdir -p "${1:-$top/build/release/tour}" && cd "${1:-$top/build/release/tour}" && pwd)
stage=$(mktemp -d)
trap 'rm -rf "$stage"' EXIT
# The program looks for pmset beside itself, so a copy of it next to the fake finds the fake.
cp "$bin/lullwick" "$stage/lullwick"
ln -s "$top/tests/fake-tools/pmset" "$stage/lullwick-pmset"
cp "$top/tests/fixtures/assertions-typical.txt" "$stage/assertions.out"
cp "$top/tests/fixtures/settings-typical.txt" "$stage/settings.out"
export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 QT_ACCESSIBILITY=1 NO_AT_BRIDGE=0
dbus-run-session -- xvfb-run -a -s "-screen 0 760x600x24" sh -c \
    "'$stage/lullwick' & pid=\$!; /usr/bin/python3 '$top/scripts/tour.py' '$out' '$bin/grab_screen'; status=\$?; kill \$pid; exit \$status"
ls "$out"
