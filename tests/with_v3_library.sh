#!/usr/bin/env bash
# with_v3_library.sh DIRECTORY PROGRAM: runs a test program with the library in DIRECTORY, which needs an x86-64-v3
# machine. Exits with 77, skipped, on any other.
set -euo pipefail
directory=$1 program=$2
/lib64/ld-linux-x86-64.so.2 --help | grep -q 'x86-64-v3 (supported' || exit 77
export LD_LIBRARY_PATH=$directory
if ! ldd "$program" | grep -qF "$directory/libtlvmsg.so.1"; then
    echo "$program does not take libtlvmsg from $directory" >&2
    exit 1
fi
"$program"
