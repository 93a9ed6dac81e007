#!/bin/sh
# copies.sh INCLUDE_DIRECTORY LIBRARY_DIRECTORY PROGRAM_SOURCE...
# However a program is compiled, it shares the descriptors of the library and has no copies of them.
. "$(dirname "$0")/lib.sh"
include=$1
libraries=$2
shift 2
for source in "$@"; do
    case $source in
    *.cpp) compilers="g++ clang++" options=-std=c++20 ;;
    *) compilers="gcc clang" options=-std=c99 ;;
    esac
    for compiler in $compilers; do
        command -v "$compiler" > /dev/null || continue
        for kind in "-fPIE -pie -O0" "-fPIE -pie -O2" "-fno-pie -no-pie -O0" "-fno-pie -no-pie -O2"; do
            # shellcheck disable=SC2086
            "$compiler" $options $kind "$source" -I"$include" -L"$libraries" -ltlvmsg_inspect -losal_pelix \
                -Wl,-rpath,"$libraries" -o "$work/program"
            "$work/program"
            readelf -rW "$work/program" > "$work/relocations"
            grep -q tlvmsg_type_of "$work/relocations"
            if grep -E '_COPY.*tlvmsg' "$work/relocations"; then
                echo "$source, $compiler $kind: copied"
                exit 1
            fi
        done
    done
done
