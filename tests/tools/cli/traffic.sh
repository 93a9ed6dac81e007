# All that a network carries: messages are found wherever they lie, and nothing else is taken for one.
here=$(cd "$(dirname "$0")" && pwd)
. "$here/lib.sh"
big=zel_tib_vlan_stats_message
tlv sample --seed 3 $message >small.bin; tlv sample --seed 3 $big >big.bin
python3 "$here/traffic.py" small.bin big.bin >traffic.pcap 2>what || fail 'traffic.py'

run decode traffic.pcap; is 1; quiet
equal "$(jq -s 'map(select(.type and .error)) | length' out)" 0
# The message, or else the code, of every frame, in the order of the frames; a lost one's comes last.
jq -r '"\(.frame) \(.type // .error.code)"' out | sort -sn >found
sed -e "s/ small$/ $message/" -e "s/ big$/ $big/" what | sort -sn >expected
same found expected
jq -c "select(.type == \"$big\") | .message" out | sort -u >bodies
equal "$(cat bodies)" "$(tlv decode --compact -t $big big.bin | jq -c .)"

# What nothing says is a message is no error: TCP without data, other protocols. What begins as one is.
run decode --filter 'port 53 or port 123 or port 80 or port 443 or arp or icmp or tcp[tcpflags] & tcp-syn != 0' traffic.pcap
is 0; prints 'no data \(SYN\)'; prints 'these 28 bytes of ethertype 0x0806'
run verify --filter 'port 53' traffic.pcap; is 0; quiet
run decode --filter 'udp[4:2] = 129' traffic.pcap; equal "$status $(jq .frame out)" '1 14'

# The other commands see the same messages.
for command in annotate verify; do
    run $command traffic.pcap; is 1
    grep -c "$message" out >count; equal "$(cat count)" "$(grep -c "$message" found)"
