#!/bin/sh
# Installs the build into a scratch prefix and checks that a desktop finds and accepts what it needs.
set -eu
build=$1
prefix=$(mktemp -d)
trap 'rm -rf "$prefix"' EXIT
cmake --install "$build" --prefix "$prefix" >/dev/null
id=io.github.lullwick.Lullwick
for f in bin/lullwick bin/lullwick-pmset bin/lullwick-report share/man/man1/lullwick.1.gz share/man/man1/lullwick-pmset.1.gz \
    share/man/man1/lullwick-report.1.gz share/applications/$id.desktop share/metainfo/$id.metainfo.xml \
    share/icons/hicolor/scalable/apps/$id.svg share/doc/lullwick/copyright share/doc/lullwick/changelog.Debian.gz \
    lib/systemd/system/lullwick-metrics.service lib/systemd/system/lullwick-metrics.timer; do
    [ -e "$prefix/$f" ] || { echo "not installed: $f"; exit 1; }
done
desktop-file-validate "$prefix/share/applications/$id.desktop"
appstreamcli validate --no-net "$prefix/share/metainfo/$id.metainfo.xml"
for page in lullwick lullwick-pmset lullwick-report; do
    # Compressed without a name or time stamp (gzip -n), so every build gives the same bytes.
    [ "$(od -An -tx1 -j4 -N4 "$prefix/share/man/man1/$page.1.gz" | tr -d ' ')" = 00000000 ] ||
        { echo "$page.1.gz carries a time stamp"; exit 1; }
done
