#!/bin/sh
# exports.sh LIBRARY SYMBOLS LIST_EXPORTS
# The shared library exports the names that its symbols file lists, which are those that the descriptors ask for.
set -eu
export LC_ALL=C
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# The name of the version itself is a symbol too, an absolute one.
nm -D --defined-only "$1" | awk '$2 != "A" { sub(/@.*/, "", $3); print $3 }' | sort > "$work/exported"
sort "$2" > "$work/listed"
"$3" | sort > "$work/described"

diff "$work/exported" "$work/listed"
diff "$work/exported" "$work/described"
test -s "$work/exported"
