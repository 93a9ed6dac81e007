#!/bin/sh
# mistakes.sh INCLUDE_DIRECTORY COMPILER DIRECTORY
# Each file of the directory compiles, and does not with -DMISTAKE=N, for 1 and as many as it numbers: the compiler then
# says what the file's first line announces. C files are compiled as C++ as well.
set -eu
include=$1
compiler=$2
tried=0
check() {
    file=$1
    shift
    if ! "$compiler" "$@" -Wall -Wextra -Werror -I"$include" -fsyntax-only "$file"; then
        echo "$file does not compile: $*"
        exit 1
    fi
    mistake=0
    while [ $mistake -eq 0 ] || grep -q "MISTAKE == $((mistake + 1))\$" "$file"; do
        mistake=$((mistake + 1))
        if said=$("$compiler" "$@" -DMISTAKE=$mistake -I"$include" -fsyntax-only "$file" 2>&1); then
            echo "$file compiles in spite of mistake $mistake: $*"
            exit 1
        fi
        if ! echo "$said" | grep -qE "$(sed -n '1s/^[^:]*: //p' "$file")"; then
            echo "$file, mistake $mistake, is refused for something else: $said"
            exit 1
        fi
        tried=$((tried + 1))
    done
}

for file in "$3"/*; do
    case $file in
    *.c)
        check "$file" -x c -std=c99 -Werror=incompatible-pointer-types
        check "$file" -x c++ -std=c++11
        ;;
    *) check "$file" -x c++ -std=c++20 ;;
    esac
done
test $tried -gt 0
