# Captures: an object a frame, whatever the file's form and the frames' headers.
. "$(dirname "$0")/lib.sh"
for seed in 1 2 3; do tlv sample --seed $seed $message | od -Ax -tx1; done >three.txt
color() { tlv sample --seed "$1" --out json $message | jq .led_control.color; }
expected=$(for seed in 1 2 3; do color $seed; done | paste -sd ' ')

capture() { text2pcap -q "$@" >/dev/null 2>err || fail "text2pcap $*"; }
capture -l 147 three.txt user.pcapng
capture -F pcap -u 4000,4001 three.txt udp.pcap
capture -F pcapng -u 4000,4001 three.txt udp.pcapng
capture -F nsecpcap -T 4000,4001 three.txt tcp.pcap
capture -6 fe80::1,fe80::2 -u 4000,4001 three.txt udp6.pcapng
capture -4 10.0.0.1,10.0.0.2 -u 4000,4001 -l 101 three.txt raw_ip.pcapng
capture -P data three.txt exported.pcapng
capture -e 0x88b5 three.txt ethertype.pcapng
for file in *.pcap *.pcapng; do
    run decode -t $message $file; is 0; quiet
    equal "$(jq -r .message.led_control.color out | paste -sd ' ')" "$expected"
    equal "$(jq -c .frame out | paste -sd ' ')" '1 2 3'
    equal "$(jq -r .type out | sort -u)" $message
    cmp -s out <(tlv decode -t $message - <$file) || fail "$file from a pipe"
done
run decode udp.pcap; is 0; equal "$(jq -r '"\(.type) \(.source_port)"' out | sort -u)" "$message 4000"
jq -e '.time > 1000000000' out >time || fail 'no time'

run decode --type-of ethertype/0x88b5=ifid ethertype.pcapng; equal "$(jq -r '"\(.type) \(.protocol)"' out | sort -u)" 'ifid ethertype 0x88B5'
mergecap -w mixed.pcapng user.pcapng udp.pcapng
run decode mixed.pcapng; is 3; error_has "editcap -T ether"
editcap -T ether mixed.pcapng one.pcapng; run decode one.pcapng; equal "$(jq -r 'select(.message) | .protocol' out | uniq -c)" '      3 udp'
rm mixed.pcapng one.pcapng

# Filter and offset. Frames keep the numbers that they have in the file.
run decode -t $message --filter 'udp port 4000' udp.pcap; equal "$(wc -l <out)" 3
run decode -t $message --filter 'udp port 4002' udp.pcap; is 0; equal "$(wc -l <out)" 0
run decode -t $message --filter 'udp prt' udp.pcap; is 2; error_has 'filter'
run decode -t $message --offset 42 udp.pcap; is 0
run decode -t ifid --offset 90 udp.pcap; is 0; equal "$(jq .trailing_bytes out | sort -u)" 28
{ cat three.txt; printf '000000 ff ff\n'; tlv sample $message | od -Ax -tx1; } >four.txt
capture -u 4000,4001 four.txt four.pcap
run decode -t $message --filter 'greater 100' four.pcap; is 0; equal "$(jq .frame out | paste -sd ' ')" '1 2 3 5'

# What delimits messages: here the length in each element's header; or bytes to skip.
run decode -t ifid --framing skip:48 user.pcapng; is 0; equal "$(jq .trailing_bytes out | sort -u)" 28
run decode -t uint32 --framing length:2@2 udp.pcap; equal "$(jq .frame out | paste -sd ' ')" '1 1 1 2 2 2 3 3 3'
run decode -t uint32 --framing length:2@2+3 udp.pcap; is 2; error_has "framing 'length:2@2\+3': a number from 4 to 65535: .*at byte 11"
run decode -t uint32 --framing fixed udp.pcap; is 2; error_has "framing 'fixed': segment, skip:N or length:WIDTH@OFFSET: .*at byte 0"

# A link type whose headers are not known stops no file behind it, whatever the filter.
capture -F pcap -l 147 three.txt odd.pcap && change odd.pcap 20 e8030000
run decode -t $message odd.pcap udp.pcap; is 1
equal "$(jq -r '.error.code // .type' out | uniq -c | tr -s ' ')" " 3 link-type
 3 $message"
run decode -t $message --filter 'udp port 4000' odd.pcap udp.pcap; is 3; error_has 'odd.pcap: filter'
equal "$(wc -l <out)" 3; rm odd.pcap

# Frames that do not decode.
run decode -t $message four.pcap; is 1
equal "$(jq -r 'select(.error) | "\(.frame) \(.error.text)"' out)" "4 $message.session: needs 4 bytes, 2 are left at byte 0"
run decode four.pcap; is 0; equal "$(jq -c 'select(.error) | .frame' out)" 4
run decode -t $message --offset 5000 udp.pcap; is 1; equal "$(jq -c .error out | wc -l)" 3

# Broken files.
head -c 200 udp.pcap >cut.pcap
run decode -t $message cut.pcap; is 3; error_has 'error\[malformed-input\]: cut.pcap: '
run decode --in pcap three.txt; is 3
run decode missing.pcap udp.pcap; is 4; equal "$(jq -r .file out | sort -u)" udp.pcap

# Memory does not grow with the file: the peak of a long capture against that of a short one, in KiB.
report=kavu_analogbri_generic_report
tlv sample --kind max $report | od -Ax -v -tx1 >report.txt
capture -F pcap -l 147 report.txt short.pcap
python3 -c "
capture = open('short.pcap', 'rb').read()
open('long.pcap', 'wb').write(capture[:24] + 15000 * capture[24:])"
peak() { python3 -c "
import os, subprocess, sys
process = subprocess.Popen(sys.argv[1:], stdout=subprocess.DEVNULL)
print(os.wait4(process.pid, 0)[2].ru_maxrss)" tlv decode -t $report "$1"; }
[ $(($(peak long.pcap) - $(peak short.pcap))) -lt 8192 ] || fail 'memory grows with the file'
equal "$(tlv decode -t $report long.pcap | wc -l)" 15000
finish
