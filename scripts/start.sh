#!/bin/sh
# Starts Lullwick from the release build. Where there is no display (a server, a container), the
# window runs on a virtual display for a few seconds and a screenshot of it is saved instead.
set -eu
bin=$(pwd)/build/release/bin
if [ -n "${DISPLAY:-}" ] || [ -n "${WAYLAND_DISPLAY:-}" ]; then
    exec "$bin/lullwick"
fi
shot=$(pwd)/build/release/lullwick.png
xvfb-run -a -s "-screen 0 760x600x24" sh -c \
    "'$bin/lullwick' & pid=\$!; sleep 4; '$bin/grab_screen' '$shot'; kill \$pid; wait \$pid 2>/dev/null || true"
echo "There is no display here, so Lullwick ran on a virtual one: screenshot in $shot"
