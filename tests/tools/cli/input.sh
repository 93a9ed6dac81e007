# Every spelling of the same bytes gives the same bytes.
. "$(dirname "$0")/lib.sh"
tlv sample --kind max kavu_analogbri_generic_report >big.bin # long runs, which dumps squeeze
tlv sample $message >led.bin

spellings() { # of FILE, into the directory hex
    rm -rf hex && mkdir hex
    xxd "$1" >hex/xxd
    xxd -g1 -c8 "$1" >hex/xxd_bytes
    xxd -p "$1" >hex/plain
    xxd -p "$1" | tr -d '\n' >hex/plain_without_newline
    xxd -p "$1" | tr a-f A-F | sed 's/$/\r/' >hex/plain_with_returns
    xxd -i "$1" >hex/c_array
    { echo '// decimal'; od -An -v -tu1 "$1" | sed 's/ \+/,/g; s/^,/  /; 1s/^/x[] = {/; $s/$/};/; $!s/$/,/'; } >hex/c_decimal
    hexdump -C "$1" >hex/hexdump
    hexdump -v -C "$1" >hex/hexdump_all
    od -tx1 "$1" >hex/od_octal
    od -Ax -tx1 "$1" >hex/od_hex
    od -Ad -tx1 "$1" >hex/od_decimal
    od -An -v -tx1 "$1" >hex/od_bare
    xxd -p -c1 "$1" | sed 's/^/0x/' | paste -sd ' ' >hex/prefixes
    xxd -p -c1 "$1" | paste -sd : >hex/colons
    xxd -p -c1 "$1" | paste -sd , >hex/commas
    xxd -p -c1 "$1" | sed 's/^/\\x/' | tr -d '\n' >hex/escapes
    xxd -p -c1 "$1" | awk '{ if (NR % 16 == 1) printf "%s%04x  ", (NR > 1 ? "   ...|{.0\n" : ""), NR - 1
                             printf " %s", $1 } END { print "   .." }' >hex/capture_tool
    { printf '\357\273\277# a comment\n'; xxd -p "$1"; } >hex/byte_order_mark
    tlv annotate "$1" >hex/annotated
    { cat "$1"; echo; } >hex/raw_with_newline
    cp "$1" hex/raw
}

# The bytes that tlv reads are those that annotating prints and xxd takes back.
bytes_of() { tlv annotate "$1" | sed -n 's/^ *[0-9]\+  \([0-9A-F ]\+\)|.*/\1/p' | xxd -r -p; }

