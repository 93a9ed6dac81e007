# annotate, decode, verify and guess on messages that are as they should be, or nearly so.
. "$(dirname "$0")/lib.sh"
tlv encode -t $message '{"led_control": {"slot": 2, "port": 5, "color": 3}}' >led.bin

cat >expected <<'END'
# 28 bytes
type zel_led_control
   0  05 4D 00 18                                      | zel_led_control, tag 1357, length 24
   4  00 04 00 02 00 02                                | slot: uint16 = 2
  10  00 04 00 02 00 05                                | port: uint16 = 5
  16  05 52 00 08 00 06 00 04 00 00 00 03              | color: zel_led_color = 3
END
tail -c 28 led.bin | tlv annotate -t zel_led_control >out; same out expected
sed 's/16  05 52/16  05 53/' expected >other.txt
run annotate other.txt; is 0; prints '^ +\| ! tolerated\[wrong-tag\]: zel_led_control.color'
prints '^  16  05 53 .*color|skipped'
run verify other.txt; is 0; prints '28 of 28 bytes, 1 deviation$'
run verify --strict other.txt; is 1; error_has 'error\[wrong-tag\]: zel_led_control.color: .* at byte 16'
run decode other.txt; is 0; prints '"color": 0'; error_has 'warning\[wrong-tag\]'
run verify --strict -t $message led.bin; is 0; quiet

# Arrays of all forms: bytes sixteen a line with their text, items one by one.
tlv encode -t kavu_analogbri_generic_report "{\"buffer\": \"$(printf 'hello %.0s' 1 2 3 4)\"}" >report.bin
run annotate -t kavu_analogbri_generic_report report.bin; is 0
prints 'buffer.count = 24'; prints '"hello hello hell"'; prints '^ +[0-9]+  6F 20 68 .*\| "o hello "$'
prints 'terminator'
cp out first; run annotate first; same out first

# By tags.
run decode --compact led.bin; is 0
equal "$(jq -c '[.[] | keys[0]]' out)" '["app_sess_hdr","ifid","zel_led_control"]'
equal "$(jq '.[2].zel_led_control.color' out)" 3
grep -v ^type other.txt | tlv decode --compact >out # what its type would only tolerate is shown as it stands there
equal "$(cat out)" '[{"zel_led_control":[{"uint16":2},{"uint16":5},{"zel_codec_op":3}]}]'
run decode --text led.bin; prints '^zel_led_control.color = 3$'
run annotate led.bin; prints 'zel_led_control.color: zel_led_color = 3'
printf '\x07\xD0\x00\x02\xAB\xCD\x00\x05\x00\x02\xFF\xFE\x00\x0A\x00\x08\x00\x04\x00\x02\x00\x02hi' >odd.bin
run decode --compact odd.bin; is 0
equal "$(cat out)" '[{"tag 2000":{"hex":"abcd"}},{"int16":-2},{"array":"hi"}]'
run annotate odd.bin; is 0; prints 'tag 2000, length 2'; prints 'int16 = -2'; prints '"hi"'
printf '\x05\x4D\x00\x0C\x00\x04\x00\x02\x00\x02\x00\x04\x00\x02\x00\x05' >older.bin # a member less
run decode --compact older.bin; equal "$(cat out)" '[{"zel_led_control":[{"uint16":2},{"uint16":5}]}]'
printf '\x00\x04' | cat led.bin - >cut.bin
run decode cut.bin; is 3; error_has 'truncated.*at byte 120'; prints 'zel_led_control'
run annotate cut.bin; is 1; prints '^ 120  00 04 .*no whole element'

# The text form is one of lines to grep.
run decode -t $message --text led.bin; prints '^led_control.slot = 2$'; prints '^session.msg_type = 0$'
run decode -t kavu_analogbri_generic_report --text report.bin; prints '^buffer = "hello '

# Values that have names.
sensor='{"reading":{"mon_type":"voltage"}}'
tlv encode -t zel_env_monitoring_sensor_info "$sensor" >volts.bin
run decode -t zel_env_monitoring_sensor_info --compact volts.bin; prints '"mon_type":"voltage"'
run decode -t zel_env_monitoring_sensor_info --text volts.bin; prints '^reading.mon_type = 1 \(voltage\)$'
run annotate -t zel_env_monitoring_sensor_info volts.bin; prints 'zel_envmon_type = 1 \(voltage\)$'
tlv encode -t zel_env_monitoring_sensor_info '{"reading":{"mon_type":9}}' | tlv diff -t zel_env_monitoring_sensor_info volts.bin - >out
prints '^reading.mon_type: "voltage" -> 9$'

# Guessing.
run guess led.bin; is 0; equal "$(head -1 out)" "yes   message       $message: 120 of 120 bytes"
prints '^part  structure     app_sess_hdr: 48 of 120 bytes'
run guess --near 1 led.bin; equal "$(grep -c '^yes' out)" 1; equal "$(grep -c '^part' out)" 1
head -c 100 led.bin | tlv guess >out 2>err; prints "^no    message       $message: error\\[truncated\\].*at byte 92"
{ printf '%s' 'another header'; cat led.bin; } >behind.bin
run guess behind.bin; is 1; prints "^part  message       $message: 120 of 134 bytes, if it begins at byte 14"
printf '' | tlv guess >out 2>err; status=$?; is 3; error_has 'no bytes to guess from'
run guess cut.bin; is 1; prints '^part .*120 of 122 bytes'
printf '\x07\xFF\x00\x00' | tlv guess >out 2>err; status=$?; is 1; error_has 'no type'

# Several files at once.
run verify -t $message led.bin cut.bin; is 0; prints '^led.bin: .*120 of 120'; prints '^cut.bin: .*120 of 122'
run decode -t $message --compact led.bin led.bin; equal "$(wc -l <out)" 2
finish
