#!/bin/sh
# recipe.sh TLVC SOURCE_DIRECTORY CXX
# Adding a message as HACKING.md has it: the schema is edited, and of all other files only the baseline changes.
set -eu
tlvc=$1
source=$2
cxx=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp -r "$source/schema" "$work"
cd "$work"

sed -n '/^## Adding a message/,/^### /s/^       //p' "$source/HACKING.md" > recipe
message=$(sed -n 's/^message \([a-z_]*\) .*/\1/p' recipe)
test -n "$message"
cat recipe >> schema/voice/analogbri.tlv
"$tlvc" format schema/voice/analogbri.tlv

# The baseline gains the new types and loses nothing.
"$tlvc" interface schema/*/*.tlv > after.txt
diff "$source/schema/interface.txt" after.txt > difference || true
grep -q "^> message $message" difference
if grep '^<' difference; then
    exit 1
fi

"$tlvc" generate --library --out . schema/*/*.tlv
for operation in "get_tlv_${message}_size" "encode_tlv_$message" "decode_tlv_$message"; do
    grep -q "$operation(" include/tlvmsg/voice.h
    grep -qx "$operation" src/tlvmsg.symbols
done
for file in src/voice_codecs.cpp src/voice_types.cpp src/voice_layout.cpp; do
    "$cxx" -std=c++20 -Wall -Wextra -Werror -fsyntax-only -Iinclude -Isrc -I"$source" -I"$source/include" \
        -I"$source/platform" $file
done
