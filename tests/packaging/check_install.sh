#!/usr/bin/env bash
# Installs the build into a staging folder and checks that every file of the
# desktop integration is there: programs, desktop entry, metainfo, icons, man page;
# and that the installed command line reads a workbook through the installed
# reader, not the one in the build tree.
set -euo pipefail
cmake=$1
build=$2
stage=$3
rm -rf "$stage"
"$cmake" --install "$build" --prefix "$stage" >/dev/null
status=0
expect() {
  [ -e "$stage/$1" ] || { echo "not installed: $1"; status=1; }
}
for program in bin/vireon bin/vireon-cli libexec/vireon/vireon-workbook-reader; do
  expect "$program"
  [ ! -e "$stage/$program" ] || [ -x "$stage/$program" ] || { echo "not executable: $program"; status=1; }
done
expect share/applications/org.vireon.Vireon.desktop
expect share/metainfo/org.vireon.Vireon.metainfo.xml
for size in 16 22 24 32 48 64 128 256; do
  icon="share/icons/hicolor/${size}x${size}/apps/org.vireon.Vireon.png"
  expect "$icon"
  if [ -e "$stage/$icon" ]; then
    # PNG width and height, big-endian at bytes 16..23.
    dims=$(od -An -tu1 -j16 -N8 "$stage/$icon" | awk '{print $3*256+$4 "x" $7*256+$8}')
    [ "$dims" = "${size}x${size}" ] || { echo "$icon is $dims"; status=1; }
  fi
done
expect share/man/man1/vireon-cli.1.gz
expect share/doc/vireon/copyright
# The installed programs start the installed reader: a stand-in there notes
# that it ran, then hands over to the real one.
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
reader="$stage/libexec/vireon/vireon-workbook-reader"
mv "$reader" "$reader.real"
printf '#!/bin/sh\ntouch "%s/reader-ran"\nexec "%s.real" "$@"\n' "$work" "$reader" > "$reader"
chmod +x "$reader"
printf 'Name,M1,M1\nA,1,2\nB,3,4\n' > "$work/in.csv"
"$stage/bin/vireon-cli" -q -r 1 -o "$work/in.xls" "$work/in.csv" >/dev/null
"$stage/bin/vireon-cli" -q -r 1 "$work/in.xls" >/dev/null || { echo "the installed vireon-cli cannot read a workbook"; status=1; }
[ -e "$work/reader-ran" ] || { echo "the installed vireon-cli did not start the installed reader"; status=1; }
exit $status
