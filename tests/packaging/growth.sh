#!/bin/sh
# growth.sh INCLUDE_DIRECTORY LIBRARY_DIRECTORY SOURCE_DIRECTORY GENERATED_DIRECTORY VERSION_SCRIPT
# Programs and libraries go together when one of them has a meaning for reserved words and the other has not: a program
# that is newer than its library, and a bounded library that is newer than a program and the library of forms.
. "$(dirname "$0")/lib.sh"
include=$1
libraries=$2
source=$3
generated=$4
version_script=$5

cp -r "$include" "$work/include"
find "$work/include" -name '*.h' -exec sed -i -E \
    -e 's/uintptr_t reserved\[4\];/uintptr_t meaning; uintptr_t reserved[3];/' \
    -e 's/uintptr_t reserved\[2\];/uintptr_t meaning; uintptr_t reserved[1];/' \
    -e 's/uint32_t reserved;/uint32_t meaning;/' {} +
program=$(dirname "$0")/growth.c
compile() { # OUTPUT INCLUDE_DIRECTORY OPTION...
    output=$1
    headers=$2
    shift 2
    cc -std=c11 -Wall -Wextra -Werror "$program" -I"$headers" "$@" -L"$libraries" -ltlvmsg_schema -ltlvmsg_forms -ltlvmsg_inspect \
        -losal_pelix -o "$output"
}
compile "$work/later" "$work/include" -DMEANING
compile "$work/earlier" "$include"
LD_LIBRARY_PATH=$libraries "$work/later"
LD_LIBRARY_PATH=$libraries "$work/earlier"

# The engine anew; descriptors and strict operations, which know nothing of it, as they are.
mkdir "$work/objects" "$work/newer"
# shellcheck disable=SC2016
for file in "$source"/inspect/*.cpp; do
    echo "$file"
done | xargs -P 2 -I FILE sh -c 'c++ -std=c++20 -O0 -fPIC -fno-exceptions -fno-rtti -fno-threadsafe-statics \
    -fvisibility=hidden -I"$1/include" -I"$2" -I"$3" -I"$2/platform" -c FILE -o "$1/objects/$(basename FILE).o"' \
    sh "$work" "$source" "$generated"
cc -shared -Wl,-soname,libtlvmsg_inspect.so.1 -Wl,-z,defs \
    -Wl,--version-script="$version_script" "$work"/objects/*.o "$libraries/libtlvmsg_inspect.a" \
    -L"$libraries" -losal_pelix -o "$work/newer/libtlvmsg_inspect.so.1"
LD_LIBRARY_PATH=$work/newer:$libraries "$work/earlier" understood
