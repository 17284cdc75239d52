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

. "$(dirname "$0")/private-logind.sh"

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
