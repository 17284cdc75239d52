#!/bin/sh
# Runs the real systemd-logind on a private system bus, takes two shutdown locks against it with
# systemd-inhibit (one blocking, one delaying), and prints what `STANDIN --restart-evidence` says.
# Needs root and a private mount namespace of its own: run it as
#     unshare -m --propagation private sh logind-with-locks.sh WORKDIR STANDIN
# A tmpfs on /run keeps logind's records away from the machine's own.
set -eu
dir=$1
standin=$2

mount -t tmpfs lullwick-run /run
mkdir -p /run/systemd/inhibit /run/systemd/seats /run/systemd/users /run/systemd/sessions

cat >"$dir/system.conf" <<END
<busconfig><type>system</type><listen>unix:path=$dir/system_bus</listen><auth>EXTERNAL</auth>
<policy context="default"><allow user="*"/><allow own="*"/><allow send_destination="*"/>
<allow receive_sender="*"/></policy></busconfig>
END
pids=""
cleanup() {
    # shellcheck disable=SC2086
    [ -z "$pids" ] || kill $pids 2>/dev/null || true
    wait
}
trap cleanup EXIT

dbus-daemon --nofork --config-file="$dir/system.conf" >/dev/null 2>&1 &
pids="$pids $!"
export DBUS_SYSTEM_BUS_ADDRESS="unix:path=$dir/system_bus"
# Each wait gives up after about ten seconds; the test then sees too few lines and says so.
tries=0
until [ -S "$dir/system_bus" ] || [ $tries -ge 100 ]; do sleep 0.1; tries=$((tries + 1)); done

/lib/systemd/systemd-logind >"$dir/logind.log" 2>&1 &
pids="$pids $!"
tries=0
until busctl --system --no-pager --list status org.freedesktop.login1 >/dev/null 2>&1 || [ $tries -ge 100 ]; do
    sleep 0.1
    tries=$((tries + 1))
done

systemd-inhibit --what=shutdown --mode=block --who="Backup Tool" --why="Copying files" sleep 600 >/dev/null 2>&1 &
pids="$pids $!"
systemd-inhibit --what=shutdown:sleep --mode=delay --who="Unattended Upgrades Shutdown" \
    --why="Stop ongoing upgrades" sleep 600 >/dev/null 2>&1 &
pids="$pids $!"
tries=0
until systemd-inhibit --list --no-pager 2>/dev/null | grep -q '^2 inhibitors listed' || [ $tries -ge 100 ]; do
    sleep 0.1
    tries=$((tries + 1))
done

"$standin" --restart-evidence
