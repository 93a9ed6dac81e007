# encode, sample and diff; and the whole way round.
. "$(dirname "$0")/lib.sh"

# From a dump and no idea to a changed message.
tlv encode -t $message '{"led_control": {"slot": 2, "port": 5, "color": 3}}' | hexdump -C >dump.txt
type=$(tlv guess dump.txt | awk '$1 == "yes" { sub(":", "", $3); print $3; exit }')
equal "$type" $message
tlv decode -t "$type" dump.txt | jq '.led_control.color = 1' | tlv encode -t "$type" >new.bin
run diff dump.txt new.bin; is 1; error_has "taken for $message"
equal "$(cat out)" 'led_control.color: 3 -> 1'
run diff -t $message dump.txt dump.txt; is 0; quiet; equal "$(cat out)" ''
tlv diff -t $message dump.txt - <new.bin >out; status=$?; is 1
head -c 100 new.bin >cut.bin
run diff -t $message new.bin cut.bin; is 3; error_has 'error\[truncated\]'
run diff new.bin cut.bin; is 2; error_has 'no type takes both'

# Samples: the same for a seed, other for another, decodable; every kind round.
equal "$(tlv sample --seed 7 --out hex $message)" "$(tlv sample --seed 7 $message | xxd -p -c16 | tr a-f A-F | sed 's/../& /g; s/ $//')"
[ "$(tlv sample --seed 7 $message | xxd)" != "$(tlv sample --seed 8 $message | xxd)" ] || fail 'the seed makes no difference'
equal "$(tlv sample --kind min --out json ifid | jq -c .)" '{"value_1":0,"value_2":0,"value_3":0,"value_4":0,"value_5":0}'
equal "$(tlv sample --kind max --out json zel_led_control | jq -c .)" '{"slot":65535,"port":65535,"color":4294967295}'
equal "$(tlv sample --kind min --set slot=7 --set color=0x10 --out json zel_led_control | jq -c .)" '{"slot":7,"port":0,"color":16}'
run sample --set slo=7 zel_led_control; is 2; error_has "--set slo=7: zel_led_control: no member .slo., did you mean 'slot'"
type=zel_vlan_stat_bundle
for kind in min max random boundary; do
    tlv sample --kind $kind $type >a.bin || fail "sample --kind $kind"
    tlv verify --strict -t $type a.bin >out 2>err || fail "$kind"
    tlv decode -t $type a.bin | tlv encode -t $type >b.bin 2>err
    same a.bin b.bin
    tlv annotate -t $type a.bin >a.txt && tlv annotate a.txt | cmp -s a.txt - || fail "annotate $kind"
done

# JSON that is none of the type says where and why.
refused() { run encode -t zel_led_control "$1"; is 3; error_has "error\[malformed-input\]: .*$2"; equal "$(cat out)" ''; }
refused '{"colour": 3}' "did you mean 'color'"
refused '{"slot": 65536}' 'slot.*65536'
refused '{"slot": "2"}' 'slot'
refused '{"slot": 2' ''
echo '{"slot": 9}' | tlv encode -t 1357 --out hex >out; prints '^05 4D 00 18 00 04 00 02 00 09'
run encode -t zel_led_control missing.json; is 4
finish
