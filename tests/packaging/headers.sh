#!/bin/sh
# headers.sh INCLUDE_DIRECTORY COMPILER DIALECT...
# Every public header compiles alone, without a warning, in each dialect of the compiler, e.g. gcc c99 c11.
set -eu
include=$1
compiler=$2
shift 2
tried=0
for dialect in "$@"; do
    case $dialect in
    c++*) options="-x c++" ;;
    *) options="-x c -Wc++-compat -Wstrict-prototypes" ;;
    esac
    for header in "$include"/tlvmsg/*.h "$include"/tlvmsg/bounded/*.h; do
        # shellcheck disable=SC2086
        printf '#include <tlvmsg/%s>\ntypedef int something_declared;\n' "${header#"$include"/tlvmsg/}" |
            $compiler $options -std="$dialect" -pedantic -Wall -Wextra -Werror -I"$include" -fsyntax-only -
        tried=$((tried + 1))
    done
done
test $tried -gt 0
