#!/bin/sh
# Writes the journal entries of EXPORT (journal export format) into a journal file with the real
# systemd-journal-remote, puts that file where the system journal lives, and runs the real
# journalctl with the remaining arguments on it. Needs root and a mount namespace of its own:
#     unshare -m --propagation private sh journal-of-a-previous-boot.sh [--as=USER] EXPORT ARGUMENT...
# A tmpfs over the journal folders hides the machine's own journal. With --as, journalctl runs as
# USER, outside the groups that may read the system journal.
set -eu
user=
case $1 in --as=*) user=${1#--as=}; shift ;; esac
export_file=$1
shift
machine=$(cat /etc/machine-id)

mount -t tmpfs lullwick-journal /var/log/journal
[ ! -d /run/log/journal ] || mount -t tmpfs lullwick-runtime-journal /run/log/journal
mkdir -p "/var/log/journal/$machine"
/lib/systemd/systemd-journal-remote --output="/var/log/journal/$machine/system.journal" "$export_file" 2>/dev/null
[ -n "$user" ] || exec /usr/bin/journalctl "$@"
chmod 0640 "/var/log/journal/$machine/system.journal"
exec /usr/bin/setpriv --reuid="$user" --regid=nogroup --clear-groups /usr/bin/journalctl "$@"
