# Terminals and pipes: colour, progress, readers that go, outputs that are full.
. "$(dirname "$0")/lib.sh"
tlv sample $message >led.bin
escape=$(printf '\033')
on_terminal() { script -qec "$1" /dev/null </dev/null >out; status=$?; }

# Colour on terminals only, and never with NO_COLOR.
run annotate -t $message led.bin; prints_not "$escape"
on_terminal "tlv annotate -t $message led.bin"; is 0; prints "$escape\["
NO_COLOR=1 on_terminal "tlv annotate -t $message led.bin"; prints 'led_control'; prints_not "$escape"
NO_COLOR= on_terminal "tlv annotate -t $message led.bin"; prints "$escape\["
run annotate --color=always -t $message led.bin; prints "$escape\["
on_terminal "tlv annotate --color never -t $message led.bin"; prints 'led_control'; prints_not "$escape"
head -c 60 led.bin >cut.bin
on_terminal "tlv decode -t $message cut.bin 2>&1"; is 3; prints "$escape\[1;31merror\[truncated\]"
on_terminal "tlv encode -t ifid '{}'"; prints '^04 0F 00 28 00 06' # hex rather than what upsets it
on_terminal "tlv decode led.bin"; prints "no type given.*'tlv guess'"

# A reader that goes is no failure, and nobody hears of it. A full disk is one.
tlv types 2>err | head -1 >out; equal "${PIPESTATUS[*]}" '0 0'; quiet
(trap '' PIPE; tlv types 2>err | true; exit "${PIPESTATUS[0]}"); equal $? 0; quiet
tlv types >/dev/full 2>err; status=$?; is 4; error_has 'standard output: No space'
tlv decode -t $message led.bin >/dev/full 2>err; status=$?; is 4
tlv types >&- 2>err; status=$?; is 4

# Progress: on a terminal, after two seconds, not in the output.
tlv sample $message | od -Ax -tx1 >one.txt
text2pcap -q -F pcap -l 147 one.txt one.pcap >text 2>&1
cat >slowly <<'END'
cat one.pcap; sleep "$1"; tail -c +25 one.pcap; sleep 0.1
END
on_terminal "sh slowly 2.2 | tlv decode --in pcap -t $message - >frames"; is 0; prints 'tlv: 2 frames'
equal "$(wc -l <frames)" 2
on_terminal "sh slowly 0.1 | tlv decode --in pcap -t $message - >frames"; is 0; prints_not frames
sh slowly 2.2 | tlv decode --in pcap -t $message - >out 2>err; quiet
finish
