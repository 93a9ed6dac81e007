#!/bin/sh
# install.sh BUILD_DIRECTORY CONSUMER_DIRECTORY
# An installed library serves programs that know only its prefix, wherever that is: through find_package and through
# pkg-config.
set -eu
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
quietly() {
    "$@" > "$work/log" 2>&1 || { cat "$work/log"; exit 1; }
}

quietly cmake --install "$1" --prefix "$work/prefix"
package=$(find "$work/prefix" -name tlvmsg.pc)
PKG_CONFIG_LIBDIR=$(dirname "$package")
LD_LIBRARY_PATH=$(dirname "$PKG_CONFIG_LIBDIR")
export PKG_CONFIG_LIBDIR LD_LIBRARY_PATH

quietly cmake -S "$2" -B "$work/consumer" -DCMAKE_PREFIX_PATH="$work/prefix"
quietly cmake --build "$work/consumer"
quietly ctest --test-dir "$work/consumer" --output-on-failure --no-tests=error

pkg-config --exists --print-errors 'tlvmsg >= 1' 'tlvmsg_inspect >= 1' 'tlvmsg_forms >= 1'
for library in tlvmsg tlvmsg_inspect tlvmsg_forms; do
    # shellcheck disable=SC2046
    cc -Wall -Wextra -Werror "$2/$library.c" $(pkg-config --cflags --libs $library) -o "$work/program"
    "$work/program"
done
