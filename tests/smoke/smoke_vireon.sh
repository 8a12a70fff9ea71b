#!/usr/bin/env bash
# Starts the real program on a virtual display, waits for its window, takes a
# screenshot, closes it with the Quit shortcut and checks the exit status.
# Usage: smoke_vireon.sh VIREON_BINARY SCREENSHOT_PNG
set -u
binary=$1
shot=$2
if [ -z "${VIREON_SMOKE_INNER:-}" ]; then
  export VIREON_SMOKE_INNER=1
  # Concurrent virtual displays can race for a display number; a start that
  # finds no display is tried again on another one.
  for attempt in 1 2 3; do
    xvfb-run -a -n $((100 + RANDOM % 800)) -s "-screen 0 1280x900x24" "$0" "$@"
    status=$?
    [ "$status" -ne 3 ] && exit "$status"
    echo "no display on attempt $attempt; trying another" >&2
  done
  exit 1
fi
unset QT_QPA_PLATFORM
"$binary" &
pid=$!
window=""
for _ in $(seq 1 100); do
  window=$(xdotool search --name '^Vireon$' 2>/dev/null | head -n 1)
  [ -n "$window" ] && break
  sleep 0.1
done
if [ -z "$window" ]; then
  echo "no window titled Vireon appeared" >&2
  kill "$pid" 2>/dev/null
  wait "$pid"
  # Exit status 3 asks for another try on a fresh display.
  exit 3
fi
sleep 0.5
import -window root "$shot" || { echo "screenshot failed" >&2; kill "$pid"; exit 1; }
# Without a window manager the focus can miss the first key on a busy
# machine: the key is sent again every 2 s, for up to 30 s.
for _ in $(seq 1 15); do
  xdotool windowfocus --sync "$window" 2>/dev/null || true
  xdotool key --clearmodifiers ctrl+q
  for _ in $(seq 1 20); do
    kill -0 "$pid" 2>/dev/null || break 2
    sleep 0.1
  done
done
if kill -0 "$pid" 2>/dev/null; then
  echo "the window did not close on Ctrl+Q" >&2
  kill "$pid"
  exit 1
fi
wait "$pid"
status=$?
echo "vireon exited with status $status; screenshot in $shot"
exit "$status"
