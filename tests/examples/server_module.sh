#!/bin/sh
# server_module.sh PROGRAM..., or one that runs it: valgrind PROGRAM...
# Both processes succeed, and what they print shows a record taken and two refused.
set -eu
if ! command -v "$1" > /dev/null; then
    echo "skipped: there is no $1"
    exit 77
fi
printed=$("$@")
echo "$printed"
for wanted in 'module: address .*0A000001|module: address .*167772161' 'VLAN 101 has 2000' \
    'error\[wrong-tag\]: .*counter_10: tag 262 where 6 belongs' 'error\[truncated\]'; do
    echo "$printed" | grep -qE "$wanted"
done
