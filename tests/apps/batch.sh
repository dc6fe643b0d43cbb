#!/bin/sh
# Runs the batch program as a user's script would. What a job makes is in tests/golden.
#   batch.sh BATCH_PROGRAM PROJECT
set -eu
batch=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
mkdir inputs d
cp "$2/tracks/small-circuit.zrtrack" inputs/t.zrtrack
cp inputs/t.zrtrack inputs/u.zrtrack
cp "$2/elements/horseshoe.zrbf" inputs/s.zrbf
cp inputs/* .

fail() { echo "FAILED: $*"; cat out err; exit 1; }
# run STATUS ARGUMENTS...: the program ends with this status.
run() {
    expected=$1 status=0
    shift
    "$batch" "$@" >out 2>err || status=$?
    [ $status -eq "$expected" ] || fail "$* ended with $status"
}
is_in() { grep -qF -- "$2" "$1" || fail "'$2' is not in $1"; }
same() { cmp -s "$1" "$2" || fail "$1 and $2 differ"; }
absent() { for file; do [ ! -e "$file" ] || fail "$file is there"; done; }
unchanged() { for file in inputs/*; do same "$file" "${file#inputs/}"; done; }
# refuse STATUS WORDS ARGUMENTS...: says these words ("|" for the end of a line) and changes nothing.
refuse() {
    wanted=$1 words=$2
    shift 2
    run "$wanted" "$@"
    tr '\n' '|' <err | grep -qF -- "$words" || fail "$*: said something else than $words"
    unchanged
    absent o.3ds
}

# The forms of options; what is made goes where it shall.
export LC_ALL=de_DE.UTF-8
run 0 t.zrtrack o.3ds --track-out new.zrtrack --color 10,200,90 --detail poor --dim 30 --preset rounded
export LC_ALL=C
is_in out "20 segments, 6 tunnel segments: 14 objects, " # six inner and outer walls, two caps
unchanged
mv o.3ds plain.3ds
run 0 --color='#0AC85A' --detail=POOR --dim 3 --dim 30 --preset=Rounded --track-out=NEW.ZRTRACK -- t.zrtrack o.3ds
same o.3ds plain.3ds
same NEW.ZRTRACK new.zrtrack
run 0 t.zrtrack ä.3ds --keep-tunnel-flags --no-dim --no-place
unchanged
rm o.3ds

# Only the object, also with a name that a track can't hold; and nothing at all.
run 0 t.zrtrack d/o.3ds --track-out d/t.zrtrack
{ echo "The shape is 4 wide and 4 high inside, with 1 around the path." && sed 's/ in .*/ for dry.3ds/' out; } >summary
run 0 t.zrtrack 東.3ds --no-track
same 東.3ds d/o.3ds
run 0 t.zrtrack dry.3ds --dry-run
same out summary
absent dry.3ds
unchanged

# The sample shapes that the window has, too, are the same as there.
for shape in box rounded; do
    run 0 "$2/tests/golden/$shape/track.zrtrack" $shape.3ds --no-track --preset $shape --detail poor
    same $shape.3ds "$2/tests/golden/$shape/tube.3ds"
done

# Several tracks: one that fails stops no other.
printf '' >bad.zrtrack
run 1 t.zrtrack bad.zrtrack u.zrtrack --output-folder made
is_in err "boreforge-batch: bad.zrtrack: error: Invalid Track File! It is not a track."
same made/u.3ds d/o.3ds
[ -s made/u.zrtrack ] || fail "a changed track is missing"
absent made/bad.3ds
run 0 t.zrtrack u.zrtrack --output-folder . --no-track # beside the tracks
same t.3ds d/o.3ds
unchanged

# A new object is as private as its track.
cp t.zrtrack private.zrtrack
chmod 600 private.zrtrack
run 0 private.zrtrack alone.3ds --no-track
run 0 private.zrtrack placed.3ds
[ "$(stat -c %a alone.3ds placed.3ds | uniq)" = 600 ] || fail "the objects of a private track are not private"

# Warnings; with --strict nothing is written.
cp t.zrtrack long.zrtrack
printf 'abc' >>long.zrtrack
run 0 long.zrtrack o.3ds --dry-run
is_in err "boreforge-batch: long.zrtrack: warning: It has 3 bytes after the last chunk; the saved track won't have them."
run 1 long.zrtrack strict.3ds --strict
is_in err "boreforge-batch: long.zrtrack: error: It has 3 bytes after"
absent strict.3ds
run 0 long.zrtrack none.3ds --no-track
[ ! -s err ] || fail "a warning of what isn't saved"
printf 'ZRBF\0\0\0\0' >empty.zrbf
run 0 t.zrtrack o.3ds --dry-run --shape empty.zrbf
is_in err "boreforge-batch: empty.zrbf: warning: The shape is empty, so the object has no faces."

