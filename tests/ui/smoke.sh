#!/bin/sh
# Uses the finished program as its user does, on a screen of its own: draws a shape, saves it, makes a tunnel.
#   smoke.sh PROGRAM PROJECT CLOSE_WINDOW
set -eu
work=$(mktemp -d)
trap 'kill ${program:-} ${screen:-} 2>/dev/null || true; wait; rm -rf "$work"' EXIT
trap 'exit 1' HUP INT TERM

# Repeats a command until it succeeds. Gives up after minutes, or when the program (at first, the screen) has ended.
try() {
    tries=0
    until "$@" >"$work/found" 2>&1; do
        tries=$((tries + 1))
        if [ $tries -ge 5000 ] || ! kill -0 "${program:-$screen}"; then echo "Gave up: $*"; exit 1; fi
        sleep 0.02
    done
}
# Waits for the window of a title and gives it the keyboard.
use() {
    try xdotool search --onlyvisible --name "^$1"
    window=$(tail -n 1 "$work/found")
    xdotool windowfocus --sync "$window"
}
click() { xdotool mousemove --window "$window" "$1" "$2" click 1; }
# Types a path into a dialog and presses Return until all windows of a title are closed: a list of completions
# may take the first Return. The windows that are left ignore the key.
answer() {
    xdotool type "$1"
    try sh -c "! xdotool search --onlyvisible --name '$2' || { xdotool key Return; sleep 0.2; false; }"
}
cp -r "$2/tracks" "$work"
# Without a display, and with one that leads nowhere: one line, exit status 1.
for nowhere in "" :65535; do
    status=0
    env -i DISPLAY="$nowhere" QT_QPA_PLATFORM=xcb "$1" 2>"$work/refusal" || status=$?
    [ "$status" = 1 ]
    grep -q '^boreforge: error: needs a display' "$work/refusal"
    [ "$(wc -l <"$work/refusal")" = 1 ]
done
mkdir -m 700 "$work/home" "$work/run"
export DISPLAY=":$(($$ % 50000 + 100))"
Xvfb "$DISPLAY" -noreset -screen 0 1280x1024x24 -nolisten tcp >/dev/null 2>&1 &
screen=$!
try xdotool getmouselocation
env -i PATH="$PATH" DISPLAY="$DISPLAY" HOME="$work/home" XDG_RUNTIME_DIR="$work/run" \
    DBUS_SESSION_BUS_ADDRESS=disabled: QT_QPA_PLATFORM=xcb "$1" -style fusion track.zrtrack 2>"$work/said" &
program=$!
use "Zephyrail Boreforge"
main=$window
# SIGHUP and SIGTERM are caught, so that an unfinished file is removed. (A shell ignores SIGINT for its jobs.)
caught=$(sed -n 's/^SigCgt:\t//p' "/proc/$program/status")
[ $((0x$caught & 0x4001)) -eq $((0x4001)) ]
# Digit keys don't zoom, even if they type "_" (8 on fr) or "=" (Shift and 0 on de). The plus key of de zooms in and
# the keypad's minus out again, and the wheel zooms unless a button is down. If any of this fails, the clicks below
# miss.
setxkbmap fr
xdotool key 17
setxkbmap de
xdotool keydown shift key 19 keyup shift key 35 key 82
setxkbmap us
xdotool mousemove --window "$window" 300 300 click 4 key 82 keydown ctrl click 5 keyup ctrl key 86
click 446 99  # a node at (1, 4), moved to (1.5, 4) and mirrored; then the corner at (2, 3) is removed
xdotool mousedown 1 mousemove --window "$main" 471 99 click 4 mouseup 1 key m
click 496 149
xdotool key Delete
xdotool key f ctrl+z ctrl+y ctrl+z ctrl+shift+z ctrl+z  # turned over and back
# Two rows of moves, of node 0 and then of its other point, are two steps.
xdotool key ctrl+Right Right Up Left Left ctrl+Down Down Down Escape Up ctrl+z ctrl+z
click 66 15
use "Save Tunnel Shape As"
answer "$work/shape" "^Save Tunnel Shape As"
use "Zephyrail Boreforge"
click 98 15
use "Open Track File"
answer "$work/tracks/small-circuit.zrtrack" "^Open Track File"
use "3DS Tunnel Settings"
click 310 254
use "Save Tunnel as 3DS Object"
answer "$work/tube" "^(Save Tunnel|3DS Tunnel)"
use "Zephyrail Boreforge"
"$3" "$main"
ended=$program program=
wait "$ended"
grep -qx 'boreforge: arguments are ignored.*' "$work/said"
# Four nodes, inside and outside: -2 -1, -2.5 -1.5; -2 3, -2.5 3.5; 2 -1, 2.5 -1.5; -1.5 4, -1.5 4.5; z is 0.
printf 'ZRBF\4\0\0\0\0\0\0\300\0\0\200\277\0\0\0\0\0\0\40\300\0\0\300\277\0\0\0\0\0\0\0\300\0\0\100\100\0\0\0\0'\
'\0\0\40\300\0\0\140\100\0\0\0\0\0\0\0\100\0\0\200\277\0\0\0\0\0\0\40\100\0\0\300\277\0\0\0\0'\
'\0\0\300\277\0\0\200\100\0\0\0\0\0\0\300\277\0\0\220\100\0\0\0\0' | cmp - "$work/shape.zrbf"
[ "$(head -c 2 "$work/tube.3ds")" = MM ]
grep -q tube.3ds "$work/tracks/small-circuit.zrtrack"
! find "$work/home" -type f ! -path '*/fontconfig/*' | grep .
