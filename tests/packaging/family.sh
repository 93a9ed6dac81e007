#!/bin/sh
# family.sh BUILD_DIRECTORY EXAMPLE_DIRECTORY
# Who has nothing but the installed tree builds a family of their own with it, by CMake and by make, shows its bytes
# with a schema that nobody compiled, and is told what a change of it breaks.
. "$(dirname "$0")/lib.sh"
says() {
    grep -q "$2" "$1" || { echo "no '$2':"; cat "$1"; exit 1; }
}

fails() {
    if "$@" > "$work/log" 2>&1; then echo "no failure: $*"; exit 1; fi
}
lacks() {
    if grep -e "$2" "$1"; then exit 1; fi
}

unset LD_LIBRARY_PATH TLVMSG_SCHEMA
quietly cmake --install "$1" --prefix "$work/pre fix"
cp -r "$2" "$work/fans"
cd "$work/fans"
PATH="$work/pre fix/bin:$PATH"
PKG_CONFIG_LIBDIR=$(dirname "$(find "$work/pre fix" -name tlvmsg.pc)")
export PATH PKG_CONFIG_LIBDIR

quietly cmake -B "a build" -DCMAKE_PREFIX_PATH="$work/pre fix" -DBUILD_SHARED_LIBS=ON -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_C_FLAGS='-Wall -Wextra -Werror' -DCMAKE_CXX_FLAGS='-Wall -Wextra -Wconversion -Wshadow -Werror'
quietly cmake --build "a build"
"a build/fans" report.bin > output
says output '^tray 1: 4180 rpm$'
says output '^tray 2: bearing seized$'
says output 'tag 32771 is acme_fan$'
says output '^key 17: acme_fan_report_message$'

# What is generated is up to date until a file that was read changes.
cmake --build "a build" > again
lacks again tlvc:
touch acme/fan.tlv
cmake --build "a build" > again
says again tlvc:

# The library has the family and nothing else, and needs no run time of C++.
nm -D --defined-only "a build/libacme.so" | awk '$2 != "A" { print $3 }' > exported
says exported '^decode_tlv_acme_fan$'
says exported '^tlvmsg_family_acme$'
grep -v '_acme_fan\|^tlvmsg_family_acme$' exported > others || true
lacks others .
nm -D --undefined-only "a build/libacme.so" > needed
lacks needed ' _Z\| __gxx\| __cxa_[^f]'

# make builds the same. Its paths cannot have blanks.
mv "$work/pre fix" "$work/prefix"
PATH="$work/prefix/bin:$PATH" PKG_CONFIG_LIBDIR=$(echo "$PKG_CONFIG_LIBDIR" | sed 's/pre fix/prefix/')
LD_LIBRARY_PATH=$(dirname "$PKG_CONFIG_LIBDIR")
export LD_LIBRARY_PATH
quietly make
./fans again.bin > again
diff output again
cmp report.bin again.bin
make -q || { echo "make is not done"; exit 1; }

tlv --schema acme/fan.tlv guess report.bin > guessed 2>&1 || true
tlv decode --schema acme/fan.tlv -t acme_fan_report_message report.bin > report.json
says report.json '"rpm": 4180'
tlv encode --schema acme/fan.tlv -t acme_fan_report_message report.json | cmp - report.bin
says guessed '^yes .*acme_fan_report_message: '

# A change is built at the next make, and its consequences are told.
mkdir -p old/acme
mv acme/fan.tlv old/acme
sed 's/^    uint8  *tray/    uint16           tray/; s/rpm_wanted/wanted/' old/acme/fan.tlv > acme/fan.tlv
fails make -q
fails make
says "$work/log" 'rpm_wanted'
fails tlvc compare old/acme acme
says "$work/log" 'C013.*tray'
says "$work/log" 'C014.*wanted'