# The report as JSON; the sizes are those of the horseshoe in tools/make-samples.
run 1 t.zrtrack long.zrtrack bad.zrtrack --output-folder new --dry-run --json --preset horseshoe
is_in out '{"version":1,"warnings":[],"errors":[],"clearWidth":4.5,"clearHeight":4.5,"clearAroundPath":1,'
is_in out '{"track":"t.zrtrack","outcome":"would be made","warnings":[],"errors":[],"segments":20,"tunnels":6,'
is_in out '"objects":14,"faces":6460,"bytes":134366,"object":"new/t.3ds","savedTrack":"new/t.zrtrack"}'
is_in out '"warnings":["It has 3 bytes after the last chunk; the saved track won'"'"'t have them."],"errors":[]'
is_in out '{"track":"bad.zrtrack","outcome":"failed","warnings":[],"errors":["Invalid Track File! It is not a track."]}'
absent new

# Failures: the status is 1. A line names the file and the reason; a dry run refuses what the run would refuse.
cp t.zrtrack track.3ds
cp private.zrtrack used.zrtrack # its tunnels are made and their flags cleared
for option in "" --dry-run; do
    refuse 1 "/o.3ds: error: The 3DS Object Can't Be Written! No such" t.zrtrack absent/o.3ds $option
    refuse 1 "used.zrtrack: error: Track does not have any tunnels!|" used.zrtrack o.3ds $option
    refuse 1 "track.3ds: error: That File Is a Track! It was not replaced.|  Nothing was written.|" t.zrtrack track.3ds $option
    same track.3ds t.zrtrack
    refuse 1 "/u.zrtrack: error: The Track Can't Be Saved!" t.zrtrack o.3ds --track-out absent/u.zrtrack $option
done
segments=$(grep -abom1 SEGM t.zrtrack | cut -d: -f1)
head -c $((segments + 60)) t.zrtrack >cut.zrtrack
head -c $((segments + 2)) t.zrtrack >between.zrtrack
{ head -c $((segments + 8)) t.zrtrack && printf '\377' && tail -c +$((segments + 10)) t.zrtrack; } >damaged.zrtrack
head -c 100 s.zrbf >cut.zrbf
head -c 6 s.zrbf >head.zrbf
cp s.zrbf shape.zrtrack
refuse 1 "boreforge-batch: absent.zrtrack: error: Invalid Track File! There is no such file.|" absent.zrtrack o.3ds
refuse 1 " s.zrbf: error: Invalid Track File! Its name has the wrong extension.|" s.zrbf o.3ds
refuse 1 " shape.zrtrack: error: Invalid Track File! It is not a track.|" shape.zrtrack o.3ds
refuse 1 " cut.zrtrack: error: Invalid Track File! It ends at byte 60 of chunk \"SEGM\".|" cut.zrtrack o.3ds
refuse 1 ", where another chunk is due.|" between.zrtrack o.3ds
refuse 1 "! It is damaged at byte 12 of chunk \"SEGM\".|" damaged.zrtrack o.3ds
refuse 1 " cut.zrbf: error: Invalid Tunnel Shape File! It ends at byte 100, which" t.zrtrack o.3ds --shape cut.zrbf
refuse 1 "It ends at byte 6, within the number" t.zrtrack o.3ds --shape head.zrbf
refuse 1 "It is not a tunnel shape.|" t.zrtrack o.3ds --shape t.zrtrack
refuse 1 " a?]?.zrtrack: error: " "$(printf 'a\033]\377').zrtrack" o.3ds # no terminal takes a file's name for a command

# What is no file, or one of 2 GiB.
mkdir folder.zrtrack folder.3ds
mkfifo pipe.zrtrack pipe.3ds
ln -s ring.zrtrack ring.zrtrack
ln -s ring.3ds ring.3ds
truncate -s 2G huge.zrtrack
refuse 1 " folder.zrtrack: error: Invalid Track File! It is not a regular file.|" folder.zrtrack o.3ds
refuse 1 " pipe.zrtrack: error: Invalid Track File! It is not a regular file.|" pipe.zrtrack o.3ds
refuse 1 " ring.zrtrack: error: Invalid Track File! Too many levels of symbolic links.|" ring.zrtrack o.3ds
refuse 1 " huge.zrtrack: error: Invalid Track File! It is too large to be read.|" huge.zrtrack o.3ds
refuse 1 "Can't Be Written! Is a directory.|" t.zrtrack folder.3ds
refuse 1 "Can't Be Written! It is not a regular file.|" t.zrtrack pipe.3ds
refuse 1 "Can't Be Written! Too many levels of symbolic links.|" t.zrtrack ring.3ds