done
run verify --json traffic.pcap; equal "$(jq -r '"\(.frame) \(.type // .error.code)"' out | sort -sn)" "$(cat found)"
run diff traffic.pcap traffic.pcap; is 3; equal "$(cat out)" ''
run guess traffic.pcap; is 1; prints "^part  message +$message: 120 of 124 bytes, if it begins at byte 4"
run decode --text traffic.pcap; is 1; prints '^# traffic.pcap:1, 10.0.0.1:4000 > 10.0.0.2:9000 udp: '"$message"; prints '^# error\[cut\]'

# What is known beforehand: a type, a port, a message type in the session header, framing.
run decode --type-of udp/9000=$message --bytes traffic.pcap
equal "$(jq -r 'select(.frame == 14) | "\(.type) \(.trailing_bytes)"' out)" "$message 1"
equal "$(jq -r 'select(.frame == 15) | "\(.deviations) \(.tolerated.code)"' out)" '1 wrong-length'
equal "$(jq -r 'select(.frame == 1) | .bytes' out)" "$(xxd -p small.bin | tr -d '\n')"
equal "$(jq -r 'select(.frame == 2) | .error.code' out)" unknown-message
number=$(tlv decode -t $message small.bin | jq .session.msg_type)
printf '# ours\n\nudp/9000=%s\nmsg_type=%s=%s # these are known\n' ifid "$number" $message >ours.types
run decode --types ours.types traffic.pcap; equal "$(jq -r 'select(.frame == 1) | .type' out)" $message
run decode --type-of udp/9000 traffic.pcap; is 2; error_has 'udp/PORT=TYPE'
run decode --type-of udp/70000=ifid traffic.pcap; is 2
run decode --type-of msg_type=1=ifidd traffic.pcap; is 2; error_has "did you mean 'ifid'"
run decode --framing skip:4 --filter 'frame[0:2] = 0' traffic.pcap; is 2
run decode --framing skip:4 traffic.pcap; equal "$(jq -r 'select(.frame == 13) | .type' out)" $message

# Dumps of frames are read as their capture is, but for the times, which they do not have.
tlv sample --count 2 --pcap some.pcapng $big
for dump in 'tshark -x' 'tshark -x -Y frame.number==2'; do
    $dump -r some.pcapng >dump 2>err; run decode dump; is 0
    same <(jq -c .message out) <(tlv decode some.pcapng | jq -c .message | tail -n "$(wc -l <out)")
done
equal "$(jq -c '[.frame, .time, .source_port, .protocol]' out)" '[1,null,9000,"udp"]'

# There and back: the same messages, times and ends in frames that Wireshark finds nothing wrong with.
ends='select(.message) | [.time, .source, .source_port, .destination, .destination_port, .protocol, .type, .message]'
back() { # LINES ENCODE-OPTIONS...
    run encode --pcap back.pcapng "${@:2}" <"$1"; is 0; cp err said
    run decode "${@:2}" back.pcapng; is 0; same <(jq -c "$ends" "$1") <(jq -c "$ends" out)
    tshark -o ip.check_checksum:TRUE -o udp.check_checksum:TRUE -o tcp.check_checksum:TRUE -r back.pcapng -Y \
        'ip.checksum.status == 0 or udp.checksum.status == 0 or tcp.checksum.status == 0 or _ws.malformed or tcp.analysis.flags' >bad 2>err
    equal "$(cat bad)" ''
}
set -- length:2@1+4 segment skip:3 length:4@0 segment
for end in '"source": "fe80::1", "destination": "fe80::2", "protocol": "tcp"' '"protocol": "tcp", "source_port": 1' \
    '"time": 1700000000.123456789' '"protocol": "ip 89"' '"source": "02:00:00:00:00:01", "protocol": "ethertype 0x88B5"'; do
    tlv sample --count 3 --pcap some.pcapng --frame "{$end}" $big || fail "$end"
    tlv decode some.pcapng >lines; equal "$(wc -l <lines)" 3
    back lines --framing "$1"
    shift
done
tlv decode some.pcapng | jq . >lines; grep -q '"source": "02:00:00:00:00:01"' lines || fail 'no address'
tlv decode --type-of udp/9000=$message traffic.pcap >lines; back lines
lost=$(jq -s 'map(.deviations // 0) | add' lines)
[ "$(cat said)" = "tlv: bytes behind messages lost: $(jq -s 'map(.trailing_bytes // 0) | add' lines)
tlv: deviations lost: $lost
tlv: frames without a message, dropped: $(grep -c '"error":' lines)" ] || fail "$(cat said)"
jq -c .message lines | grep -v null >bodies; run encode -t $message bodies --out hex; is 0
equal "$(tlv decode --compact -t $message <(head -8 out))" "$(head -1 bodies)"
for wrong in '{"frame": 1, "type": "ifid", "source_port": 65536, "message": {}}' '{"frame": 1, "type": "ifid", "time": -5, "message": {}}' '{"frame": 1, "time": "now", "type": "ifid", "message": {}}'; do
    run encode --pcap back.pcapng "$wrong"; is 3
done
run encode --pcap back.pcapng --frame '{"port": 1}' -t ifid '{}'; is 3; error_has "is called 'port'"
run encode --pcap back.pcapng -t ifid '{"frame": 1, "time": 1.7e9, "type": "ifid", "message": {}}'; equal "$(tlv decode -t ifid back.pcapng | jq '.time + 0')" 1700000000
run encode --pcap back.pcapng --frame '{"source": "x"}' -t ifid '{}'; error_has 'without two IP addresses.*: 1'
run encode --pcap back.pcapng --framing length:1@0 -t $big "$(tlv sample --out json $big)"
error_has "too long for the framing's length.*: 1"
run encode --framing skip:3 -t ifid '{}'; is 2; run sample --pcap /dev/full ifid; is 4
run encode '{}'; is 2; error_has 'needs a type'

# Rows, and how many there are of each kind.
run decode --csv $message traffic.pcap; python3 -c "
import csv
rows = list(csv.DictReader(open('out')))
for row in rows: print(row['frame'], row['message.led_control.color'])" >colors
equal "$(cat colors)" "$(tlv decode traffic.pcap | jq -r "select(.type == \"$message\") | \"\(.frame) \(.message.led_control.color)\"")"
run decode --flat traffic.pcap; equal "$(jq -r 'select(.type) | [keys_unsorted[]] | length' out | sort -u | wc -l)" 2
equal "$(jq -c 'select(.type | not) | .["error.code"]' out | sort | uniq -c)" "$(tlv decode traffic.pcap | jq -c 'select(.error) | .error.code' | sort | uniq -c)"
run decode --summary traffic.pcap
equal "$(tail -n 1 out | jq -c '.summary | [.messages, .types.'$big', .faults.fragment]')" "[$(grep -c '"message":' out),$(grep -c "\"$big\",\"message\"" out),1]"
run decode --csv $message small.bin; equal "$(cut -d, -f2,12 out)" "name,type
small.bin,$message" # of which files are, too
cat small.bin <(head -c 50 small.bin) >tags.bin
run decode --summary small.bin tags.bin; equal "$(tail -n 1 out)" '{"summary":{"messages":1,"types":{},"deviating":0,"faults":{"truncated":1},"without":0,"gaps":0}}'
run verify --summary traffic.pcap; prints '^#        1 error\[cut\]'
for path in ip_address.message.address.ipv4 svrm_ip_addr_msg_message.message.address.dhcp_info.dhcp; do
    tlv sample "${path%%.*}" >some.bin; run decode -t "${path%%.*}" --flat some.bin; is 0
    equal "$(jq ".[\"${path#*.}\"]" out)" "$(tlv decode -t "${path%%.*}" some.bin | jq "${path#*.message}")"
done
equal "$(jq -c 'keys_unsorted' out | uniq)" "$(tlv sample --seed 3 svrm_ip_addr_msg_message | tlv decode -t svrm_ip_addr_msg_message --flat | jq -c keys_unsorted)"

# Types that these bytes cannot tell apart are never one of them.
tlv guess --json small.bin | jq -e '.guesses[0].types | length == 1' >out || fail 'the message has a rival'
for tied in $(tlv types --kind message); do
    tlv sample --kind min "$tied" | tlv guess --json 2>err | jq -e '.guesses[0].types | length > 1' >out && break
done
tlv sample --kind min "$tied" | od -Ax -v -tx1 | text2pcap -q -F pcap -u 1,2 - tied.pcap >text 2>&1
run decode tied.pcap; is 1; equal "$(jq -r .error.code out)" ambiguous; jq -e ".types | index(\"$tied\")" out >text || fail "$tied is not among them"
run decode -t "$tied" tied.pcap; is 0

# A line appears when its message has been read, also into a pipe.
mkfifo pipe
tlv decode pipe >live 2>err &
exec 3>pipe; head -c 300 traffic.pcap >&3
for _ in $(seq 50); do [ -s live ] && break; sleep 0.1; done
grep -q "\"frame\":1,.*$message" live || fail 'nothing appears before the end'
exec 3>&-; wait
finish
