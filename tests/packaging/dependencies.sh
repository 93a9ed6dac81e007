#!/bin/sh
# dependencies.sh (SHARED_LIBRARY STATIC_LIBRARY)...
# The libraries need memory of the platform and functions of <string.h>, and nothing of C++. bcmp is what clang makes of
# a memcmp that only tells whether bytes differ.
set -eu
export LC_ALL=C

check() {
    needed=$(readelf -d "$1" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p' | sort | tr '\n' ' ')
    if [ "$needed" != "libc.so.6 libosal_pelix.so " ]; then
        echo "$1 needs: $needed"
        exit 1
    fi

    # What no member of the archive defines itself.
    missing=$(nm "$2" | awk 'NF == 2 && $1 == "U" { wanted[$2] = 1 }
                             NF == 3 { defined[$3] = 1 }
                             END { for (name in wanted) if (!(name in defined)) print name }' | sort)
    for name in $missing; do
        case $name in
        OSALmalloc | OSALfree | OSALmemset | bcmp | memcmp | memcpy | memmove | memset | strcmp | _GLOBAL_OFFSET_TABLE_) ;;
        *)
            echo "$2 wants $name"
            exit 1
            ;;
        esac
    done
    test -n "$missing"
}

while [ $# -gt 0 ]; do
    check "$1" "$2"
    shift 2
done
