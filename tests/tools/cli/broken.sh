# Broken messages: the fault is said, marked and survived.
. "$(dirname "$0")/lib.sh"
tlv sample $message >led.bin
cp led.bin wrong.bin && change wrong.bin 48 0410
wrong_tag='interface: tag 1040 where 1039 belongs at byte 48'

run decode -t $message wrong.bin; is 3
equal "$(head -1 err)" "tlv: error[wrong-tag]: $message.$wrong_tag"
error_has '^  wrong.bin, from byte 40:  .* 04 10 00 28 '
# The caret is below the byte.
column=$(sed -n 2p err | grep -b -o '04 10 00 28' | cut -d: -f1)
equal "$(sed -n 3p err)" "$(printf '%*s^^' "$column" '')"
equal "$(cat out)" ''
run verify -t $message wrong.bin; is 1
run verify -t $message wrong.bin led.bin; is 1; prints '^led.bin: '
run annotate -t $message wrong.bin; is 1; error_has "$wrong_tag"
prints "\| ! error\[wrong-tag\]: $message.$wrong_tag"
prints '^  48  04 10 00 28 .*\| zel_connection_id, tag 1040, length 40' # and what follows, by its tags
prints '^ 108  05 52 00 08 .*\| zel_led_control.color: zel_led_color = '
run guess wrong.bin; is 1; prints "^no .*$wrong_tag"

xxd -p wrong.bin >wrong.hex
run decode -t $message wrong.hex; is 3; error_has 'at byte 48'; error_has 'wrong.hex, from byte 40'

# A count that the array cannot hold.
tlv encode -t zel_mac_addr '{}' >mac.bin && change mac.bin 12 0007
run decode -t zel_mac_addr mac.bin; is 3; error_has 'count-exceeds-capacity.*count: 7 exceeds capacity 6 at byte 12'
run verify -t zel_mac_addr mac.bin; is 1

# Behind a fault and in what decoders skip, elements of any length are told, as long as they make sense.
tlv annotate -t zel_mac_addr mac.bin >out 2>err; prints '^  14 .*\| not understood "'
printf '\x05\x4d\x00\x14\x00\x04\x00\x03abc\x00\x04\x00\x02\x00\x05\x05\x52\x00\x02ab\x07' >long.bin
{ head -c 92 led.bin; cat long.bin; } | tlv annotate -t $message >out 2>err
prints '^  96  00 04 00 03 .*\| led_control: skipped, uint16, tag 4, length 3'
prints '^ 103  00 04 00 02 00 05 .*\| led_control: skipped, uint16 = 5'
prints '^ 109  05 52 00 02 61 62 07 .*\| led_control: skipped ".R..ab."'
printf '\x00\x06\x00\x03abc\x00\x04\x00\x02\x00\x05\x00\x02' | tlv annotate -t uint32 >out 2>err
prints '^   0  00 06 00 03 .*\| uint32, tag 6, length 3'; prints '^   7  00 04 .*\| uint16 = 5'; prints '^  13  00 02 .*not understood'

# Whatever is cut off or changed: an answer, and from annotated text the same bytes again.
survives() { # FILE WHAT
    tlv annotate -t $message "$1" >once 2>err
    [ $? -le 1 ] || fail "$2"
    tlv annotate once >twice 2>err
    same once twice
    for command in decode guess annotate; do
        tlv $command "$1" >out 2>err
        [ $? -le 3 ] || fail "$command, $2"
    done
}
for size in $(seq 0 17 119); do
    head -c "$size" led.bin >cut.bin
    survives cut.bin "cut to $size"
    run verify -t $message cut.bin; is 1; error_has 'error\[truncated\]'
done
for offset in 0 2 3 93 95 111; do # tags and lengths
    cp led.bin changed.bin && change changed.bin "$offset" FF
    survives changed.bin "byte $offset"
done
# An element shorter than its members: bytes are read again, and still printed once.
tlv sample --kind min analogbri_tdm_conn_resp_message >short.bin && change short.bin 110 0000
run annotate -t analogbri_tdm_conn_resp_message short.bin; is 0
prints 'tolerated\[length-mismatch\].*conn_pair: length 0 where 24'; prints 'bytes 112 to 117 again: tdm_conn_resp.value_3'
sed -n 's/^ *[0-9]\+  \([0-9A-F ]\+\)|.*/\1/p' out | xxd -r -p >read.bin; same read.bin short.bin
head -c 65536 /dev/urandom >random.bin
for command in decode annotate guess; do
    tlv $command --in raw random.bin >out 2>err
    [ $? -le 3 ] || fail "$command random bytes"
done
# Arrays in arrays in arrays, deeper than any type.
python3 - >deep.bin <<'END'
import sys
inner = b''
while len(inner) < 60000:
    inner = (0x7777).to_bytes(2, 'big') + len(inner).to_bytes(2, 'big') + inner
sys.stdout.buffer.write(inner)
END
for command in decode annotate guess; do
    timeout 20 tlv $command --in raw deep.bin >out 2>err
    [ $? -le 3 ] || fail "$command deep.bin"
    [ "$(grep -o 'tag 30583' out | wc -l)" -le 200 ] || fail "$command deep.bin goes all the way down"
done
# Memory that runs out is an error of its own, in every command, for as long as the program starts at all.
head -c 16000000 /dev/zero >zeros
for command in decode annotate guess 'decode --text' "verify -t $message" "diff -t $message led.bin" 'encode -t ifid'; do
    (ulimit -v 30000; tlv --version >out 2>err) || break # sanitizers want more
    (ulimit -v 30000; tlv $command zeros >out 2>err); status=$?; is 5; error_has 'error\[out-of-memory\]'
done
finish
