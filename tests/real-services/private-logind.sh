# Sourced by the real-service scripts: starts a private system bus in "$dir" and the real
# systemd-logind on it, and stops both (and whatever else "$pids" names) when the script exits.
# /run must already be a tmpfs of the script's own mount namespace.
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
