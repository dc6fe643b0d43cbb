#!/bin/sh
# Checks that the samples are what their maker makes.
#   samples.sh PROJECT
set -eu
cd "$1"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
tools/make-samples "$work"
diff -r tracks "$work/tracks"
diff -r elements "$work/elements"
