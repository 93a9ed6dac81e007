# Types that nobody compiled: own ones, and the built-in ones read from their schema, of which everything is the same.
schema=$(cd "$(dirname "$0")/../../../schema" && pwd)
. "$(dirname "$0")/lib.sh"
tlv sample --seed 3 $message >led.bin
all=$(ls "$schema"/*/*.tlv | paste -sd:)
for command in 'types --json' 'find vlan' wireshark 'decode led.bin' 'guess led.bin' "annotate -t $message led.bin" \
    'sample --kind max --out hex zel_vlan_stat_bundle'; do
    tlv $command >built_in 2>err
    TLVMSG_SCHEMA=$all run $command; quiet; cmp -s out built_in || fail "$command"
done

mkdir acme; cat >acme/fan.tlv <<'END'
/// A fan of ours.
struct acme_fan = 40000 {
    uint16          slot
    acme_fan_speed  speed
}
enum    acme_fan_speed = 40001 { slow = 1 fast = 2 }
message acme_fan_report { acme_fan fan }
END
own="--schema acme/fan.tlv"
run types --kind message $own; equal "$(cat out)" acme_fan_report
run $own types --kind message; equal "$(cat out)" acme_fan_report
run types --schema acme; equal "$(wc -l <out)" 12 # with the scalars
run --schema "$schema" types $own zel_led_control; prints '^zel_led_control$'
run types --family voice $own; is 2; error_has 'there are acme'
mkdir -p vendor/ids; echo 'enum vendor_id = 40002' >vendor/ids/ids.tlv
printf 'import "ids/ids.tlv"\nstruct acme_id = 40003 { vendor_id id }\n' >acme/id.tlv
run types --schema acme/id.tlv; is 2; error_has 'T008'
run types --schema acme/id.tlv -I vendor; is 0; prints '^vendor_id$'
rm acme/id.tlv
run encode $own -t acme_fan_report '{"fan": {"slot": 7, "speed": "fast"}}'; is 0; cp out fan.bin
run guess $own fan.bin; is 0; prints '^yes   message       acme_fan_report: 22 of 22 bytes'
run decode $own --text -t acme_fan_report fan.bin; prints '^fan.speed = 2 \(fast\)$'
run decode $own -t ifid fan.bin; is 2
run --complete decode $own -t acme_fan_r; equal "$(cat out)" acme_fan_report
# A key is put where it belongs unless something else is said, and tells messages of one shape apart.
cat >acme/keys.tlv <<'END'
import "common/session.tlv"
message acme_first key 17 { app_sess_hdr session  ifid interface }
message acme_other key 18 { app_sess_hdr session  ifid interface }
message acme_plain { app_sess_hdr session  ifid interface }
END
export TLVMSG_SCHEMA=acme/keys.tlv
tlv encode -t acme_first '{"interface": {}}' >first.bin
tlv encode -t acme_first '{"session": {"msg_type": 5}}' >stays.bin
tlv sample --kind max acme_other >other.bin
tlv sample acme_other --set session='{"value_1": 3}' >set.bin
tlv sample acme_other --set session.msg_type=17 >wrong.bin
for file in first stays other set wrong; do od -Ax -tx1 $file.bin; done >keys.txt
text2pcap -q -u 4000,4001 keys.txt keys.pcap >/dev/null 2>&1
run decode keys.pcap; is 0
equal "$(jq -r '"\(.type) \(.message.session.msg_type)"' out | paste -sd,)" \
    'acme_first 17,acme_plain 5,acme_other 18,acme_other 18,acme_first 17'
run guess first.bin; equal "$(grep -o 'acme_[a-z]*' out | paste -sd ' ')" 'acme_first acme_plain'
run show acme_other; prints '^acme_other: message, key 18 '
unset TLVMSG_SCHEMA; rm acme/keys.tlv
# Dynamic arrays whose items hold dynamic arrays are filled as well, and fit.
cat >acme/psu.tlv <<'END'
dynamic bytes psu_reason counted by uint16
struct        psu = 40010 { uint16 slot  uint16 count  psu_reason reason }
dynamic array psus of psu counted by uint8
struct        psu_list = 40011 { uint8 count  psus units }
END
run sample --schema acme/psu.tlv --kind max --out json psu_list; prints '"slot": 65535'
equal "$(jq '[.units[].reason.hex | length] | length > 100 and min >= 16' <out)" true
for seed in 1 2 3 4 5 6 7 8; do tlv sample --schema acme/psu.tlv --seed $seed --out json psu_list; done |
    jq -es 'any(.[]; (.units | length) > 1)' >out || fail 'no units'

# Unions in one another: each type is worked out once, and not on each of the 20 to the seventh ways to it.
awk 'BEGIN {
    print "enum acme_turn = 40030 { left = 0 }"
    inner = "acme_turn"
    for (level = 1; level <= 7; ++level) {
        printf "union acme_maze_%d by acme_turn turn {", level
        for (way = 1; way <= 20; ++way) printf " %d: %s way_%d", way, inner, way
        inner = "acme_room_" level
        printf " }\nstruct %s = %d { acme_turn turn  acme_maze_%d maze }\n", inner, 40040 + level, level
    }
}' >acme/maze.tlv
timeout 20 tlv sample --schema acme/maze.tlv --out json acme_room_7 >out || fail 'sampling takes too long'
prints '"way_'
rm acme/maze.tlv

# What a schema says controls no terminal.
printf 'struct acme_odd = 40020 {\n/// x\033[31m\007\302\233\342\200\256y\nuint8 a\n}\n' >acme/odd.tlv
run show --schema acme/odd.tlv acme_odd; prints 'x<U\+001B>\[31m<U\+0007><U\+009B><U\+202E>y'
run find --schema acme/odd.tlv 31m; prints 'acme_odd.a: uint8, x<U\+001B>'
rm acme/odd.tlv

sed -i 's/speed$/sped/; s/acme_fan_speed  /acme_fan_sped  /' acme/fan.tlv
run types $own; is 2; error_has "fan.tlv:4:5: error\[T012\]"; error_has "did you mean 'acme_fan_speed'"
run types --schema missing.tlv; is 4; error_has missing.tlv
finish
