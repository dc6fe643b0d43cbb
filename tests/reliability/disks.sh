#!/bin/sh
# Saves on disks that refuse: full ones, locked folders, impossible names. What was there stays.
#   disks.sh BATCH_PROGRAM PROJECT
# As root it mounts a disk of 24 KB and tries as the user "nobody" what the modes forbid.
set -eu
batch=$1
work=$(mktemp -d)
trap 'chmod -R u+w "$work"; umount "$work/disk" 2>/dev/null || true; rm -rf "$work"' EXIT
cp "$2/tracks/small-circuit.zrtrack" "$work/old"
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
# put FILE: a copy of the track that belongs to the user.
put() {
    cp "$work/old" "$1"
    [ ! "$root" ] || chown 65534:65534 "$1"
}
# A track of its own in a folder of its own.
fresh() {
    rm -rf "${work:?}/home/$1"
    mkdir -m 777 "$work/home/$1"
    put "$work/home/$1/t.zrtrack"
    cd "$work/home/$1"
}

if [ "$root" ] && mount -t tmpfs -o size=24k,mode=777 none "$work/disk" 2>/dev/null; then
    put "$work/disk/t.zrtrack"
    check "a full disk, the object" "Object Can't Be Written" "$work/disk/t.zrtrack" "$work/disk/o.3ds"
    [ ! -e "$work/disk/o.3ds" ] || fail "a full disk: a part of the object stays"
    head -c 1000000 /dev/zero >"$work/disk/fill" 2>/dev/null || true
    check "a full disk, the track" "Can't Be Saved" "$work/disk/t.zrtrack" "$work/home/o.3ds"
    [ ! -e "$work/home/o.3ds" ] || fail "a full disk, the track: the object was written"
    rm "$work/disk/fill"
    user "$batch" "$work/disk/t.zrtrack" "$work/home/o.3ds" >"$work/said" 2>&1 || fail "the next save"
else
    echo "No disk of 24 KB could be mounted here; the two checks on it are left out."
fi

fresh folder
chmod 555 .
check "a read-only folder, the object" "Object Can't Be Written" t.zrtrack o.3ds
check "a read-only folder, the track" "The Track Can't Be Saved! Its folder takes no new files." t.zrtrack ../p.3ds
[ ! -e ../p.3ds ] || fail "a read-only folder, the track: the object was written"
fresh small
(ulimit -f 8 && check "a limit of file sizes" "Object Can't Be Written" t.zrtrack o.3ds)
fresh locked
chmod 444 t.zrtrack
check "a locked track" "Can't Be Saved" t.zrtrack o.3ds
fresh target
ln -s /nowhere/o.3ds link.3ds
check "a link to nowhere" "It is a link that leads nowhere" t.zrtrack link.3ds
ln -s new.3ds near.3ds
check "a link to no file" "It is a link that leads nowhere" t.zrtrack near.3ds
long=$(printf '%0300d' 0)
check "a name of 300 bytes" "Object Can't Be Written" t.zrtrack "$long.3ds"
check "a track's name of 300 bytes" "Can't Be Saved" t.zrtrack p.3ds --track-out "$long.zrtrack"

# A folder that takes no new file, with an object in it that the user may write.
fresh shared
echo "an older object" >o.3ds
chmod 666 o.3ds
mkdir -m 777 ../tracks
mv t.zrtrack ../tracks/t.zrtrack
chmod 555 .
check "an object in a locked folder" "Object Can't Be Written! Its folder takes no new files." ../tracks/t.zrtrack o.3ds
[ "$(cat o.3ds)" = "an older object" ] || fail "an object in a locked folder: it was overwritten"

