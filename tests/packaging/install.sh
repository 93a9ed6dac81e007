#!/bin/sh
# install.sh BUILD_DIRECTORY CONSUMER_DIRECTORY TLV
# What is installed runs as it is, wherever it is then moved, and serves programs that know only its prefix: through
# find_package and through pkg-config.
. "$(dirname "$0")/lib.sh"

unset LD_LIBRARY_PATH
quietly cmake --install "$1" --prefix "$work/first"
mv "$work/first" "$work/prefix"
[ -z "$3" ] || quietly "$work/prefix/bin/$3" show zel_led_control
for page in man5/tlv-schema.5 ${3:+man1/$3.1 man1/tlvc.1 man1/tlvc-check.1}; do
    test -s "$work/prefix/share/man/$page" || { echo "$page is not installed"; exit 1; }
done
test -s "$work/prefix/share/tlvmsg/schema.json" || { echo "schema.json is not installed"; exit 1; }
package=$(find "$work/prefix" -name tlvmsg.pc)
PKG_CONFIG_LIBDIR=$(dirname "$package")
export PKG_CONFIG_LIBDIR

quietly cmake -S "$2" -B "$work/consumer" -DCMAKE_PREFIX_PATH="$work/prefix"
quietly cmake --build "$work/consumer"
quietly ctest --test-dir "$work/consumer" --output-on-failure --no-tests=error

pkg-config --exists --print-errors 'tlvmsg >= 1' 'tlvmsg_inspect >= 1' 'tlvmsg_forms >= 1' 'tlvmsg_schema >= 1'
for library in tlvmsg tlvmsg_inspect tlvmsg_forms tlvmsg_schema; do
    # shellcheck disable=SC2046
    cc -Wall -Wextra -Werror "$2/$library.c" $(pkg-config --cflags --libs $library) \
        -Wl,-rpath,"$(pkg-config --variable=libdir $library)" -o "$work/program"
    "$work/program" "$(pkg-config --variable=schemadir $library)"
    # shellcheck disable=SC2046
    cc -static "$2/$library.c" $(pkg-config --static --cflags --libs $library) -o "$work/static"
    "$work/static" "$(pkg-config --variable=schemadir $library)"
done
# shellcheck disable=SC2046
c++ -std=c++20 -static "$2/tlvmsg_inspect.cpp" $(pkg-config --static --cflags --libs tlvmsg_inspect) -o "$work/static"
"$work/static"
