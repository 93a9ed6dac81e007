#!/bin/sh
# inline.sh INCLUDE_DIRECTORY LIBRARY_DIRECTORY
# What headers define is one function in all of a C++ program, and nothing of it is exported by libraries that call it.
. "$(dirname "$0")/lib.sh"
include=$1
libraries=$2
for unit in one other; do
    cat > "$work/$unit.cpp" << END
#include <tlvmsg/voice.hpp>
auto $unit() { return tlvmsg_decode_zel_led_control; }
bool $unit(tlvmsg::byte_view in) { return tlvmsg_verify_ifid(in.data(), in.size(), nullptr, nullptr, nullptr); }
END
done
cat > "$work/main.cpp" << END
#include <tlvmsg/voice.hpp>
decltype(&tlvmsg_decode_zel_led_control) one(), other();
int main() { return one() == other() && !tlvmsg::decode<zel_led_control>(std::string_view()) ? 0 : 1; }
END
for compiler in g++ clang++; do
    command -v "$compiler" > /dev/null || continue
    for level in -O0 -O2; do
        for unit in one other main; do
            "$compiler" -std=c++20 $level -fPIC -I"$include" -c "$work/$unit.cpp" -o "$work/$unit.o"
        done
        "$compiler" "$work"/*.o -L"$libraries" -ltlvmsg_inspect -losal_pelix -Wl,-rpath,"$libraries" -o "$work/program"
        "$work/program"
        "$compiler" -shared "$work/one.o" "$work/other.o" -o "$work/library"
        nm -DC --defined-only "$work/library" > "$work/exported"
        grep -q 'one(tlvmsg::byte_view)' "$work/exported"
        if grep ' tlvmsg_' "$work/exported"; then
            echo "exported, $compiler $level"
            exit 1
        fi
    done
done
