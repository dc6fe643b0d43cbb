#!/bin/sh
# Uses the window for Windows as its user does, in wine on the current display, from the first click to a finished
# tunnel. It must be the one that the batch program makes on this machine.
#   window.sh BOREFORGE.EXE BOREFORGE-BATCH TRACK
set -eu
work=$(mktemp -d)
mkdir "$work/expected"
trap 'kill ${program:-} ${manager:-} 2>/dev/null || true; rm -rf "$work"' EXIT
trap 'exit 1' HUP INT TERM
openbox >/dev/null 2>&1 &
manager=$!

# Repeats a command until it succeeds; gives up after a minute, or when the program has ended.
try() {
    tries=0
    until "$@" >"$work/found" 2>&1; do
        tries=$((tries + 1))
        if [ $tries -ge 300 ] || ! kill -0 "$program"; then echo "Gave up: $*"; exit 1; fi
        sleep 0.2
    done
}
use() {
    try xdotool search --onlyvisible --name "^$1"
    window=$(tail -n 1 "$work/found")
    xdotool windowactivate --sync "$window"
}
gone() { ! xdotool search --onlyvisible --name "^$1"; }
click() { xdotool mousemove --window "$window" "$1" "$2" click 1; }
# answer TITLE NAME: types a path into a file dialog.
answer() {
    use "$1"
    xdotool type --delay 20 "$(printf 'Z:%s' "$2" | tr / '\134')"
    xdotool key Return
    try gone "$1"
}

cp "$3" "$work/track.zrtrack"
wine "$1" &
program=$!
use "Zephyrail Boreforge"
main=$window
# The key of "=" zooms in and the keypad's minus out again. Then a node at (1, 4), moved to (1.5, 4) and mirrored.
# A program that has just started takes its first events late, and wine may take a press where the mouse is by then.
sleep 2
xdotool key equal key KP_Subtract
sleep 1
click 446 99
sleep 1
xdotool mousedown 1 sleep 1 mousemove --window "$main" 471 99 sleep 1 mouseup 1 sleep 1 key m
click 66 15
answer "Save Tunnel Shape As" "$work/shape"
use "Zephyrail Boreforge"
click 98 15
answer "Open Track File" "$work/track.zrtrack"
use "3DS Tunnel Settings"
xdotool key Tab Tab space  # "Make"
answer "Save Tunnel as 3DS Object" "$work/tube"
try gone "3DS Tunnel Settings"
wmctrl -c "Zephyrail Boreforge"
wait "$program"
program=""

# The four nodes of the box, and the new one.
[ "$(od -An -tu1 -j4 -N4 "$work/shape.zrbf" | tr -s ' ')" = " 5 0 0 0" ]
"$2" "$3" "$work/expected/tube.3ds" --shape "$work/shape.zrbf" --track-out "$work/expected/track.zrtrack"
cmp "$work/tube.3ds" "$work/expected/tube.3ds"
cmp "$work/track.zrtrack" "$work/expected/track.zrtrack"
[ -z "$(find "$work" -name '.boreforge*')" ]
echo "The window on Windows made the same tunnel."
