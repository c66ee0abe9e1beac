#!/usr/bin/env bash
# Runs a command on an X server of its own, with a window manager and a US keyboard:
#   under_xvfb.sh COMMAND ARGUMENTS...
set -euo pipefail

work=$(mktemp -d)
children=()
Leave() {
    for child in "${children[@]}"; do kill "$child" 2>/dev/null || true; done
    wait 2>/dev/null || true
    rm -rf "$work"
}
trap Leave EXIT

# Waits until a command holds, at most a minute.
WaitFor() {
    for _ in $(seq 1200); do
        if "$@" 2>/dev/null; then return 0; fi
        sleep 0.05
    done
    echo "FAILED: never came true: $*" >&2
    exit 1
}

Xvfb -displayfd 3 -screen 0 1366x768x24 -nolisten tcp 3>"$work/display" >"$work/xvfb.log" 2>&1 &
children+=($!)
WaitFor test -s "$work/display"
DISPLAY=:$(tr -d '\n' <"$work/display")
export DISPLAY
setxkbmap us
openbox >"$work/openbox.log" 2>&1 &
children+=($!)
# Without a window manager no key arrives.
WaitFor sh -c "xdotool get_num_desktops >/dev/null"

# The libraries of X11 keep a little memory to the end; leaks of ours are looked for offscreen.
QT_QPA_PLATFORM=xcb ASAN_OPTIONS=detect_leaks=0 "$@"