# Wrong usage: the status is 2. An unknown option is named even if something else is missing.
refuse 2 "boreforge-batch: error: The following argument was not expected: --bad|" --bad
refuse 2 "OUTPUT is required" t.zrtrack
refuse 2 "'o.png' doesn't end in .3ds" t.zrtrack o.png
refuse 2 "doesn't end in .3ds" t.zrtrack .3ds
refuse 2 "'u' doesn't end in .zrtrack" t.zrtrack o.3ds --track-out u
refuse 2 "not expected: third" t.zrtrack o.3ds third
refuse 2 "several tracks need --output-folder" t.zrtrack u.zrtrack
refuse 2 "--shape has no value" t.zrtrack o.3ds --shape= s.zrbf
refuse 2 "'t.zrtrack' and 'a/t.zrtrack' would both make 'new/t.3ds'" t.zrtrack u.zrtrack a/t.zrtrack --output-folder new
refuse 2 "'o.3ds' doesn't end in .zrtrack" t.zrtrack o.3ds --output-folder .
refuse 2 "excludes" t.zrtrack --output-folder . --track-out x.zrtrack
refuse 2 "excludes" t.zrtrack o.3ds --no-track --track-out x.zrtrack
refuse 2 "excludes" t.zrtrack o.3ds --dim 5 --no-dim
refuse 2 "excludes" t.zrtrack o.3ds --shape s.zrbf --preset box
refuse 2 "--dim: takes 0..100, not '5x'" t.zrtrack o.3ds --dim 5x
refuse 2 "not '101'" t.zrtrack o.3ds --dim 101
refuse 2 "--color: takes R,G,B|#rrggbb, not '1,2'" t.zrtrack o.3ds --color 1,2
refuse 2 "not '1,2,256'" t.zrtrack o.3ds --color 1,2,256
refuse 2 "not '#12345'" t.zrtrack o.3ds --color '#12345'
refuse 2 "extreme|high|normal|low|poor, not 'best'" t.zrtrack o.3ds --detail best

# No output may be an input or another output, also through links and other spellings.
ln -s ../t.zrtrack d/u.3ds
ln -s u.zrtrack link.zrtrack
ln -s s.zrbf s.3ds
ln -s s.zrbf s.zrtrack
refuse 2 "'./t.zrtrack' would replace 't.zrtrack'" t.zrtrack --output-folder .
refuse 2 "'d/u.3ds' would replace 't.zrtrack'" t.zrtrack u.zrtrack --output-folder d
refuse 2 "'d/../u.zrtrack' would replace 'u.zrtrack'" u.zrtrack o.3ds --track-out d/../u.zrtrack
refuse 2 "'u.zrtrack' would replace 'link.zrtrack'" link.zrtrack o.3ds --track-out u.zrtrack
refuse 2 "'s.3ds' would replace 's.zrbf'" t.zrtrack s.3ds --shape s.zrbf
refuse 2 "'s.zrtrack' would replace 's.zrbf'" t.zrtrack o.3ds --shape s.zrbf --track-out s.zrtrack
refuse 2 "'t.zrtrack' and 'a/T.zrtrack' would both make 'new/T.3ds'" t.zrtrack a/T.zrtrack --output-folder new
rm d/*
refuse 2 "'t.zrtrack' and 'a/T.zrtrack' would both make 'd/T.3ds'" t.zrtrack a/T.zrtrack --output-folder d

# A message doesn't get into a file because a standard stream is closed; output that can't be written is a failure.
for closed in "0<&-" "1>&-" "2>&-" "0<&- 1>&- 2>&-"; do
    status=0
    eval "\"\$batch\" t.zrtrack absent/o.3ds $closed" >out 2>err || status=$?
    [ $status -eq 1 ] || fail "with $closed it ended with $status"
    unchanged
done
for arguments in --help "t.zrtrack o.3ds --dry-run"; do
    status=0
    # shellcheck disable=SC2086
    "$batch" $arguments >/dev/full 2>err || status=$?
    [ $status -eq 1 ] || fail "$arguments: ended with $status"
    is_in err "The Output Can't Be Written!"
done

# Too little memory ends in a message; tools/campaign tries every limit. (Under a sanitizer there can't be a limit.)
cp "$2/tracks/long-circuit.zrtrack" inputs/l.zrtrack
cp inputs/l.zrtrack .
limited() (
    # shellcheck disable=SC3045
    ulimit -v "$1"
    shift
    "$@"
)
kilobytes=2000
if limited 100000 "$batch" --version >out 2>err; then
    until limited $kilobytes "$batch" --version >out 2>err; do kilobytes=$((kilobytes + 500)); done
    for more in 1000 3000 5000; do
        status=0
        limited $((kilobytes + more)) "$batch" l.zrtrack o.3ds --preset rounded --detail extreme >out 2>err || status=$?
        [ $status -eq 1 ] || fail "with $more KB it ended with $status"
        is_in err "emory"
        unchanged
        absent o.3ds
    done
fi
