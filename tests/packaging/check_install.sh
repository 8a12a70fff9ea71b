#!/usr/bin/env bash
# Installs the build into a staging folder and checks that every file of the
# desktop integration is there: programs, desktop entry, metainfo, icons, man page.
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
for program in vireon vireon-cli; do
  expect "bin/$program"
  [ ! -e "$stage/bin/$program" ] || [ -x "$stage/bin/$program" ] || { echo "not executable: bin/$program"; status=1; }
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
exit $status
