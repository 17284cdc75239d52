#!/bin/sh
# Shows the release build on a virtual display while sleep inhibitors are held: a stand-in logind
# on a private system bus and stand-in GNOME and KDE session services on a private session bus
# (the test suite's fake services), and saves a screenshot. Usage: sh scripts/screenshot-inhibitors.sh [OUT.png]
set -eu
top=$(cd "$(dirname "$0")/.." && pwd)
build=$top/build/release
out=${1:-$build/lullwick-inhibitors.png}
stage=$(mktemp -d)
pids=""
trap 'kill $pids 2>/dev/null; rm -rf "$stage"' EXIT
for bus in system session; do
    cat >"$stage/$bus.conf" <<CONF
<busconfig><type>session</type><listen>unix:path=$stage/$bus</listen><auth>EXTERNAL</auth>
<policy context="default"><allow send_destination="*"/><allow receive_sender="*"/><allow own="*"/></policy></busconfig>
CONF
    dbus-daemon --nofork --config-file="$stage/$bus.conf" &
    pids="$pids $!"
done
sleep 0.5
export DBUS_SYSTEM_BUS_ADDRESS="unix:path=$stage/system" DBUS_SESSION_BUS_ADDRESS="unix:path=$stage/session"
"$build/tests/fake-power-services" >/dev/null &
pids="$pids $!"
sleep 0.5
xvfb-run -a -s "-screen 0 760x600x24" sh -c \
    "'$build/bin/lullwick' & pid=\$!; sleep 4; '$build/bin/grab_screen' '$out'; kill \$pid; wait \$pid 2>/dev/null || true"
echo "screenshot in $out"