for file in led.bin big.bin; do
    spellings $file
    expected=$(tlv decode $file)
    for spelling in hex/*; do
        bytes_of "$spelling" >read.bin
        same read.bin $file
        [ "$(tlv decode <"$spelling" 2>err)" = "$expected" ] || fail "$spelling from a pipe"
    done
done

# A type that annotated input names need not be given, and -t overrides it.
tlv annotate -t $message led.bin >led.txt
run decode led.txt; is 0; prints '"led_control"'
run decode -t app_sess_hdr led.txt; is 0; error_has 'warning\[trailing-bytes\]'
{ cat led.txt; echo 'set led_control.color = 3'; echo 'size 120'; } >vector.txt
run verify vector.txt; is 0; prints "$message, 120 of 120 bytes"
printf 'type uint8\n 0  00 02 00 01 | tag and length\n4 07 | value\n' | tlv decode - >out; equal "$(cat out)" 7
printf 'type zel_led_control\n0 05 4D 00 04 00 × 4 | value\n' | tlv guess >out 2>err; prints 'zel_led_control'

# Several messages, and repeated bytes.
cat >several.txt <<'END'
# From a note.
type ifid
   0  04 0F 00 28                    | tag and length
   4  (00 06 00 04 00 00 00 00) × 5  | five numbers
type kavu_analogbri_generic_report
   0  05 45 00 0F 00 02 00 01 00 00 0A 00 06 00 04 00 02 00 00 | nothing to report
END
run verify several.txt; is 0
prints '^several.txt:2: ifid, 44 of 44 bytes'; prints '^several.txt:5: kavu_analogbri_generic_report, 19 of 19'
run annotate several.txt; cp out first; run annotate first; equal "$(grep -v '^# ' out)" "$(grep -v '^# ' first)"
run decode --compact several.txt; equal "$(wc -l <out)" 2
run diff several.txt led.bin; is 3; prints '^2: .message.: "several.txt:5" -> nothing$'

# Other spellings: in logs, literals of Python, base64. What is left of the line, and what follows, is said.
log='2026-11-21 10:00:01.5 DEBUG'
logged() { sed "s/^/$log /" "$1"; }
xxd led.bin >dump; od -Ax -tx1 led.bin >od; xxd -p led.bin >plain; xxd -i led.bin >c
{ echo 'rx 120 bytes'; cat dump; echo done; } >chat
mkdir other
logged chat >other/dump; logged od >other/od; hexdump -C big.bin | sed "s/^/10:00:01 /" >other/squeezed
logged plain >other/plain; sed 's/^/[12.5] 10:00:01,250 tlvd[7]: rx: /' plain >other/names
python3 -c 'print("x = bytearray(", repr(open("led.bin", "rb").read()), ")")' >other/python
python3 -c 'b = open("led.bin", "rb").read(); print("# two\n(", repr(b[:50]), "\n ", repr(b[50:]), ")")' >other/python_lines
python3 -c 'print("rx:", list(open("led.bin", "rb").read()))' | sed "s/^/$log /" >other/list
base64 led.bin >other/base64; base64 -w0 led.bin | sed "s/^/$log /" >other/base64_line
for spelling in other/*; do
    bytes_of "$spelling" >read.bin
    case $spelling in *squeezed) same read.bin big.bin ;; *) same read.bin led.bin ;; esac
done
several() { tlv decode --compact "$1" >out 2>err; status=$?; is 0; equal "$(jq -c .message out)" "$(printf '%s\n' "$expected" "$expected")"; }
expected=$(tlv decode --compact led.bin 2>err)
for spelling in dump od chat c other/python other/list other/dump; do
    cat $spelling $spelling >twice; several twice
done
run diff -t $message twice led.bin; is 1; equal "$(cat out)" "2: (message): \"twice:$(($(wc -l <other/dump) + 2))\" -> nothing"

# Every message: a line each, back to back, in logs; each with its place.
for i in 1 2 3; do xxd -p -c0 led.bin | sed "s/^/12:00:0$i /"; done >lines
cat led.bin led.bin led.bin >raw
run decode -t $message lines; is 0; equal "$(jq -c '[.line,.number,.type]' out)" "$(printf '[%s,%s,"'$message'"]\n' 1 1 2 2 3 3)"
run decode -t $message raw; is 0; equal "$(jq -c '[.offset,.number]' out)" "$(printf '[%s]\n' 0,1 120,2 240,3)"
run verify -t $message raw; is 0; prints '^raw@240: .*120 of 120 bytes'
run guess raw; is 0; equal "$(grep -c '^yes' out)" 3
change raw 120 0999
run verify -t $message raw; is 1; prints '^raw@240: .*120 of 120 bytes'; error_has 'raw, from|raw@120, from'
tlv sample kavu_analogbri_generic_report >report.bin
cat report.bin led.bin >other.bin
run verify -t kavu_analogbri_generic_report other.bin; is 1; error_has 'a whole .* stands behind a message'
{ echo 'Nov 21 10:00:01 host tlvd[7]: up'; printf '{"ts":1700000000,"data":"%s"}\n' "$(xxd -p -c0 led.bin)"; } >log
run verify -t $message --skipped log; is 0; error_has 'log:1: no message'; prints '120 of 120 bytes'
printf 'rx %s tx %s\n' "$(xxd -p -c0 led.bin)" "$(tlv sample --seed 9 $message | xxd -p -c0)" >choice
run decode -t $message choice; is 1; error_has 'ambiguous.*choice:1: .*120 bytes .*, or 120 bytes'; equal "$(cat out)" ''

# Words of the machine's order by the text beside them, UTF-16, what a dump leaves out, what is no text of bytes.
xxd -e led.bin >words; xxd led.bin | iconv -t UTF-16 >utf16; sed 3d dump >lost
for spelling in words utf16; do bytes_of $spelling >read.bin; same read.bin led.bin; done
run annotate lost; is 3; error_has 'lost: line 3: "00000030" is no offset of what follows 32 bytes; --holes'
run annotate --holes lost; is 0; prints '120 bytes|zel_led_control'
gzip -c led.bin >led.gz; run decode led.gz; is 3; error_has 'gzip -dc FILE'

# Text that is no message names the line.
malformed() { printf "$1" | tlv decode >out 2>err; status=$?; is 3; error_has "$2"; }
malformed '03 E9\n0\n' 'line 2: .*odd number'
malformed 'hello\n' "line 1: .*hello.*--in raw"
malformed '0  03 E9 | x\n3  00 | y\n' 'line 2: "3" is the offset, but 2 bytes precede'
malformed '0  03 E9 | x\n2  0G | y\n' 'line 2: "0G"'
malformed '0 (00 × 2 | x\n' 'line 1: "\\u00d7"'
malformed 'type nothing\n' "no type is called 'nothing'"
malformed '{ 1, 256 }' '"256"'
malformed "$log 0000: 03 e9\n$log 0010: 00\n" 'line 2: "0010" is no offset of what follows 2 bytes'
malformed "$log 0000: 03 e9\n$log 0002: 0G\n" 'line 2: "0G"'
malformed "$log port 12 03 e9\n" '"port"'
malformed "x = b'03' * 2" 'no expressions'
malformed 'internationalization\n' 'neither hex'
malformed '[1, 2] 03 e9' '"\[1,"'
malformed 'type \233[2J\n' "'<9B>\[2J'"
printf '%016000000d' 0 | tr 0 z | tlv decode >out 2>err; status=$?; is 3; [ "$(wc -c <err)" -lt 300 ] || fail 'a long word'
malformed '0 00 × 99999999999 | x\n' 'line 1: '
hexdump led.bin | tlv decode >out 2>err; status=$?; is 3 # words in the host's order

# What detection would say is overridden.
printf '11' | tlv annotate --in raw 2>err | grep -q '31 31' || fail '--in raw'
printf '\x01\x02' | tlv annotate --in hex >out 2>err; status=$?; is 3
run decode /dev/null; is 0; equal "$(cat out)" '[]'
head -c 20000000 /dev/zero | tlv decode >out 2>err; status=$?; is 3; error_has 'more than'
finish
