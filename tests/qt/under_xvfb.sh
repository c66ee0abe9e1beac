#!/usr/bin/env bash
# Runs a command on an X server of its own, with a window manager and a US keyboard:
#   under_xvfb.sh COMMAND ARGUMENTS...
set -euo pipefail

work=$(mktemp -d)
children=()
StopChildren() {
    for child in "${children[@]}"; do kill "$child" 2>/dev/null || true; done
    wait 2>/dev/null || true
    children=()
}
Leave() {
    StopChildren
    rm -rf "$work"
}
trap Leave EXIT

# Waits until a command holds, at most ten seconds.
ComesTrue() {
    for _ in $(seq 200); do
        if "$@" 2>/dev/null; then return 0; fi
        sleep 0.05
    done
    return 1
}

# Without a window manager no key arrives.
StartDesktop() {
    : >"$work/display"
    Xvfb -displayfd 3 -screen 0 1366x768x24 -nolisten tcp 3>"$work/display" >"$work/xvfb.log" 2>&1 &
    export X_SERVER_PROCESS=$! # for a test that kills it
    children+=("$X_SERVER_PROCESS")
    ComesTrue test -s "$work/display" || return 1
    DISPLAY=:$(tr -d '\n' <"$work/display")
    export DISPLAY
    ComesTrue setxkbmap us || return 1
    openbox >"$work/openbox.log" 2>&1 &
    children+=($!)
    ComesTrue sh -c "xdotool get_num_desktops >/dev/null"
}

# Two servers that start in the same moment may take each other's display; then the one that lost is
# started again.
for attempt in 1 2 3 4 5 6; do
    if StartDesktop; then break; fi
    echo "attempt $attempt: no desktop on display ${DISPLAY:-none}" >&2
    cat "$work"/*.log >&2
    StopChildren
done
((${#children[@]} > 0)) || exit 1

# The libraries of X11 keep a little memory to the end; leaks of ours are looked for offscreen.
QT_QPA_PLATFORM=xcb ASAN_OPTIONS=detect_leaks=0 "$@"
