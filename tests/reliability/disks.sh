#!/bin/sh
# Saves on disks that refuse: full ones, locked folders, impossible names. What was there stays.
#   disks.sh BATCH_PROGRAM MAKE_SAMPLES
# As root it mounts a disk of 24 KB and tries as the user "nobody" what the modes forbid.
set -eu
batch=$1
work=$(mktemp -d)
trap 'chmod -R u+w "$work"; umount "$work/disk" 2>/dev/null || true; rm -rf "$work"' EXIT
"$2" "$work/samples"
cp "$work/samples/tracks/small-circuit.zrtrack" "$work/old"
chmod 755 "$work"
mkdir -m 777 "$work/home" "$work/disk"
root=$(id -u | grep -x 0 || true)  # empty for others
checks=0

user() { if [ "$root" ]; then setpriv --reuid=65534 --regid=65534 --clear-groups "$@"; else "$@"; fi; }
# Fails with the name of the check, and what the program said.
fail() { echo "FAILED: $1"; cat "$work/said"; exit 1; }
# check NAME SAYING TRACK ARGUMENTS...: the program refuses with these words and TRACK stays as it was.
check() {
    name=$1 saying=$2 track=$3
    shift 3
    status=0
    user "$batch" "$track" "$@" >"$work/said" 2>&1 || status=$?
    [ $status -eq 1 ] || fail "$name: ended with $status"
    grep -q "$saying" "$work/said" || fail "$name: said something else"
    cmp -s "$work/old" "$track" || fail "$name: the track is another one"
    [ -z "$(find "$work/home" "$work/disk" -name '.boreforge*')" ] || fail "$name: left a temporary file"
    checks=$((checks + 1))
}
# A track of its own in a folder of its own.
fresh() {
    rm -rf "${work:?}/home/$1"
    mkdir -m 777 "$work/home/$1"
    cp "$work/old" "$work/home/$1/t.zrtrack"
    chmod 666 "$work/home/$1/t.zrtrack"
    cd "$work/home/$1"
}

if [ "$root" ] && mount -t tmpfs -o size=24k,mode=777 none "$work/disk" 2>/dev/null; then
    cp "$work/old" "$work/disk/t.zrtrack"
    chmod 666 "$work/disk/t.zrtrack"
    check "a full disk, the object" "Object Can't Be Written" "$work/disk/t.zrtrack" "$work/disk/o.3ds"
    [ ! -e "$work/disk/o.3ds" ] || fail "a full disk: a part of the object stays"
    head -c 1000000 /dev/zero >"$work/disk/fill" 2>/dev/null || true
    check "a full disk, the track" "Can't Be Saved" "$work/disk/t.zrtrack" "$work/home/o.3ds"
    rm "$work/disk/fill"
    user "$batch" "$work/disk/t.zrtrack" "$work/home/o.3ds" >"$work/said" 2>&1 || fail "the next save"
else
    echo "No disk of 24 KB could be mounted here; the two checks on it are left out."
fi

fresh folder
chmod 555 .
check "a read-only folder, the object" "Object Can't Be Written" t.zrtrack o.3ds
check "a read-only folder, the track" "Can't Be Saved" t.zrtrack ../p.3ds
fresh small
(ulimit -f 8 && check "a limit of file sizes" "Object Can't Be Written" t.zrtrack o.3ds)
fresh locked
chmod 444 t.zrtrack
check "a locked track" "Can't Be Saved" t.zrtrack o.3ds
fresh target
ln -s /nowhere/o.3ds link.3ds
check "a link to nowhere" "Object Can't Be Written" t.zrtrack link.3ds
long=$(printf '%0300d' 0)
check "a name of 300 bytes" "Object Can't Be Written" t.zrtrack "$long.3ds"
check "a track's name of 300 bytes" "Can't Be Saved" t.zrtrack p.3ds --track-out "$long.zrtrack"

# A folder that takes no new file: an object that is there is overwritten, a track is refused.
fresh shared
echo "an older object" >o.3ds
chmod 666 o.3ds
mkdir -m 777 ../tracks
mv t.zrtrack ../tracks/t.zrtrack
chmod 555 .
user "$batch" ../tracks/t.zrtrack o.3ds >"$work/said" 2>&1 || fail "an object in a locked folder"
[ "$(head -c 2 o.3ds)" = MM ] || fail "an object in a locked folder: it is the old one"

# A track that several users work on: its group and rights stay, or the save is refused.
if [ "$root" ]; then
    fresh group
    member() { setpriv --reuid=65533 --regid=65533 --groups=65532 "$@"; }
    chown 65531:65532 t.zrtrack
    chmod 664 t.zrtrack
    member "$batch" t.zrtrack o.3ds >"$work/said" 2>&1 || fail "a track of the group's"
    [ "$(stat -c %g:%a t.zrtrack)" = 65532:664 ] || fail "a track of the group's: $(stat -c %g:%a t.zrtrack)"
    cp "$work/old" t.zrtrack
    chown 65531:65530 t.zrtrack
    chmod 646 t.zrtrack
    user() { member "$@"; }
    check "a track whose owner would lose it" "can't be kept" t.zrtrack p.3ds
    user() { setpriv --reuid=65534 --regid=65534 --clear-groups "$@"; }

    # A link that somebody planted in a shared folder, if the system protects from those.
    if [ "$(cat /proc/sys/fs/protected_symlinks)" = 1 ]; then
        fresh planted
        mkdir -m 1777 all
        ln -s ../victim all/o.3ds && chown -h 65533 all/o.3ds
        check "a planted link" "Object Can't Be Written" t.zrtrack all/o.3ds
        [ ! -e victim ] || fail "a planted link: it was followed"
    fi
fi

# These succeed: a save through a link, which stays one, and one with a path of 300 bytes.
fresh links
mkdir -m 777 far
mv t.zrtrack far/t.zrtrack
ln -s far/t.zrtrack t.zrtrack
user "$batch" t.zrtrack o.3ds >"$work/said" 2>&1 || fail "a link"
[ -L t.zrtrack ] || fail "a link: it isn't one any more"
! cmp -s "$work/old" far/t.zrtrack || fail "a link: the track it leads to should have changed"
deep=$(printf '%0150d/%0150d' 0 0)
mkdir -p "$deep" && chmod -R 777 .
cp "$work/old" "$deep/t.zrtrack" && chmod 666 "$deep/t.zrtrack"
user "$batch" "$deep/t.zrtrack" "$deep/o.3ds" >"$work/said" 2>&1 || fail "a path of 300 bytes"
[ -s "$deep/o.3ds" ] || fail "a path of 300 bytes: no object"
! cmp -s "$work/old" "$deep/t.zrtrack" || fail "a path of 300 bytes: the track should have changed"
echo "$checks saves were refused and the others succeeded, as expected."
