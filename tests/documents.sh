#!/bin/sh
# Checks the documents against the tree: the picture of the modules in docs/architecture.md has the arrows of the
# includes in src/, without a cycle, the viewer's keys are the same everywhere, the manual pages have every option and
# key, the guide has every message and no other and the sizes of the sample shapes, and every link leads to a file.
#   documents.sh PROJECT PROGRAMS     (the folder of the programs)
set -eu
cd "$1"
programs=$2

# The module of each path: its folder, except in two folders that have several.
modules() {
    sed -E 's#^(src/)?tracing/(mMath3D|mMatrix3D)\..*#math#
        s#^(src/)?editor/window/.*#window#
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

[ -n "$(drawn)" ] || { echo "The picture is missing."; exit 1; }
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
included >"$work/included"
drawn >"$work/drawn"
diff "$work/drawn" "$work/included" || { echo "<: only in the picture, >: only in the includes."; exit 1; }
tsort "$work/included" >"$work/order" || { echo "The modules above include each other."; exit 1; }
echo "$(wc -l <"$work/drawn") arrows, as drawn."

# The viewer's keys and what they do: in its help, in the manual page, in the guide.
sed -n 's/^        \["\(.*\)", "\(.*\)"\],$/\1: \2/p' apps/view/qml/Help.qml >"$work/help"
[ -s "$work/help" ] || { echo "The viewer's keys are missing."; exit 1; }
sed -n '/^\.SH KEYS/,/^\.SH ENV/{s/^\.B \(.*\)/\1: /;/^\./d;s/\.$//;s/\\//g;p}' docs/boreforge-view.1 |
    sed 'N;s/\n//' >"$work/manual"
sed -n '/^| keys and mouse/,/^$/s/^| \(.*\) | \(.*\) |$/\1: \2/p' docs/guide.md | tail -n +2 >"$work/guide"
diff "$work/help" "$work/manual"
diff "$work/help" "$work/guide"

for program in boreforge-batch boreforge-check boreforge-view; do
    [ -x "$programs/$program" ] || continue  # the viewer isn't always built
    for option in $("$programs/$program" --help | grep -oE '^ +(-h,)?--[a-z-]+' | grep -oE -e '--[a-z-]+'); do
        sed 's/\\//g' "docs/$program.1" | grep -qe "$option" || { echo "docs/$program.1 lacks $option"; exit 1; }
    done
done

# The keys of the programs' JSON and those of the manual pages' section.
for program in batch check; do
    grep -hoE '\{"[a-zA-Z]+", [^"]|json\["[a-zA-Z]+"' apps/$program/main.cpp | cut -d'"' -f2 | sort -u >"$work/keys"
    [ -s "$work/keys" ] || { echo "boreforge-$program has no keys."; exit 1; }
    sed -n '/^\.SH JSON/,/^\.SH FILES/{s/^\.BR\{0,1\} //;T;s/" *, *"/ /g;s/" and "/ /;p}' docs/boreforge-$program.1 |
        tr -d '",' | tr ' ' '\n' | grep -v -e '^$' -e '^[\]' | sort -u >"$work/manual-keys"
    diff "$work/keys" "$work/manual-keys" || { echo "<: key of boreforge-$program, >: key of its page"; exit 1; }
done

# The guide's table of the sample shapes against what the batch program measures.
# shellcheck disable=SC2016
sed -n 's/^| `\([a-z-]*\)` | \([0-9.]*\) | \([0-9.]*\) | \([0-9.]*\) |.*/\1 \2 \3 \4/p' docs/guide.md >"$work/table"
for shape in elements/*.zrbf; do
    name=$(basename "$shape" .zrbf)
    "$programs/boreforge-batch" tracks/small-circuit.zrtrack "$work/o.3ds" --dry-run --json --preset "$name" |
        sed -n "s/.*\"clearWidth\":\(.*\),\"clearHeight\":\(.*\),\"clearAroundPath\":\(.*\),\"tracks.*/$name \1 \2 \3/p"
done >"$work/measured"
diff "$work/table" "$work/measured" || { echo "<: the guide's table of shapes, >: measured"; exit 1; }

# The messages in the guide's tables begin with a text of the source, after a name ('...'), if they have one.
texts() { grep -rhoE '"[^"]*"' src apps --include=*.cpp --include=*.h | tr -d '"'; }
texts | sed "s/^Error - //;s/^' //;s/ '\$//" >"$work/texts"
sed -n "/^## 7 /,/^## 8 /{s/^| \([^|]*\) |.*/\1/;T;s/^'\.\.\.' //;p}" docs/guide.md |
    awk 'NR == FNR { if (length($0) > 2) texts[$0]; next }
        /^(message|---)/ { next }
        { for (text in texts) if (index($0, text) == 1) next; print }' "$work/texts" - >"$work/unknown"
[ ! -s "$work/unknown" ] || { echo "Not in the source:"; cat "$work/unknown"; exit 1; }
texts | sed -n 's/^Error - //p' | sed 's/\\n.*//' | while read -r headline; do
    grep -qF "$headline" docs/guide.md || { echo "docs/guide.md lacks: $headline"; exit 1; }
done

for page in $(git ls-files '*.md'); do
    grep -oE '\]\([^)#:]+' "$page" | cut -c 3- | while read -r link; do
        [ -e "$(dirname "$page")/$link" ] || echo "$page: $link"
    done
done >"$work/dead"
[ ! -s "$work/dead" ] || { echo "Dead links:"; cat "$work/dead"; exit 1; }
