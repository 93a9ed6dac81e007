#!/bin/sh
# headers.sh INCLUDE_DIRECTORY COMPILER DIALECT...
# Every public header compiles alone, without a warning, in each dialect of the compiler, e.g. gcc c99 c11; those for C++
# in C++20, without exceptions and run-time type information.
set -eu
include=$1
compiler=$2
shift 2
tried=0
for dialect in "$@"; do
    headers="$include/tlvmsg/*.h $include/tlvmsg/bounded/*.h $include/tlvmsg/forms/*.h"
    case $dialect in
    c++20) options="-x c++ -fno-exceptions -fno-rtti" headers="$headers $include/tlvmsg/*.hpp" ;;
    c++*) options="-x c++" ;;
    *) options="-x c -Wc++-compat -Wstrict-prototypes" ;;
    esac
    for header in $headers; do
        # shellcheck disable=SC2086
        printf '#include <tlvmsg/%s>\ntypedef int something_declared;\n' "${header#"$include"/tlvmsg/}" |
            $compiler $options -std="$dialect" -pedantic -Wall -Wextra -Wconversion -Wshadow -Werror -I"$include" \
                -fsyntax-only -
        tried=$((tried + 1))
    done
done
test $tried -gt 0
