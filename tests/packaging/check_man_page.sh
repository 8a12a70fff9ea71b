#!/usr/bin/env bash
# The manual page renders without a single groff warning and describes every
# option of vireon-cli and every exit status.
set -euo pipefail
groff=$1
page=$2
warnings=$("$groff" -man -Tutf8 -ww -z "$page" 2>&1)
if [ -n "$warnings" ]; then
  echo "groff warnings:"; echo "$warnings"; exit 1
fi
text=$("$groff" -man -Tutf8 -P-cbou "$page" 2>/dev/null)
status=0
for option in -s --start -i --iterations -r --seed -w --workspace -o --output \
  -p --percent --result -q --quiet -t --threads --search --budget --allow-left-out \
  -h --help -v --version; do
  grep -qE -- "(^|[ ,])$option([ ,]|$)" <<<"$text" || { echo "missing option $option"; status=1; }
done
for section in NAME SYNOPSIS DESCRIPTION OPTIONS "EXIT STATUS"; do
  grep -qx "$section" <<<"$text" || { echo "missing section $section"; status=1; }
done
exit $status
