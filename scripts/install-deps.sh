#!/bin/sh
# Installs the Debian 12 packages Lullwick builds, tests and runs with. Asks apt only when
# something is missing, so a second run on a ready machine takes no time and downloads nothing.
set -eu

# dbus-daemon: the pmset stand-in's tests start private buses (never dbus-x11, whose autolaunch
# would start a session bus behind the tests' back). systemd: the restart analysis reads the last
# shutdown with journalctl, and tests run the real systemd-logind and systemd-inhibit, and the real
# journalctl on journal files that systemd-journal-remote writes. libglib2.0-bin and
# dconf-gsettings-backend: the sleep check reads GNOME's, Cinnamon's and MATE's automatic suspend
# with gsettings, and its test sets those keys with the real gsettings and dconf. dpkg-dev, file
# and lintian: the Debian package is made by CPack (dependencies from dpkg-shlibdeps, which needs
# file) and checked.
packages="cmake ninja-build g++ clang libclang-rt-14-dev pkg-config dpkg-dev file lintian
qt6-base-dev qt6-svg-dev qcoro-qt6-dev libicu-dev libbenchmark-dev
fonts-dejavu-core procps dbus-daemon systemd systemd-journal-remote desktop-file-utils appstream
xvfb xauth dbus at-spi2-core python3-pyatspi libglib2.0-bin dconf-gsettings-backend"

missing=""
for p in $packages; do
    if ! dpkg-query -W -f '${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
        missing="$missing $p"
    fi
done

if [ -z "$missing" ]; then
    exit 0
fi

if [ "$(id -u)" -ne 0 ]; then
    SUDO=sudo
else
    SUDO=
fi
echo "Installing:$missing"
$SUDO apt-get update -qq
# shellcheck disable=SC2086
DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq --no-install-recommends $missing
