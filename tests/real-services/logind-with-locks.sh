#!/bin/sh
# Runs the real systemd-logind on a private system bus, takes four locks against it with
# systemd-inhibit (two on shutdown, one blocking and one delaying; one on sleep and one on idle,
# each around a command no catalog knows), and prints what `STANDIN ARGUMENTS...` says
# (`--restart-evidence` when no arguments are given).
# Needs root and a private mount namespace of its own: run it as
#     unshare -m --propagation private sh logind-with-locks.sh WORKDIR STANDIN [ARGUMENTS...]
# A tmpfs on /run keeps logind's records away from the machine's own.
set -eu
dir=$1
standin=$2
shift 2
[ $# -gt 0 ] || set -- --restart-evidence

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
systemd-inhibit --what=sleep --who=Backup --why="Backing up home" sleep 600 >/dev/null 2>&1 &
pids="$pids $!"
systemd-inhibit --what=idle --who="Video Player" --why="Playing “Le Café” full screen" sleep 600 >/dev/null 2>&1 &
pids="$pids $!"
tries=0
until systemd-inhibit --list --no-pager 2>/dev/null | grep -q '^4 inhibitors listed' || [ $tries -ge 100 ]; do
    sleep 0.1
    tries=$((tries + 1))
done

"$standin" "$@"
