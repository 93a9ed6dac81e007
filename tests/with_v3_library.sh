#!/usr/bin/env bash
# with_v3_library.sh DIRECTORY PROGRAM: runs a test program with the library in DIRECTORY, which needs an x86-64-v3
# machine. Exits with 77, skipped, on any other.
set -euo pipefail
# No grep -q: it would not read to the end, and the command before it would fail of that.
directory=$1 program=$2
/lib64/ld-linux-x86-64.so.2 --help | grep 'x86-64-v3 (supported' >/dev/null || exit 77
export LD_LIBRARY_PATH=$directory
if ! ldd "$program" | grep -F "$directory/libtlvmsg.so.1" >/dev/null; then
    echo "$program does not take libtlvmsg from $directory" >&2
    exit 1
fi
"$program"
