#!/bin/sh
# Holds the documents against the tree: the picture of the modules in docs/architecture.md has the arrows of the
# includes in src/, with no circle among them, and every link leads somewhere.
#   documents.sh PROJECT
set -eu
cd "$1"

# The module of each path: its folder, but for the parts of two folders.
modules() {
    sed -E 's#^(src/)?tracing/(mMath3D|mMatrix3D)\..*#math#
        s#^(src/)?editor/(frmMain|ShapeCanvas|SnapBox|RowControls|ImageSurface|Icons|WindowKeys|WindowAccess)\..*#window#
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

for page in $(git ls-files '*.md'); do
    grep -oE '\]\([^)#:]+' "$page" | cut -c 3- | while read -r link; do
        [ -e "$(dirname "$page")/$link" ] || echo "$page: $link"
    done
done >"$work/dead"
[ ! -s "$work/dead" ] || { echo "Links that lead nowhere:"; cat "$work/dead"; exit 1; }
