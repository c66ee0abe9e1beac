#!/usr/bin/env bash
# A session on a real X server with a window manager: synthetic key and mouse events log three
# contacts, the file is checked, a picture is saved. CTest runs it:
#   xvfb_session.sh PROGRAM PLUGINS DATA PICTURE
set -euo pipefail
program=$1 plugins=$2 data=$3 picture=$4

work=$(mktemp -d)
children=()
Leave() {
    for child in "${children[@]}"; do kill "$child" 2>/dev/null || true; done
    wait 2>/dev/null || true
    rm -rf "$work"
}
trap Leave EXIT

Fail() {
    echo "FAILED: $*" >&2
    exit 1
}

# Waits until a command holds, at most a minute.
WaitFor() {
    local turn
    for turn in $(seq 1200); do
        if "$@" 2>/dev/null; then return 0; fi
        sleep 0.05
    done
    Fail "never came true: $* ($turn turns)"
}

HasSize() { [[ -f $1 && $(stat -c %s "$1") == "$2" ]]; }

folder=$work/home/zrtlog
mkdir -p "$folder"
cp "$data"/* "$folder/"
log="$folder/!temp%!!.zrb"

Xvfb -displayfd 3 -screen 0 1366x768x24 -nolisten tcp 3>"$work/display" 2>"$work/xvfb.log" &
children+=($!)
WaitFor test -s "$work/display"
DISPLAY=:$(tr -d '\n' <"$work/display")
export DISPLAY
openbox >"$work/openbox.log" 2>&1 &
children+=($!)

mkfifo "$work/in" "$work/out"
exec 4<>"$work/in" 5<>"$work/out"
XDG_DATA_HOME=$work/home QT_QPA_PLATFORM=xcb QT_PLUGIN_PATH=$plugins \
    QT_QPA_GENERIC_PLUGINS=testkeys:$work/in:$work/out ASAN_OPTIONS=detect_leaks=0 \
    "$program" >"$work/zrtlog.log" 2>&1 &
children+=($!)

window=$(timeout 60 xdotool search --sync --onlyvisible --name '^ZRTLOG$' | head -n 1)
[[ -n $window ]] || Fail "no window: $(cat "$work/zrtlog.log")"
xdotool windowactivate --sync "$window"
[[ $(xprop -id "$window" -len 16 _NET_WM_ICON) != *"not found"* ]] || Fail "the window has no icon"

# The mouse opens File, the keys choose New and, in the chooser, the last row: Generic. On a machine
# under load the keys may come before the menu; then it is tried again.
OpenChooser() {
    xdotool mousemove --window "$window" 18 12 click 1
    sleep 0.3
    xdotool key Down Return
    timeout 5 xdotool search --sync --onlyvisible --name '^Choose Contest$' | head -n 1
}
for attempt in 1 2 3 4 5; do
    chooser=$(OpenChooser || true)
    [[ -z $chooser ]] || break
    echo "attempt $attempt: no chooser yet"
    xdotool key Escape
done
[[ -n $chooser ]] || Fail "no chooser"
xdotool windowactivate --sync "$chooser" key End Return
WaitFor HasSize "$log" 26

xdotool windowactivate --sync "$window"
length=60
for call in w1aw dl1abc ja1xyz; do
    xdotool type --delay 15 "$call 599 op"
    xdotool key Return
    length=$((length + 60))
    WaitFor HasSize "$log" $length
done
for at in 66:W1AW 126:DL1ABC 186:JA1XYZ; do
    call=${at#*:}
    found=$(dd if="$log" bs=1 skip="${at%:*}" count=${#call} status=none)
    [[ $found == "$call" ]] || Fail "expected $call in the file, got $found"
done

# A fourth call stays in the field, for the picture.
xdotool type --delay 15 "vk9ns"
echo "text InData(0)" >&4
read -r -t 60 field <&5
[[ $field == VK9NS ]] || Fail "expected VK9NS in the field, got $field"
echo "grab $picture" >&4
echo "sync" >&4
read -r -t 60 <&5
[[ -s $picture ]] || Fail "no picture"
echo "three contacts logged; picture: $picture"