# Files of other users, whose owner can't be kept.
if [ "$root" ]; then
    member() { setpriv --reuid=65533 --regid=65533 --groups=65532 "$@"; }
    user() { member "$@"; }
    fresh hidden
    mkdir -m 700 others
    mv t.zrtrack others
    check "a folder that may not be searched" "Permission denied" others/t.zrtrack o.3ds
    fresh group
    chown 65531:65532 t.zrtrack
    chmod 664 t.zrtrack
    check "a track of a group's other member" "owner and permissions can't be kept" t.zrtrack o.3ds
    fresh sticky
    chown 65533:65532 t.zrtrack
    chmod 1777 .
    echo "somebody's object" >o.3ds
    chmod 666 o.3ds
    check "somebody's object in a shared folder" "owner and permissions can't be kept" t.zrtrack o.3ds
    [ "$(cat o.3ds)" = "somebody's object" ] || fail "somebody's object was overwritten"
    chown 65533:65532 o.3ds
    chmod 640 o.3ds t.zrtrack
    user "$batch" t.zrtrack o.3ds >"$work/said" 2>&1 || fail "a group's track and object"
    [ "$(stat -c %u:%g:%a t.zrtrack o.3ds | uniq)" = 65533:65532:640 ] || fail "owner, group or permissions changed"
    user() { setpriv --reuid=65534 --regid=65534 --clear-groups "$@"; }

    # A link that somebody planted in a shared folder, if the system protects from those.
    if [ "$(cat /proc/sys/fs/protected_symlinks)" = 1 ]; then
        fresh planted
        mkdir -m 1777 all
        echo "a victim" >victim.3ds
        chmod 666 victim.3ds
        ln -s ../victim.3ds all/o.3ds && chown -h 65533 all/o.3ds
        check "a planted link" "Object Can't Be Written" t.zrtrack all/o.3ds
        [ "$(cat victim.3ds)" = "a victim" ] || fail "a planted link: it was followed"
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

# A replaced file keeps its permissions.
fresh kept
for mode in 640 604 755 6755; do
    chmod $mode t.zrtrack
    user "$batch" t.zrtrack o.3ds --keep-tunnel-flags >"$work/said" 2>&1 || fail "a track of mode $mode"
    [ "$(stat -c %a t.zrtrack)" = $mode ] || fail "a track of mode $mode: it has another one"
done

# A new object gives nobody a permission that its track doesn't.
fresh private
while read -r mode mask group new; do
    [ "$root" ] || [ "$group" = 65534 ] || continue
    chmod "$mode" t.zrtrack
    [ ! "$root" ] || chgrp "$group" t.zrtrack
    rm -f o.3ds
    (umask "$mask" && user "$batch" t.zrtrack o.3ds --no-track) >"$work/said" 2>&1 || fail "an object for mode $mode"
    [ "$(stat -c %a o.3ds)" = "$new" ] || fail "an object for mode $mode, mask $mask: it has $(stat -c %a o.3ds)"
done <<END
600 022 65534 600
640 022 65534 640
644 077 65534 600
444 022 65534 644
660 002 65531 600
604 002 65531 600
END

# Access lists: one that a track has is kept; one that a new file would inherit from its folder is not.
fresh lists
if setfacl -m user:65531:r t.zrtrack 2>/dev/null && setfacl -d -m user:65531:rw . 2>/dev/null; then
    [ ! "$root" ] || chmod 640 t.zrtrack
    before=$(getfacl -cp t.zrtrack)
    user "$batch" t.zrtrack o.3ds >"$work/said" 2>&1 || fail "a track with an access list"
    [ "$(getfacl -cp t.zrtrack)" = "$before" ] || fail "an access list: it has changed"
    [ "$(stat -c %a o.3ds)" = 600 ] || fail "an access list: the object is open to others"
    fresh inherited
    setfacl -d -m user:65531:rw .
    chmod 600 t.zrtrack
    setfacl -b t.zrtrack
    user "$batch" t.zrtrack o.3ds >"$work/said" 2>&1 || fail "a folder with an access list"
    ! getfacl -cp t.zrtrack o.3ds | grep -q :65531: || fail "an access list was inherited"
else
    echo "There are no access lists here (setfacl); the checks of them are left out."
fi

fresh deep
deep=$(printf '%0150d/%0150d' 0 0)
mkdir -p "$deep" && chmod -R 777 .
put "$deep/t.zrtrack"
user "$batch" "$deep/t.zrtrack" "$deep/o.3ds" >"$work/said" 2>&1 || fail "a path of 300 bytes"
[ -s "$deep/o.3ds" ] || fail "a path of 300 bytes: no object"
! cmp -s "$work/old" "$deep/t.zrtrack" || fail "a path of 300 bytes: the track should have changed"
echo "$checks saves were refused and the others succeeded, as expected."
