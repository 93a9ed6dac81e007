#!/bin/sh
# version_script.sh SCRIPT
# What a release adds goes into a node of its own; a build that would add to a released one, or lacks what one had, is
# refused.
. "$(dirname "$0")/lib.sh"
script=$1
node_of() { # VERSION SYMBOL...
    version=$1
    shift
    printf '%s\n' "$@" > "$work/symbols"
    cmake -DLIBRARY=lib -DVERSION="$version" -DRELEASES="$work/released" -DSYMBOLS="$work/symbols" -DOUT="$work/map" \
        -P "$script" > "$work/log" 2>&1 && tr -s ' \n' ' ' < "$work/map" | sed 's/^#[^L]*//'
}
expect() { # EXPECTED VERSION SYMBOL...
    expected=$1
    shift
    found=$(node_of "$@") || { cat "$work/log"; exit 1; }
    test "$found" = "$expected" || { echo "found '$found'"; exit 1; }
}
refused() { # WORDS VERSION SYMBOL...
    words=$1
    shift
    if node_of "$@"; then
        echo "$* is not refused"
        exit 1
    fi
    tr -s ' \n' ' ' < "$work/log" | grep -qF "$words" || { cat "$work/log"; exit 1; }
}

first='LIB_1.0 { global: a; b; local: *; }; '
second='LIB_1.9 { global: c; } LIB_1.0; '
expect "$first" 1.0 a b
mkdir -p "$work/released/1.0" "$work/released/1.9"
printf 'a\nb\n' > "$work/released/1.0/lib.symbols"
expect "$first" 1.1 b a
refused 'lib 1.0 is released and did not export c' 1.0 a b c
refused 'lib 1.0 exported what is there no more: b' 1.1 a
expect "$first$second" 1.9 a b c
printf 'c\n' > "$work/released/1.9/lib.symbols"
refused 'did not export d' 1.9 a b c d
refused 'did not export d' 1.2 a b c d
expect "$first${second}LIB_1.10 { global: d; } LIB_1.9; " 1.10 a b c d
