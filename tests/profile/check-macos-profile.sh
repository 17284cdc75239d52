#!/bin/sh
# The Mac program built on Linux (cmake --preset macos-profile, LULLWICK_PROFILE=macos): its
# report prints the window's Summary, Details and Restart copies, here read from fake pmset, ps
# and log put at the Mac's fixed paths (/usr/bin/pmset, /bin/ps, /usr/bin/log) inside a private
# mount namespace. The expected texts are the Mac program's own wording.
# Usage: check-macos-profile.sh SOURCE_DIR. Needs root for the namespace: exits 77 (skipped)
# without it.
set -eu
src=$(cd "$1" && pwd)
if [ "$(id -u)" -ne 0 ] || ! command -v unshare >/dev/null; then
    echo "needs root and unshare for a private mount namespace; skipped"
    exit 77
fi
# A container without CAP_SYS_ADMIN, or a chroot whose / is no mount point, allows none.
if ! unshare -m --propagation private true 2>/dev/null; then
    echo "no private mount namespace allowed here; skipped"
    exit 77
fi

cd "$src"
cmake --preset macos-profile >/dev/null
cmake --build --preset macos-profile --target lullwick-report
report="$src/build/macos-profile/bin/lullwick-report"

work=$(mktemp -d)
mkdir "$work/real" "$work/bin" "$work/none"
cleanup() {
    # Only what this script made: never anything reached through a mount.
    rm -f "$work"/bin/* "$work"/bin/.[!.]* "$work"/*.txt "$work/inside.sh" 2>/dev/null || true
    rmdir "$work/bin" "$work/real" "$work/none" "$work" 2>/dev/null || true
}
trap cleanup EXIT

# A coreaudiod assertion made for Spotify, then a software update with loginwindow's complaint.
printf '%s\n' 'Assertion status system-wide:' \
    '   PreventUserIdleSystemSleep     1' \
    'Listed by owning process:' \
    '   pid 312(coreaudiod): [0x0000123400019a2b] 00:12:31 PreventUserIdleSystemSleep named: "com.apple.audio.context.preventuseridlesleep"' \
    '	Created for PID: 4711.' >"$work/summary-listing.txt"
printf '%s\n' 'Listed by owning process:' \
    '   pid 611(softwareupdated): [0x000013a90001a2f4] 00:14:51 SoftwareUpdateTask named: "com.apple.softwareupdate.installing"' \
    >"$work/restart-listing.txt"
printf '%s\n' '2026-11-24 01:59:10.123 I  loginwindow[412:1a2b] "TextEdit" refused to quit' >"$work/log.txt"

cat >"$work/inside.sh" <<EOF
set -eu
mount --make-rprivate /
# /usr/bin as it is, plus the fake tools: every program stays reachable through a link to the
# real folder, mounted aside. /bin is /usr/bin on Debian 12, so /bin/ps is the fake too.
mount --bind /usr/bin "$work/real"
for f in "$work"/real/*; do ln -s "\$f" "$work/bin/\${f##*/}"; done
for tool in pmset ps log; do
    rm -f "$work/bin/\$tool"
    cp "$src/tests/fake-tools/\$tool" "$work/bin/\$tool"
done
cp "$src/tests/fixtures/settings-typical.txt" "$work/bin/settings.out"
printf '4711\t/Applications/Spotify.app/Contents/MacOS/Spotify\n' >"$work/bin/ps.table"
mount --bind "$work/bin" /usr/bin
[ -x /usr/bin/pmset ] && [ -x /bin/ps ] && [ -x /usr/bin/log ]
# No desktop applications, so no running-apps finding that would differ between machines.
export XDG_DATA_HOME="$work/none" XDG_DATA_DIRS="$work/none"

cp "$work/summary-listing.txt" /usr/bin/assertions.out
"$report" summary >"$work/summary.txt"
"$report" details >"$work/details.txt"
cp "$work/restart-listing.txt" /usr/bin/assertions.out
cp "$work/log.txt" /usr/bin/log.out
"$report" restart >"$work/restart.txt"
"$report" --help >"$work/help.txt"
EOF
unshare -m sh "$work/inside.sh"

failed=0
# Dates follow the locale; the lines that carry one are compared up to the date.
check() { # name expected-file
    sed -e 's/^\(Captured\|Checked\) .*/\1 <date>/' "$work/$1.txt" >"$work/$1-shown.txt"
    if ! diff -u "$2" "$work/$1-shown.txt"; then
        echo "the Mac profile's $1 copy differs from the Mac program's"
        failed=1
    fi
}

cat >"$work/summary-expected.txt" <<'EOF'
Lullwick—Summary
Captured <date>

Idle system sleep
  • Spotify is playing or holding a session  (held 00:12:31)
    coreaudiod (pid 312)—Keeping the Mac awake while otherwise idle.
    Created for Spotify (pid 4711)
    Check the “Created for” process. If it’s an audio routing tool you intentionally have running, this is expected; otherwise quit or pause the responsible app.

All system sleep
  (not blocked)

Display sleep
  (not blocked)
EOF
check summary "$work/summary-expected.txt"

{
    printf '=== pmset -g assertions ===\n'
    cat "$work/summary-listing.txt"
    printf '\n=== pmset -g ===\n'
    cat "$src/tests/fixtures/settings-typical.txt"
} >"$work/details-expected.txt"
check details "$work/details-expected.txt"

cat >"$work/restart-expected.txt" <<'EOF'
Lullwick — Restart analysis
Checked <date>

Found a likely cause that's holding up restart.

[Likely] A macOS update is installing or staging right now
  Source: Software update
  The system is holding a SoftwareUpdateTask power assertion (softwareupdated). macOS won't restart cleanly while an update is mid-install — it wants to finish writing the update first, which can look like a stuck or refused restart.
  → Open System Settings → General → Software Update and let any in-progress update finish, then restart again. If it's stuck downloading, pausing and resuming the update often unsticks it.

[Possible] loginwindow logged an interrupted quit or restart
  Source: loginwindow log (last 10 min)
  While orchestrating a recent restart or logout, loginwindow recorded the following. An app named here is a strong candidate for what blocked the restart:
  
  2026-11-24 01:59:10.123 I  loginwindow[412:1a2b] "TextEdit" refused to quit
  → If you recognize an app above, switch to it and look for an unsaved-document dialog or an open sheet, then save or close it and try restarting again.
EOF
check restart "$work/restart-expected.txt"

if ! grep -qF 'Explains what keeps this Mac awake, or what may hold up a restart, in plain language.' "$work/help.txt"; then
    cat "$work/help.txt"
    echo "the Mac profile's report does not describe itself in the Mac's words"
    failed=1
fi
[ "$failed" -eq 0 ] && echo "the Mac profile's Summary, Details and Restart copies are the Mac program's"
exit "$failed"
