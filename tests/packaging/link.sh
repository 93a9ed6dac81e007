#!/bin/sh
# link.sh INCLUDE_DIRECTORY LIBRARY_DIRECTORY PROGRAM_SOURCE
# A C program links with the plain C compiler driver, against the shared library and against the static one.
. "$(dirname "$0")/lib.sh"
build() {
    cc -Wall -Wextra -Werror "$3" -I"$1" -L"$2" "$4" -losal_pelix -Wl,-rpath,"$2" -o "$work/$5"
    "$work/$5"
}
build "$1" "$2" "$3" -l:libtlvmsg.so shared
build "$1" "$2" "$3" -l:libtlvmsg.a static
readelf -d "$work/shared" | grep -q 'NEEDED.*libtlvmsg'
if readelf -d "$work/static" | grep -q 'NEEDED.*libtlvmsg'; then
    exit 1
fi
