#!/bin/sh
# Holds the picture of the modules in docs/architecture.md against the includes of src/: the same arrows, and no
# circle among them.
#   modules.sh PROJECT
set -eu
cd "$1"

# The module of each path: its folder, but for the parts of two folders.
modules() {
    sed -E 's#^(src/)?tracing/(mMath3D|mMatrix3D)\..*#math#
        s#^(src/)?editor/(frmMain|ShapeCanvas|SnapBox|ImageSurface|Icons)\..*#window#
        s#^(src/)?editor/.*#shape#
        s#^src/main\.cpp#main#
        s#^(src/)?([a-z0-9]+)/.*#\2#'
}
included() {
    git ls-files src | grep -E '\.(h|cpp)$' | while read -r file; do
        from=$(echo "$file" | modules)
        sed -n 's#^\#include "\([a-z0-9]*/.*\)"#\1#p' "$file" | modules | sed "s#^#$from #"
    done | awk '$1 != $2' | sort -u
}
drawn() {
    sed -n 's/^\([a-z0-9]*\) *──► /\1 /p' docs/architecture.md |
        awk '{ for (i = 2; i <= NF; ++i) print $1, $i }' | sort -u
}

[ -n "$(drawn)" ] || { echo "There is no picture."; exit 1; }
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
included >"$work/included"
drawn >"$work/drawn"
diff "$work/drawn" "$work/included" || { echo "Above, <: drawn alone, >: included alone."; exit 1; }
tsort "$work/included" >"$work/order" || { echo "The modules above include each other."; exit 1; }
echo "$(wc -l <"$work/drawn") arrows, as drawn."
