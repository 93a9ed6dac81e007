# What the scripts share: a directory of their own, which goes away with them, and commands that speak when they fail.
set -eu
export LC_ALL=C
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
quietly() {
    "$@" > "$work/log" 2>&1 || { echo "$*"; cat "$work/log"; exit 1; }
}
