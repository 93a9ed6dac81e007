# What the scripts share: a directory of their own, running tlv, or what else $program names, and saying what must hold.
#
#     run verify -t ifid led.bin        # leaves $status, and the files out and err
#     is 1 && error_has 'error\[wrong-tag\]'
set -u
export LC_ALL=C
unset NO_COLOR
# What a sanitizer finds must look like no status of tlv's own.
export ASAN_OPTIONS=exitcode=99:quarantine_size_mb=1 UBSAN_OPTIONS=exitcode=99
PATH=$TLV_BIN:$PATH
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch" || exit 1

program=tlv
message=analogbri_led_control_req_message
failures=0

fail() {
    echo "${BASH_SOURCE[-1]##*/}:${BASH_LINENO[-2]}: $*"
    head -n 20 out err 2>/dev/null | sed 's/^/    /'
    failures=$((failures + 1))
}

run() {
    "$program" "$@" >out 2>err
    status=$?
}

is() { [ "$status" -eq "$1" ] || fail "status $status, not $1"; }
prints() { grep -qE -- "$1" out || fail "the output lacks '$1'"; }
prints_not() { ! grep -qE -- "$1" out || fail "the output has '$1'"; }
error_has() { grep -qE -- "$1" err || fail "standard error lacks '$1'"; }
quiet() { [ ! -s err ] || fail 'standard error is not empty'; }
equal() { [ "$1" = "$2" ] || fail "'$1' is not '$2'"; }
same() { cmp -s "$1" "$2" || fail "$1 and $2 differ"; }

# Bytes for a file: change FILE OFFSET HEX
change() { echo "$3" | xxd -r -p | dd of="$1" bs=1 seek="$2" conv=notrunc status=none; }

finish() {
    [ "$failures" -eq 0 ] && exit 0
    echo "$failures failed"
    exit 1
}
