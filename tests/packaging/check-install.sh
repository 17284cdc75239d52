#!/bin/sh
# Installs the build into a scratch prefix and checks that a desktop finds and accepts what it needs.
set -eu
build=$1
prefix=$(mktemp -d)
trap 'rm -rf "$prefix"' EXIT
cmake --install "$build" --prefix "$prefix" >/dev/null
id=io.github.lullwick.Lullwick
for f in bin/lullwick bin/lullwick-pmset bin/lullwick-report share/man/man1/lullwick-report.1 share/applications/$id.desktop share/metainfo/$id.metainfo.xml \
    share/icons/hicolor/scalable/apps/$id.svg; do
    [ -e "$prefix/$f" ] || { echo "not installed: $f"; exit 1; }
done
desktop-file-validate "$prefix/share/applications/$id.desktop"
appstreamcli validate --no-net "$prefix/share/metainfo/$id.metainfo.xml"
