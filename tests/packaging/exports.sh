#!/bin/sh
# exports.sh LIBRARY_DIRECTORY SOURCE_DIRECTORY GENERATED_DIRECTORY LIST_EXPORTS
# Each shared library exports the names that its lists have, and of types those that the descriptors ask for.
. "$(dirname "$0")/lib.sh"
libraries=$1
source=$2
generated=$3

check() { # LIBRARY SYMBOLS...
    # The name of the version itself is a symbol too, an absolute one.
    nm -D --defined-only "$libraries/lib$1.so" | awk '$2 != "A" { sub(/@.*/, "", $3); print $3 }' | sort > "$work/exported"
    shift
    sort "$@" > "$work/listed"
    test -s "$work/exported"
    diff "$work/exported" "$work/listed"
}

check tlvmsg_inspect "$source/inspect/tlvmsg_inspect.symbols" "$generated/types.symbols"
check tlvmsg_forms "$source/forms/tlvmsg_forms.symbols"
check tlvmsg_schema "$source/schema_library/tlvmsg_schema.symbols"
check tlvmsg "$generated/tlvmsg.symbols"
"$4" | sort > "$work/described"
diff "$work/exported" "$work/described"
