#!/bin/sh
# Runs the checking program as a user's script would, most often on the objects of tests/golden.
#   check.sh PROGRAMS PROJECT     (the folder of the programs)
set -eu
unset DISPLAY WAYLAND_DISPLAY
programs=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
for object in "$2"/tests/golden/*/tube.3ds; do
    cp "$object" "$(basename "$(dirname "$object")").3ds"
done

# check STATUS WORDS ARGUMENTS...: ends with this status and prints these words ("|" for the end of a line).
check() {
    expected=$1 words=$2 status=0
    shift 2
    "$programs/boreforge-check" "$@" >out 2>err || status=$?
    if [ $status -eq "$expected" ] && cat out err | tr '\n' '|' | grep -qF -- "$words"; then return; fi
    echo "FAILED: $*: ended with $status, without $words"
    cat out err
    exit 1
}

# The figures come from a separate script that read the bytes of the file.
"$programs/boreforge-batch" "$2/tracks/small-circuit.zrtrack" o.3ds --no-track --shape "$2/elements/horseshoe.zrbf"
check 0 '"faces":6460,"facesWithoutArea":0,"innerCapFaces":0,"edges":9690,"openEdges":0,' o.3ds --json
check 0 '"bounds":{"low":[33.769703,-70.00803,3.882248],"high":[110.67393,84.093575,15.974015]},' o.3ds --json
check 0 '"materials":["MATER000","MATER001"],"volume":1535.476167164' o.3ds --json

# Each kind of tunnel has its own verdict.
check 0 "closed, facing outwards, volume 84.724||Sound.|" box.3ds
check 1 "closed, FACING INWARDS, volume -1.626||Wrong: walls face the wrong way in 1 of 1 surface.|" starts-right.3ds
check 0 "closed, 6 edges of more than two faces, facing outwards" runs.3ds
check 0 "|  6 faces of a cap inside the wall, as a tunnel over the start of the track has|" runs.3ds
check 0 "|  6 faces of a cap inside the wall, as a tunnel over the start of the track has|" rolls.3ds
check 0 "  6 open edges, facing not judged||Sound. With open edges or edges of more than two faces: 1" more-nodes.3ds
check 0 "closed, double-sided, facing not judged||Sound. Facing not judged: 1 surface.|" double-sided.3ds
check 1 "Empty: there are no faces.|" color.3ds

# damaged AT BYTES REPORTED WORDS: box.3ds with other bytes there. Its first mesh is at byte 378, the points of that at
# 399, its faces at 701 with their material at 965, and its second mesh at 1180.
damaged() {
    cp box.3ds d.3ds
    # shellcheck disable=SC2059
    printf "$2" | dd of=d.3ds bs=1 seek="$1" conv=notrunc 2>/dev/null
    check 1 "|Damaged. At byte $3: $4" d.3ds
}
damaged 0 '\0' 0 "the file is not a 3D Studio mesh file."
damaged 5 '\177' 2626 "the file ends here, but should have "
damaged 21 '\177' 16 "a chunk doesn't fit into the one around it."
damaged 68 '\0' 32 "a material lacks its name or its colour."
damaged 51 1 212 "two materials have the name 'MATER001'."
damaged 138 '\145' 138 "a percentage is above 100."
damaged 405 '\1\0' 419 "the chunk's length doesn't fit its contents."
damaged 409 '\200\177' 407 "a coordinate is not finite."
damaged 409 '\200\176' 407 "a coordinate is too far away."
damaged 647 '\20' 653 "a mesh has two lists of points."
damaged 701 '\0' 393 "a mesh has no list of faces."
damaged 709 '\24\0' 709 "a face refers to a vertex that doesn't exist."
damaged 965 '\0' 701 "a face has no material."
damaged 971 '\n' 971 "there is no material '?ATER000'."
damaged 982 '\1' 984 "a face has two materials."
damaged 1193 0 1186 "two objects have the name 'SEGT0000'."

# A file that can't be read or has an odd name.
odd=$(printf '"\377\n.3ds')
printf '' >"$odd"
check 1 '"??.3ds||Damaged.' "$odd"
check 1 '{"file":"\"\ufffd\n.3ds","verdict":"damaged","byte":0,"reason":"' --json "$odd"
check 1 '{"file":"absent.3ds","verdict":"unreadable","reason":"There is no such file."}' absent.3ds --json
check 1 "boreforge-check: absent.3ds: error: The 3DS Object Can't Be Read! There is no such file.|" absent.3ds

check 2 "OBJECT: is empty" box.3ds ""

# Several objects: the status is 0 only if all are sound.
check 0 "|Sound.||runs.3ds|" box.3ds runs.3ds
check 1 "|Sound.|" color.3ds box.3ds
check 1 '"verdict":"empty",' color.3ds box.3ds --json
check 0 '{"version":1,"files":[{"file":"box.3ds","verdict":"sound",' box.3ds runs.3ds --json
