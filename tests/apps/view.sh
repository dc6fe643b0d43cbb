#!/bin/sh
# Runs the viewer as a user's script would, on a screen: what it can't draw is refused, and the old picture stays.
#   view.sh VIEWER PROJECT
set -eu
viewer=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
cp "$2/tests/golden/box/tube.3ds" o.3ds
{ head -c 5 o.3ds && printf '\177' && tail -c +7 o.3ds; } >damaged.3ds
cp "$2/tracks/small-circuit.zrtrack" track.png
echo old >p.png
mkdir before
cp p.png track.png o.3ds before

# refuse STATUS WORDS ARGUMENTS...: ends with this status, says these words and changes nothing.
refuse() {
    expected=$1 words=$2 status=0
    shift 2
    "$viewer" "$@" >out 2>err || status=$?
    if [ $status -ne "$expected" ] || ! grep -qF -- "$words" err; then
        echo "FAILED: $*: ended with $status, without $words"
        cat err
        exit 1
    fi
    for file in before/*; do cmp "$file" "${file##*/}"; done
}
refuse 1 "the file ends here" damaged.3ds --save p.png
refuse 1 "boreforge-view: a?b.3ds: error: There Is Nothing to Draw! There is no such file." "$(printf 'a\nb.3ds')" --save p.png
refuse 1 "needs the track" o.3ds --save p.png --from inside
refuse 1 "the wrong extension" o.3ds --save p.png --track damaged.3ds
refuse 1 "That File Is a Track!" o.3ds --save track.png
refuse 2 "doesn't end in .png" o.3ds --save o.3ds
refuse 2 "not '5x720'" o.3ds --save p.png --size 5x720
refuse 2 "requires OBJECT" --save p.png
unset DISPLAY WAYLAND_DISPLAY
refuse 1 "xvfb-run -a boreforge-view" o.3ds --save p.png
