# What is asked for wrongly: status 2, and a hint.
. "$(dirname "$0")/lib.sh"
tlv sample $message >led.bin

run; is 2; error_has '^tlv: error\[usage\]: .*tlv --help'
run decod led.bin; is 2; error_has "did you mean 'decode'"
run decode --bogus; is 2; error_has 'bogus.*tlv decode --help'
run decode --compct led.bin; is 2; error_has "did you mean '--compact'"
run decode --text --compact led.bin; is 2
run decode --filter udp led.bin; is 3; error_has 'no capture'
run decode --offset 121 led.bin; is 3; error_has 'has 120 bytes'
run decode --offset 92 -t zel_led_control led.bin; is 0; quiet
run decode --in octal led.bin; is 2; error_has 'auto\|raw\|hex'
run decode -t zel_led_contrl led.bin; is 2; error_has "did you mean 'zel_led_control'"
run decode -t 999 led.bin; is 2
run verify led.bin; is 2; error_has 'tlv guess'
run encode '{}'; is 2
run sample --kind big $message; is 2; error_has 'min\|max\|random\|boundary'
for number in x -1 '' ' 1' 1x 0x 99999999999999999999999; do
    run sample --seed "$number" $message; is 2; error_has 'number from 0 to 18446744073709551615'
    run decode --in pcap "--offset=$number" led.bin; is 2
done
run sample --seed 0x7 --out hex $message; is 0; equal "$(cat out)" "$(tlv sample --seed 7 --out hex $message)"
run help decod; is 2; error_has 'none of decode\|'

# Whatever is asked for, no terminal is controlled by the answer, nor flooded.
control=$(printf 'a\033[31m\302\233\001\377\342\200\240')
for words in "$control" "decode -t $control" "decode $control" "decode --in $control" "explain $control" "decode --$control"; do
    run $words; [ "$status" -ne 0 ] || fail "$words"
    error_has 'a<U\+001B>\[31m<U\+009B><U\+0001><FF>.*†'
done
run sample "$(printf '%0100000d' 99999)"; is 2; error_has "^tlv: .*'tlv types' lists"
[ "$(wc -c <err)" -lt 2000 ] || fail 'a flood'
run diff led.bin; is 2
run diff - -; is 2
run show; is 2
run explain wrong-tg; is 2; error_has "did you mean 'wrong-tag'"

# Files that cannot be read do not keep the others from being read.
run decode -t $message missing led.bin; is 4; error_has 'missing: No such file'; prints '"led_control"'
run annotate /; is 4; error_has 'error\[input-output\]'

# Types and codes.
run types; is 0; quiet
equal "$(wc -l <out)" "$(sort -u out | wc -l)"
run types 'zel_led_c*l'; is 0; equal "$(cat out)" zel_led_control
run types -l zel_led_control; prints '^structure +1357  voice +zel_led_control: .*LED'
run types --kind enumeration --family voice LED; equal "$(cat out)" zel_led_color
run types --used-by zel_led_color; equal "$(cat out)" zel_led_control                      # a member
run types --used-by ipv6_addr; prints '^ip_address_type_union$'                            # an alternative
run types --used-by zel_vlan_counters; prints '^zel_vlan_stat_bundle_vlan_counters_array$' # an item
run types --family voices; is 2; error_has 'cellular, .*voice,'
run types --kind tree; is 2; error_has 'message\|.*dynamic-array\|'
equal "$(for kind in $(tlv types --help | grep -oE 'scalar\|[^ ]+' | tr '|' ' '); do tlv types --kind "$kind"; done | sort)" "$(tlv types | sort)"
run types -l --json zel_led_control; equal "$(jq -c ".[] | [.name, .kind, .tag, .family]" out)" '["zel_led_control","structure",1357,"voice"]'
run types nothing_like_it; is 1; equal "$(cat out)" ''
run show 0x054D; is 0
prints '^zel_led_control: structure, tag 1357'
prints '^28 bytes on the wire, 8 in memory'
prints '^    uint16_t slot;'
prints '^ +16 +12    color: zel_led_color, tag 1362'
run show vlan_STATS_m; is 0; prints '^zel_tib_vlan_stats_message: message'
run show led_co; is 2; error_has "several types are like 'led_co': .*, zel_led_color, zel_led_control$"
run show message; is 2; error_has "and [0-9]+ more; 'tlv types message' lists"
run decode -t ZEL_LED_CONTROL led.bin; is 2; error_has "did you mean 'zel_led_control'" # scripts spell it as it is
run decode -t led led.bin; is 2; error_has "several types are like 'led': .*zel_led_control"
run find VLAN; is 0
prints '^zel_vlan_stat_bundle.vlan_counters: zel_vlan_stat_bundle_vlan_counters_array'; prints '^ether_cfg: structure, .*VLAN bitmaps'
run find dhcp; prints '^[a-z_]+\.dhcp: [0-9]+'
run find --json ipv6_maddr; equal "$(jq -c '.[] | select(.found == "alternative") | [.path, .is]' out)" '["ip_address_type_union.ipv6_maddr","ipv6_maddr"]'
run find nowhere_at_all; is 1
run show ip_address; prints '^ +16\+ +12    length: addr_length'
run show ip_address_type_union; prints '^        struct ipv6_addr ipv6;'; prints 'type 1 ipv4: ipv4_addr'
run show zel_vlan_stat_bundle_vlan_counters_array; prints '^    struct zel_vlan_counters \*items;'
run explain; for code in $(cat out); do tlv explain "$code" | grep -q ' ' || fail "$code is not explained"; done
run explain usage; prints 'command line'
equal "$(tlv explain | sort | uniq -d)" ''
equal "$(tlv explain --json | jq -r '.[].code')" "$(tlv explain)"
equal "$(tlv explain --json cut | jq -r .code)" cut
for type in $(tlv types -l | sort -u -k1.1,1.18 | cut -c38- | sed 's/:.*//'); do
    run show "$type"; is 0
    run show --json "$type"; equal "$(jq -r .name out)" "$type"
done
finish
