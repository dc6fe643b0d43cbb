#!/bin/bash
# Completes command lines as bash does when a user presses Tab.
#   completion.sh COMPLETION PROGRAMS     (the completion file, the folder of the programs)
set -eu
# shellcheck source=/dev/null
. "$1"
# shellcheck disable=SC2317
compopt() { :; }  # works only where bash itself completes
programs=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
mkdir folder
touch track.zrtrack OLD.ZRTRACK shape.zrbf "a b.3ds" notes.txt

failed=0
# expect WORDS PROGRAM [WORD...]: the last word is the one under the cursor.
expect() {
    expected=$1
    shift
    COMP_WORDS=("$@")
    COMP_CWORD=$(($# - 1))
    _boreforge "$programs/$1"
    [ "$(printf '%s;' "${COMPREPLY[@]}")" = "$expected" ] && return
    echo "$*: expected $expected got $(printf '%s;' "${COMPREPLY[@]}")"
    failed=1
}
expect "--dry-run;--detail;--double-sided;--dim;" boreforge-batch --d
expect "--help;" boreforge-batch --h
expect "high;" boreforge-batch --detail h
expect "high;" boreforge-batch --detail = h
expect "round-tube;rounded;" boreforge-batch --preset r
expect "shape.zrbf;folder;" boreforge-batch --shape ""
expect "OLD.ZRTRACK;track.zrtrack;folder;" boreforge-batch ""
expect "OLD.ZRTRACK;track.zrtrack;folder;" boreforge-batch --no-dim --dim 50 ""
expect "a b.3ds;folder;" boreforge-batch --color 1,2,3 track.zrtrack ""
expect "track.zrtrack;" boreforge-batch --track-out t
expect ";" boreforge-batch --color ""
expect ";" boreforge-batch track.zrtrack tube.3ds ""
expect "folder;" boreforge-batch track.zrtrack --output-folder ""
expect "OLD.ZRTRACK;track.zrtrack;folder;" boreforge-batch --output-folder folder track.zrtrack ""
expect "--json;" boreforge-check --j
expect "a b.3ds;folder;" boreforge-check --json ""
if [ -x "$programs/boreforge-view" ]; then
    expect "above;side;inside;" boreforge-view --from ""
    expect "a b.3ds;folder;" boreforge-view ""
fi
exit $failed
