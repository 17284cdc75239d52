#!/bin/sh
# Runs the real systemd-logind on a private system bus with a logind.conf of its own (the lid
# ignored, suspend after 20 minutes idle), a /sys/power that offers suspend-to-idle only,
# suspend.target masked in /etc and hibernate.target in /run, a lid switch, and a program holding
# the lid lock; then prints what `BINDIR/lullwick-pmset --sleep-evidence` says, a line "----", and
# `BINDIR/lullwick-report --json`. Needs root and a private mount namespace of its own:
#     unshare -m --propagation private sh logind-sleep-policy.sh WORKDIR BINDIR
# Every mount below lives and dies with that namespace; the machine's own files are untouched.
set -eu
dir=$1
bin=$2

mount -t tmpfs lullwick-run /run
mkdir -p /run/systemd/inhibit /run/systemd/seats /run/systemd/users /run/systemd/sessions /run/systemd/system
mount -t tmpfs lullwick-power /sys/power
printf 'freeze mem disk\n' >/sys/power/state
printf '[s2idle]\n' >/sys/power/mem_sleep
mount -t tmpfs lullwick-units /etc/systemd/system
ln -s /dev/null /etc/systemd/system/suspend.target
ln -s /dev/null /run/systemd/system/hibernate.target
mount -t tmpfs lullwick-input /sys/class/input
mkdir /sys/class/input/input0
printf 'Lid Switch\n' >/sys/class/input/input0/name
printf '[Login]\nHandleLidSwitch=ignore\nHandleLidSwitchExternalPower=ignore\nIdleAction=suspend\nIdleActionSec=20min\n' \
    >"$dir/logind.conf"
mount --bind "$dir/logind.conf" /etc/systemd/logind.conf
mount -t tmpfs lullwick-conf /etc/systemd/logind.conf.d 2>/dev/null || true

. "$(dirname "$0")/private-logind.sh"

systemd-inhibit --what=handle-lid-switch --mode=block --who="Lid Tester" --why="Handling the lid itself" \
    sleep 600 >/dev/null 2>&1 &
pids="$pids $!"
tries=0
until systemd-inhibit --list --no-pager 2>/dev/null | grep -q '^1 inhibitors listed' || [ $tries -ge 100 ]; do
    sleep 0.1
    tries=$((tries + 1))
done

"$bin/lullwick-pmset" --sleep-evidence
echo ----
env -u XDG_CURRENT_DESKTOP "$bin/lullwick-report" --json
